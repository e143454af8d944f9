// The table of options: each name once, and nothing set that is refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/option_table.h"
#include "tests/support/test_main.h"

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestOptionTable : public QObject
{
    Q_OBJECT

private slots:
    void namesAreThereOnce();
    void refusedValuesSetNothing();
};

void TestOptionTable::namesAreThereOnce()
{
    QSet<QString> names;
    const QRegularExpression form(u"^[a-z]+(-[a-z]+)*$"_s);
    for (const OptionEntry &entry : optionTable()) {
        QVERIFY2(form.match(entry.name).hasMatch(), qPrintable(entry.name));
        QVERIFY2(entry.help.endsWith(u'.'), qPrintable(entry.name));
        QCOMPARE(findOption(entry.name), &entry);
        names.insert(entry.name);
    }
    QCOMPARE(names.size(), optionTable().size());
    QCOMPARE(findOption(u"colour"_s), nullptr);
}

void TestOptionTable::refusedValuesSetNothing()
{
    for (const OptionEntry &entry : optionTable()) {
        if (entry.valueName == u"FILE")
            continue; // any text is the name of a file
        Options options;
        QVERIFY2(entry.set(options, u"\x01"_s).startsWith(u"must be "_s), qPrintable(entry.name));
        QVERIFY2(options == Options(), qPrintable(entry.name));
    }
}

TIDELOFT_TEST_MAIN(TestOptionTable)
#include "tst_option_table.moc"
