// Limits of POSIX, and the folders and files of a Linux desktop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/this_system.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

// The limit is 1 byte and not 0: where a pipe leads the dumps to a program, the system ignores every other
// limit. An undumpable process would keep debuggers out too, but also the desktop's own dialogs for files,
// which look at who asks for them.
void refuseCoreDumps()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = limit.rlim_max = std::min<rlim_t>(1, limit.rlim_max);
    setrlimit(RLIMIT_CORE, &limit);
}

// The system's own files for everybody are its administrator's, and are read as they are.
QStringList settingsFiles()
{
    const QString place = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/';
    const QString organisation = place + QCoreApplication::organizationName();
    const QString own = organisation + u'/' + QCoreApplication::applicationName() + u".conf"_s;
    return {own, own + u".lock"_s, organisation + u".conf"_s};
}

bool endsSoon(const QString &path, qint64 largest)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return true;
    return S_ISREG(status.st_mode) && status.st_size <= largest;
}

} // namespace tideloft::app
