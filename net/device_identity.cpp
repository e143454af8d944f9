// Reading and making of the device identifier.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/device_identity.h"

#include "local_files/directory_lock.h"
#include "local_files/permissions.h"
#include "local_files/regular_file.h"

#include <QDir>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

QString readDeviceId(const QString &path)
{
    return QString::fromUtf8(local_files::readRegularFile(path).value_or(QByteArray())).trimmed();
}

} // namespace

// Of two copies of the program that start for the first time at the same moment, the second finds the
// identifier of the first. Where there is no lock to be had, or the file cannot be written, the start goes
// on.
QString loadOrCreateDeviceId(const QString &directory)
{
    const QString path = QDir(directory).filePath(u"device_id.txt"_s);
    local_files::makeForOwner(directory);
    local_files::keepDirectoryForOwner(directory);
    local_files::keepFileForOwner(path);
    if (const QString known = readDeviceId(path); !known.isEmpty())
        return known; // nobody is waited for
    const local_files::DirectoryLock lock(directory);
    if (const QString known = readDeviceId(path); !known.isEmpty())
        return known;
    const QString fresh = QUuid::createUuid().toString(QUuid::WithoutBraces);
    local_files::writeRegularFile(path, fresh.toUtf8());
    return fresh;
}

} // namespace tideloft::net
