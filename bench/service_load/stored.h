// What lies in the database when the service is gone, beside what it acknowledged.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>

namespace tideloft::bench
{

struct StoredCheck {
    qsizetype lost = 0;    ///< acknowledged, and not there
    qsizetype doubled = 0; ///< there more than once
    bool isWhole = false;  ///< what integrity_check says
};

/// ACKNOWLEDGED are the nonces of messages that were sent after seeding.
StoredCheck checkStored(const QString &file, const QSet<QString> &acknowledged);

bool isWhole(const QString &file);

} // namespace tideloft::bench
