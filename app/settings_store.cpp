// Looking at the settings' files before the toolkit opens them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/settings_store.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

constexpr off_t largestFile = off_t{1} * 1024 * 1024;

// Opening a pipe would wait for its other end, and a device may never end. Where nothing is, nothing is
// opened.
bool endsSoon(const QString &path)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return true;
    return S_ISREG(status.st_mode) && status.st_size <= largestFile;
}

// Of the user's: the application's, with the lock that is read before it is written, and the organisation's,
// where the toolkit looks next. The system's own files are its administrator's.
QStringList filesThatAreRead()
{
    const QString place = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/';
    const QString organisation = place + QCoreApplication::organizationName();
    const QString own = organisation + u'/' + QCoreApplication::applicationName() + u".conf"_s;
    return {own, own + u".lock"_s, organisation + u".conf"_s};
}

} // namespace

std::unique_ptr<QSettings> openSettings()
{
    const QStringList files = filesThatAreRead();
    return std::all_of(files.begin(), files.end(), endsSoon) ? std::make_unique<QSettings>() : nullptr;
}

} // namespace tideloft::app
