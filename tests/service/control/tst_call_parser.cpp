// The command line of tideloftctl.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/call_parser.h"
#include "tests/support/test_main.h"

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestCallParser : public QObject
{
    Q_OBJECT

private slots:
    void everyCommandIsFoundByItsName();
    void everyCommandIsExplained();
    void optionsStandAnywhere();
    void versionIsPrinted();

private:
    static ParsedCall parse(const QString &line)
    {
        return parseCall((u"tideloftctl "_s + line).split(u' ', Qt::SkipEmptyParts));
    }
};

void TestCallParser::everyCommandIsFoundByItsName()
{
    QSet<QString> names;
    for (const ControlCommand &command : commandTable()) {
        const ParsedCall parsed = parse(command.name + u' ' + command.parameters);
        QVERIFY2(parsed.command, qPrintable(command.name));
        QCOMPARE(parsed.command, &command);
        QCOMPARE(parsed.call.arguments.join(u' '), command.parameters);
        QCOMPARE(parsed.call.database, u"/var/lib/tideloft/tideloftd.sqlite"_s);
        QVERIFY(!parsed.call.confirmed);
        names.insert(command.name);
    }
    QCOMPARE(names.size(), commandTable().size());
}

void TestCallParser::everyCommandIsExplained()
{
    const ParsedCall parsed = parse(u"--help"_s);
    QCOMPARE(parsed.exitCode, 0);
    QVERIFY(!parsed.command);
    for (const ControlCommand &command : commandTable())
        QVERIFY2(parsed.text.contains(u"  "_s + (command.name + u' ' + command.parameters).trimmed())
                     && parsed.text.contains(command.help),
                 qPrintable(command.name));
}

void TestCallParser::optionsStandAnywhere()
{
    for (const QString &line : {u"--database a.sqlite --yes user delete alice"_s,
                                u"user delete --yes alice --database=a.sqlite"_s}) {
        const ParsedCall parsed = parse(line);
        QVERIFY(parsed.command);
        QCOMPARE(parsed.call.database, u"a.sqlite"_s);
        QCOMPARE(parsed.call.arguments, QStringList{u"alice"_s});
        QVERIFY(parsed.call.confirmed);
    }
}

void TestCallParser::versionIsPrinted()
{
    const ParsedCall parsed = parse(u"--version"_s);
    QCOMPARE(parsed.exitCode, 0);
    QVERIFY(QRegularExpression(u"^tideloftctl \\d+\\.\\d+\\.\\d+\\n$"_s).match(parsed.text).hasMatch());
}

TIDELOFT_TEST_MAIN(TestCallParser)
#include "tst_call_parser.moc"
