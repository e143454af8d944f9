// Reading of the command line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/call_parser.h"

#include <QCommandLineParser>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Where the packaged service keeps it.
QString usualDatabase()
{
    return u"/var/lib/tideloft/tideloftd.sqlite"_s;
}

QList<QCommandLineOption> knownOptions()
{
    return {
        {u"database"_s,
         u"Database of the service, as in its configuration. Default: %1."_s.arg(usualDatabase()), u"FILE"_s,
         usualDatabase()},
        {u"yes"_s, u"Do what cannot be undone."_s},
        {{u"h"_s, u"help"_s}, u"Print this text and end."_s},
        {{u"v"_s, u"version"_s}, u"Print the version and end."_s},
    };
}

QString help(const QCommandLineParser &parser)
{
    QString commands = u"\nCommands:\n"_s;
    for (const ControlCommand &command : commandTable()) {
        const QString usage = (command.name + u' ' + command.parameters).trimmed();
        commands += u"  %1 %2\n"_s.arg(usage, -24).arg(command.help);
    }
    return parser.helpText() + commands
           + u"\nA password is read from the terminal without showing it, or from the first line of the "
             u"standard "
             "input.\n"_s;
}

ParsedCall mistake(const QString &what)
{
    return {nullptr, {}, u"tideloftctl: %1\nTry 'tideloftctl --help'.\n"_s.arg(what), 2};
}

ParsedCall callOf(const ControlCommand &command, const QStringList &arguments,
                  const QCommandLineParser &parser)
{
    const qsizetype wanted = command.parameters.split(u' ', Qt::SkipEmptyParts).size();
    if (arguments.size() < wanted)
        return mistake(u"'%1' needs %2."_s.arg(command.name, command.parameters));
    if (arguments.size() > wanted)
        return mistake(u"Unexpected argument '%1'."_s.arg(arguments[wanted]));
    return {&command, {arguments, parser.value(u"database"_s), parser.isSet(u"yes"_s)}, {}, 0};
}

} // namespace

ParsedCall parseCall(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Looks after the TideLoft service: accounts, invitations, backups. The service may run meanwhile."_s);
    parser.addOptions(knownOptions());
    parser.addPositionalArgument(u"command"_s, u"What to do, see below."_s, u"COMMAND..."_s);
    if (!parser.parse(arguments))
        return mistake(parser.errorText());
    if (parser.isSet(u"help"_s))
        return {nullptr, {}, help(parser), 0};
    if (parser.isSet(u"version"_s))
        return {nullptr, {}, u"tideloftctl %1\n"_s.arg(QLatin1StringView(TIDELOFT_VERSION)), 0};
    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return mistake(u"There is no command."_s);
    for (const ControlCommand &command : commandTable()) {
        const qsizetype length = command.name.count(u' ') + 1;
        if (words.first(qMin(length, words.size())).join(u' ') == command.name)
            return callOf(command, words.sliced(length), parser);
    }
    return mistake(u"There is no command '%1'."_s.arg(words.join(u' ')));
}

} // namespace tideloft::service
