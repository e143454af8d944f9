// The command line of the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace tideloft::service
{

struct Options {
    QString listen = QStringLiteral("127.0.0.1");
    std::uint16_t port = 8443;
    QString certificateFile; ///< empty = plain HTTP
    QString keyFile;
    QString database; ///< empty = the default file
    bool quiet = false;
    int historyLimit = 5000;
    int connections = 10'000;
    int connectionsPerAddress = 200;
    int signInsPerMinute = 10; ///< 0 = any number, as of registrations
    int registrationsPerMinute = 10;
    int quotaMessages = 1'000'000;
    int quotaMegabytes = 2048;
    int quotaConversations = 2000;
    QString trustedProxy; ///< empty = none
};

/// What the program is to do: serve with these options, or print a text and end with this code.
struct Command {
    std::optional<Options> serve;
    QString text;
    int exitCode = 0;
};

/// `arguments` begin with the program's name. A mistake gives exit code 2 and a text that names it.
Command parseCommandLine(const QStringList &arguments);

} // namespace tideloft::service
