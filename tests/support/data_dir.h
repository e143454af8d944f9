// The data directory of a test: emptied, missing, or made to refuse.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QString>

namespace tideloft::tests
{

/// Where the data directory belongs, whether it is there or not.
inline QString dataLocation()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

inline void removeDataDir()
{
    const QDir parent = QFileInfo(dataLocation()).dir();
    QFile::remove(parent.path());  // the file of blockDataDir()
    QFile::remove(dataLocation()); // or a link
    QDir(parent.path()).removeRecursively();
}

/// Puts a file where a parent of the data directory belongs, which stops even root from making it.
inline bool blockDataDir()
{
    removeDataDir();
    QFile file(QFileInfo(dataLocation()).dir().path());
    return file.open(QIODevice::WriteOnly);
}

inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tideloft::tests
