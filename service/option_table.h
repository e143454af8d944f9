// Every option of the service: what it is called, what it may be, and where its value goes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/registration.h"
#include "service/api/usual_limits.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>

namespace tideloft::service
{

struct Options {
    QString listen = QStringLiteral("127.0.0.1");
    std::uint16_t port = 8443;
    QString certificateFile; ///< empty = plain HTTP
    QString keyFile;
    QString database; ///< empty = the default file
    bool quiet = false;
    int historyLimit = usualHistoryLimit;
    int connections = 10'000;
    int connectionsPerAddress = 200;
    int signInsPerMinute = usualSignInsPerMinute; ///< 0 = any number, as of registrations
    int registrationsPerMinute = usualRegistrationsPerMinute;
    int quotaMessages = usualMessages;
    int quotaMegabytes = usualMessageMegabytes;
    int quotaConversations = usualConversations;
    int quotaPictureMegabytes = usualPictureMegabytes;
    QStringList trustedProxies; ///< numeric addresses
    bool proxyProtocol = false;
    int metricsPort = -1; ///< -1 = none
    Registration registration = Registration::Open;
    int keepMessages = 0; ///< days; 0 = forever

    bool operator==(const Options &other) const = default;
};

/// `--NAME VALUE` on the command line, and `NAME = VALUE` in the configuration file.
struct OptionEntry {
    QString name;
    QString valueName; ///< stands for the value in the help; empty for a switch, which is "yes" or "no"
    QString help;
    /// Sets the value. Otherwise returns what it must be, as the end of a sentence.
    std::function<QString(Options &options, const QString &value)> set;
};

/// In the order in which the help shows them.
const QList<OptionEntry> &optionTable();

/// The entry of that name; null when there is none.
const OptionEntry *findOption(const QString &name);

} // namespace tideloft::service
