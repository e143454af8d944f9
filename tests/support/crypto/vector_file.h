// Test vectors in a text file: one a line, fields between semicolons, lines with "#" at the front aside.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QFile>

namespace tideloft::tests
{

/// The fields of every line of the file at PATH; nothing if it cannot be read.
inline QList<QByteArrayList> vectorFields(const QString &path)
{
    QList<QByteArrayList> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (!line.isEmpty() && !line.startsWith('#'))
            lines << line.split(';');
    }
    return lines;
}

} // namespace tideloft::tests
