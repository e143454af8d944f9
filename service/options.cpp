// Reading of the command line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/options.h"

#include <QCommandLineParser>

#include <boost/asio/ip/address.hpp>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

/// An option whose value is a number.
struct NumberOption {
    const char *name;
    int Options::*member;
    int least;
    int most;
    const char *help;
};

constexpr int million = 1'000'000;
constexpr NumberOption numberOptions[] = {
    {"history-limit", &Options::historyLimit, 1, 100'000, "The newest messages that a history gives."},
    {"connections", &Options::connections, 1, million, "Connections at a time."},
    {"connections-per-address", &Options::connectionsPerAddress, 1, million,
     "Of these, from one address; a client needs two."},
    {"sign-ins-per-minute", &Options::signInsPerMinute, 0, million,
     "Attempts to sign in, for each account and for each address. 0 sets no limit."},
    {"registrations-per-minute", &Options::registrationsPerMinute, 0, million,
     "Registrations from one address. 0 sets no limit."},
    {"quota-messages", &Options::quotaMessages, 1, 1000 * million, "Messages that one user may have sent."},
    {"quota-megabytes", &Options::quotaMegabytes, 1, million, "Room that these may take, in MiB."},
    {"quota-conversations", &Options::quotaConversations, 1, million,
     "Conversations that one user may have."},
};

QString helpOf(const NumberOption &option)
{
    return u"%1 Default: %2."_s.arg(QLatin1StringView(option.help)).arg(Options().*option.member);
}

QList<QCommandLineOption> withNumbers(QList<QCommandLineOption> options)
{
    for (const NumberOption &option : numberOptions)
        options.append({QString::fromLatin1(option.name), helpOf(option), u"N"_s,
                        QString::number(Options().*option.member)});
    return options;
}

QList<QCommandLineOption> knownOptions()
{
    return withNumbers({
        {u"listen"_s, u"Address to listen on, in numbers. Default: 127.0.0.1, this machine only."_s,
         u"ADDRESS"_s, u"127.0.0.1"_s},
        {u"port"_s, u"Port to listen on. 0 takes any free one. Default: 8443."_s, u"N"_s, u"8443"_s},
        {u"tls-cert"_s,
         u"PEM file with the certificate chain. Needs --tls-key. Without both the service speaks plain HTTP, "
         u"which "
         "is allowed on a loopback address only."_s,
         u"FILE"_s},
        {u"tls-key"_s, u"PEM file with the certificate's private key. Needs --tls-cert."_s, u"FILE"_s},
        {u"database"_s,
         u"SQLite file that keeps accounts, keys, messages, servers and pictures; made when missing, "
         u"readable for its owner only. "
         "Default: tideloftd.sqlite in the user's data folder."_s,
         u"FILE"_s},
        {u"quiet"_s, u"Write warnings and problems only to the standard error output."_s},
        {u"trusted-proxy"_s,
         u"Address of a proxy in front of the service, in numbers. What it says in X-Forwarded-For counts as "
         u"the "
         "client's address."_s,
         u"ADDRESS"_s},
        {{u"h"_s, u"help"_s}, u"Print this text and end."_s},
        {{u"v"_s, u"version"_s}, u"Print the version and end."_s},
    });
}

QString problemWithNumbers(const QCommandLineParser &parser)
{
    for (const NumberOption &option : numberOptions) {
        const QString name = QString::fromLatin1(option.name);
        bool isNumber = false;
        const int value = parser.value(name).toInt(&isNumber);
        if (!isNumber || value < option.least || value > option.most)
            return u"--%1 must be a number from %2 to %3."_s.arg(name).arg(option.least).arg(option.most);
    }
    return {};
}

bool isAddress(const QString &text)
{
    boost::system::error_code error;
    boost::asio::ip::make_address(text.toStdString(), error);
    return !error;
}

Command mistake(const QString &what)
{
    return {std::nullopt, u"tideloftd: %1\nTry 'tideloftd --help'.\n"_s.arg(what), 2};
}

QString problemWith(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty())
        return u"Unexpected argument '%1'."_s.arg(parser.positionalArguments().constFirst());
    bool isNumber = false;
    parser.value(u"port"_s).toUShort(&isNumber);
    if (!isNumber)
        return u"--port must be a number from 0 to 65535."_s;
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(parser.value(u"listen"_s).toStdString(), error);
    if (error)
        return u"--listen must be a numeric address, like 127.0.0.1 or ::1."_s;
    if (parser.value(u"tls-cert"_s).isEmpty() != parser.value(u"tls-key"_s).isEmpty())
        return u"--tls-cert and --tls-key belong together."_s;
    if (parser.value(u"tls-cert"_s).isEmpty() && !address.is_loopback())
        return u"Without --tls-cert and --tls-key only a loopback address is allowed."_s;
    if (parser.isSet(u"trusted-proxy"_s) && !isAddress(parser.value(u"trusted-proxy"_s)))
        return u"--trusted-proxy must be a numeric address, like 127.0.0.1 or ::1."_s;
    return problemWithNumbers(parser);
}

} // namespace

Command parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"The TideLoft service: keeps accounts, public keys, servers and pictures, and relays messages "
        "that it cannot read."_s);
    parser.addOptions(knownOptions());
    if (!parser.parse(arguments))
        return mistake(parser.errorText());
    if (parser.isSet(u"help"_s))
        return {std::nullopt, parser.helpText(), 0};
    if (parser.isSet(u"version"_s))
        return {std::nullopt, u"tideloftd %1\n"_s.arg(QLatin1StringView(TIDELOFT_VERSION)), 0};
    if (const QString problem = problemWith(parser); !problem.isEmpty())
        return mistake(problem);
    Options options;
    options.listen = parser.value(u"listen"_s);
    options.port = parser.value(u"port"_s).toUShort();
    options.certificateFile = parser.value(u"tls-cert"_s);
    options.keyFile = parser.value(u"tls-key"_s);
    options.database = parser.value(u"database"_s);
    options.quiet = parser.isSet(u"quiet"_s);
    options.trustedProxy = parser.value(u"trusted-proxy"_s);
    for (const NumberOption &option : numberOptions)
        options.*option.member = parser.value(QString::fromLatin1(option.name)).toInt();
    return {options, {}, 0};
}

} // namespace tideloft::service
