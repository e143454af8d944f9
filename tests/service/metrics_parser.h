// A strict reader of the text format for figures: it takes nothing that a monitoring program might not.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

namespace tideloft::tests
{

struct ParsedMetrics {
    QString problem;               ///< the first; empty when the text is as it must be
    QMap<QString, QString> types;  ///< by name
    QMap<QString, double> samples; ///< by name and labels, as they are written
};

ParsedMetrics parsedMetrics(const QByteArray &text);

} // namespace tideloft::tests
