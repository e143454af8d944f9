// Texts as somebody would write them who wants to harm the client of another.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace tideloft::tests
{

struct HostileText {
    QByteArray name; ///< what makes it hostile
    QString text;
};

/// Some hundred: markup, paths of files and devices, links, placeholders, control and bidirectional
/// characters, broken and combined ones, and sizes beyond all measure. Markup names FILE, which exists.
QList<HostileText> hostileTexts(const QString &file);

} // namespace tideloft::tests
