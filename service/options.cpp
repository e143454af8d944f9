// Reading of the command line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/options.h"

#include "service/config_file.h"

#include <QCommandLineParser>
#include <QStandardPaths>

#include <boost/asio/ip/address.hpp>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QList<QCommandLineOption> knownOptions()
{
    QList<QCommandLineOption> options{
        {u"config"_s,
         u"Configuration file with lines of the form 'key = value', where a key is an option without --. The "
         "command line goes before the file."_s,
         u"FILE"_s},
        {u"check-config"_s, u"Look whether the service could start like this, say what is wrong, and end."_s},
    };
    for (const OptionEntry &entry : optionTable())
        options.append({entry.name, entry.help, entry.valueName});
    return options << QCommandLineOption{{u"h"_s, u"help"_s}, u"Print this text and end."_s}
                   << QCommandLineOption{{u"v"_s, u"version"_s}, u"Print the version and end."_s};
}

Command mistake(const QString &what)
{
    return {std::nullopt, u"tideloftd: %1\nTry 'tideloftd --help'.\n"_s.arg(what), 2};
}

Command mistakesInFile(const QStringList &problems)
{
    return {std::nullopt, u"tideloftd: %1\n"_s.arg(problems.join(u"\ntideloftd: "_s)), 2};
}

// What is wrong with the first option that is; empty when all are set.
QString setFromCommandLine(const QCommandLineParser &parser, Options &options)
{
    for (const OptionEntry &entry : optionTable()) {
        if (!parser.isSet(entry.name))
            continue;
        const QString problem =
            entry.set(options, entry.valueName.isEmpty() ? u"yes"_s : parser.value(entry.name));
        if (!problem.isEmpty())
            return u"--%1 %2."_s.arg(entry.name, problem);
    }
    return {};
}

// What does not go together.
QString problemWith(const Options &options)
{
    if (options.certificateFile.isEmpty() != options.keyFile.isEmpty())
        return u"--tls-cert and --tls-key belong together."_s;
    if (options.certificateFile.isEmpty()
        && !boost::asio::ip::make_address(options.listen.toStdString()).is_loopback())
        return u"Without --tls-cert and --tls-key only a loopback address is allowed."_s;
    if (options.proxyProtocol && options.trustedProxies.isEmpty())
        return u"--proxy-protocol needs --trusted-proxy."_s;
    return {};
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
    if (!parser.positionalArguments().isEmpty())
        return mistake(u"Unexpected argument '%1'."_s.arg(parser.positionalArguments().constFirst()));
    Options options;
    if (parser.isSet(u"config"_s)) {
        const QStringList problems = readConfigFile(parser.value(u"config"_s), options);
        if (!problems.isEmpty())
            return mistakesInFile(problems);
    }
    if (const QString problem = setFromCommandLine(parser, options); !problem.isEmpty())
        return mistake(problem);
    if (const QString problem = problemWith(options); !problem.isEmpty())
        return mistake(problem);
    return {options, {}, 0, parser.isSet(u"check-config"_s)};
}

// A service of the system has a folder of its own, which the system names in the environment.
QString databasePlace(const Options &options)
{
    if (!options.database.isEmpty())
        return options.database;
    const QString ownFolder = qEnvironmentVariable("STATE_DIRECTORY");
    const QString folder =
        ownFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) : ownFolder;
    return folder + u"/tideloftd.sqlite"_s;
}

} // namespace tideloft::service
