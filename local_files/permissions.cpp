// Looking at permissions, and taking some away.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/permissions.h"

#include "local_files/descriptor.h"

#include <QDir>
#include <QFileInfo>

namespace tideloft::local_files
{

namespace
{

using Kind = system::Status::Kind;

void takeFromOthers(const QString &path, system::Opening opening, QFileDevice::Permissions allowed)
{
    const Descriptor place(system::open(path, opening));
    const auto status = system::statusOf(place.get());
    if (!place.isOpen() || !status || !status->isOwn)
        return;
    const bool isOurs =
        status->kind == Kind::Directory || (status->kind == Kind::RegularFile && status->hasOneName);
    if (isOurs && (status->permissions & ~allowed))
        system::setPermissions(place.get(), status->permissions & allowed);
}

} // namespace

bool makeForOwner(const QString &directory)
{
    QDir().mkpath(QFileInfo(directory).path());
    return QDir().mkdir(directory, ownersDirectory) || QFileInfo(directory).isDir();
}

void keepDirectoryForOwner(const QString &path)
{
    takeFromOthers(path, system::Opening::Directory, ownersDirectory);
}

void keepFileForOwner(const QString &path)
{
    takeFromOthers(path, system::Opening::Itself, ownersFile);
}

} // namespace tideloft::local_files
