// The table of options, one line each. The command line and the configuration file both read it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/option_table.h"

#include <QStringList>

#include <boost/asio/ip/address.hpp>

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int million = 1'000'000;

template <typename Number>
OptionEntry number(const char *name, Number Options::*member, int least, int most, const char *help)
{
    const auto set = [=](Options &options, const QString &value) {
        bool isNumber = false;
        const int wanted = value.toInt(&isNumber);
        if (!isNumber || wanted < least || wanted > most)
            return u"must be a number from %1 to %2"_s.arg(least).arg(most);
        options.*member = static_cast<Number>(wanted);
        return QString();
    };
    const QString usual = u"%1 Default: %2."_s.arg(QLatin1StringView(help)).arg(Options().*member);
    return {QString::fromLatin1(name), u"N"_s, usual, set};
}

OptionEntry file(const char *name, QString Options::*member, const char *help)
{
    const auto set = [member](Options &options, const QString &value) {
        options.*member = value;
        return QString();
    };
    return {QString::fromLatin1(name), u"FILE"_s, QString::fromLatin1(help), set};
}

OptionEntry address(const char *name, QString Options::*member, const char *help)
{
    const auto set = [member](Options &options, const QString &value) {
        boost::system::error_code error;
        boost::asio::ip::make_address(value.toStdString(), error);
        if (error)
            return u"must be a numeric address, like 127.0.0.1 or ::1"_s;
        options.*member = value;
        return QString();
    };
    return {QString::fromLatin1(name), u"ADDRESS"_s, QString::fromLatin1(help), set};
}

OptionEntry addresses(const char *name, QStringList Options::*member, const char *help)
{
    const auto set = [member](Options &options, const QString &value) {
        QStringList all;
        for (const QString &part : value.split(u',')) {
            boost::system::error_code error;
            boost::asio::ip::make_address(part.trimmed().toStdString(), error);
            if (error)
                return u"must be numeric addresses with commas between them, like 10.0.0.5,::1"_s;
            all << part.trimmed();
        }
        options.*member = all;
        return QString();
    };
    return {QString::fromLatin1(name), u"ADDRESSES"_s, QString::fromLatin1(help), set};
}

OptionEntry onOff(const char *name, bool Options::*member, const char *help)
{
    const auto set = [member](Options &options, const QString &value) {
        if (value != u"yes" && value != u"no")
            return u"must be yes or no"_s;
        options.*member = value == u"yes";
        return QString();
    };
    return {QString::fromLatin1(name), {}, QString::fromLatin1(help), set};
}

OptionEntry portOrNone(const char *name, int Options::*member, const char *help)
{
    OptionEntry entry = number(name, member, 0, 65535, help);
    entry.help = QString::fromLatin1(help);
    return entry;
}

OptionEntry registration(const char *name, Registration Options::*member, const char *help)
{
    const auto set = [member](Options &options, const QString &value) {
        const qsizetype index = QStringList{u"open"_s, u"invite"_s, u"closed"_s}.indexOf(value);
        if (index < 0)
            return u"must be open, invite or closed"_s;
        options.*member = static_cast<Registration>(index);
        return QString();
    };
    return {QString::fromLatin1(name), u"WHO"_s, QString::fromLatin1(help), set};
}

OptionEntry days(const char *name, int Options::*member, const char *help)
{
    constexpr int most = 36'500;
    const auto set = [member](Options &options, const QString &value) {
        bool isNumber = false;
        const int wanted = value.toInt(&isNumber);
        if (value != u"forever" && (!isNumber || wanted < 1 || wanted > most))
            return u"must be forever or a number of days from 1 to %1"_s.arg(most);
        options.*member = wanted;
        return QString();
    };
    return {QString::fromLatin1(name), u"DAYS"_s, QString::fromLatin1(help), set};
}

QList<OptionEntry> serverOptions()
{
    return {
        address("listen", &Options::listen,
                "Address to listen on, in numbers. Default: 127.0.0.1, this machine only."),
        number("port", &Options::port, 0, 65535, "Port to listen on. 0 takes any free one."),
        file("tls-cert", &Options::certificateFile,
             "PEM file with the certificate chain. Needs --tls-key. Without both the service speaks plain "
             "HTTP, which is allowed on a loopback address only."),
        file("tls-key", &Options::keyFile, "PEM file with the certificate's private key. Needs --tls-cert."),
        file("database", &Options::database,
             "SQLite file that keeps accounts, keys, messages, servers and pictures; made when missing, "
             "readable for its owner only. Or the address of a PostgreSQL database that several processes "
             "share, "
             "postgresql://USER@HOST/NAME. Default: tideloftd.sqlite in the folder that the system has set "
             "aside (STATE_DIRECTORY), otherwise in the user's data folder."),
        onOff("quiet", &Options::quiet, "Write warnings and problems only to the standard error output."),
        addresses("trusted-proxy", &Options::trustedProxies,
                  "Addresses of the proxies in front of the service, in numbers, with commas between them. "
                  "What these say in X-Forwarded-For counts as the client's address."),
        onOff("proxy-protocol", &Options::proxyProtocol,
              "The proxies of --trusted-proxy say the client's address in a header of the PROXY protocol "
              "instead, with which each of their connections has to begin."),
        portOrNone("metrics-port", &Options::metricsPort,
                   "Port on 127.0.0.1 that answers /metrics in the text format of Prometheus. 0 takes any "
                   "free one. Default: none."),
    };
}

QList<OptionEntry> contentOptions()
{
    return {
        registration("registration", &Options::registration,
                     "Who may make an account: open (everybody), invite (those who were invited with "
                     "tideloftctl) or closed (nobody). Default: open."),
        days("keep-messages", &Options::keepMessages,
             "Days after which a message is forgotten, or forever. Default: forever."),
        number("history-limit", &Options::historyLimit, 1, 100'000,
               "The newest messages that a history gives."),
    };
}

QList<OptionEntry> limits()
{
    return {
        number("connections", &Options::connections, 1, million, "Connections at a time."),
        number("connections-per-address", &Options::connectionsPerAddress, 1, million,
               "Of these, from one address; a client needs two."),
        number("sign-ins-per-minute", &Options::signInsPerMinute, 0, million,
               "Attempts to sign in, for each account and for each address. 0 sets no limit."),
        number("registrations-per-minute", &Options::registrationsPerMinute, 0, million,
               "Registrations from one address. 0 sets no limit."),
        number("quota-messages", &Options::quotaMessages, 1, 1000 * million,
               "Messages that one user may have sent."),
        number("quota-megabytes", &Options::quotaMegabytes, 1, million, "Room that these may take, in MiB."),
        number("quota-conversations", &Options::quotaConversations, 1, million,
               "Conversations that one user may have."),
        number("quota-picture-megabytes", &Options::quotaPictureMegabytes, 1, million,
               "Room that one user's picture and the icons of the user's servers may take, in MiB."),
    };
}

} // namespace

const QList<OptionEntry> &optionTable()
{
    static const QList<OptionEntry> table = serverOptions() + contentOptions() + limits();
    return table;
}

const OptionEntry *findOption(const QString &name)
{
    const QList<OptionEntry> &table = optionTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const OptionEntry &entry) { return entry.name == name; });
    return found == table.end() ? nullptr : &*found;
}

} // namespace tideloft::service
