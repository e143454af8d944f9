// A home of its own for a test program: data, settings and proxies of the person who runs it stay out of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>
#include <QtGlobal>

namespace tideloft::tests
{

/// Redirects the places where Qt keeps data and settings. Make one before the application object.
class TestHome
{
public:
    TestHome()
    {
        for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "HOME"})
            qputenv(name, directory.path().toUtf8());
        for (const char *name : {"http_proxy", "https_proxy", "all_proxy", "no_proxy", "HTTP_PROXY",
                                 "HTTPS_PROXY", "ALL_PROXY", "NO_PROXY"})
            qunsetenv(name);
        qputenv("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
        qunsetenv("XDG_CONFIG_DIRS");
    }

    QString path() const { return directory.path(); }

private:
    QTemporaryDir directory;
};

} // namespace tideloft::tests
