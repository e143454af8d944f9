// Header values with parameters: what is read from them, and what is refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/header_value.h"
#include "tests/support/test_main.h"

using namespace tideloft::service;
using Parameters = QMap<QByteArray, QByteArray>;

class TestHeaderValue : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void refused_data();
    void refused();
};

void TestHeaderValue::values_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<Parameters>("parameters");
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &value,
                        const Parameters &parameters) { QTest::newRow(name) << text << value << parameters; };
    row("alone", "Text/Plain", "text/plain", {});
    row("empty", "", "", {});
    row("token", "a;B=C", "a", {{"b", "C"}});
    row("quoted", "a; b=\"c; d=e\"", "a", {{"b", "c; d=e"}});
    row("empty quotation", "a; b=\"\"", "a", {{"b", ""}});
    row("escaped quotation mark", R"(a; b="c\"d")", "a", {{"b", "c\"d"}});
    row("escaped backslash", R"(a; b="c\\")", "a", {{"b", "c\\"}});
    row("two parameters", "a; b=c; d=\"e\"", "a", {{"b", "c"}, {"d", "e"}});
    row("blanks and tabs", " a \t; b=c ", "a", {{"b", "c"}});
    row("semicolons too many", "a;; b=c;", "a", {{"b", "c"}});
}

void TestHeaderValue::values()
{
    QFETCH(QByteArray, text);
    const std::optional<HeaderValue> header = parseHeaderValue(text);
    QVERIFY(header);
    QTEST(header->value, "value");
    QTEST(header->parameters, "parameters");
}

void TestHeaderValue::refused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("quotation does not end") << QByteArray("a; b=\"c");
    QTest::newRow("quotation ends in a backslash") << QByteArray(R"(a; b="c\)");
    QTest::newRow("last mark is escaped") << QByteArray(R"(a; b="c\")");
    QTest::newRow("parameter twice") << QByteArray("a; b=c; B=d");
    QTest::newRow("no value") << QByteArray("a; b=");
    QTest::newRow("no equals sign") << QByteArray("a; b");
    QTest::newRow("no name") << QByteArray("a; =b");
    QTest::newRow("blank before the equals sign") << QByteArray("a; b =c");
    QTest::newRow("second word") << QByteArray("a b");
    QTest::newRow("rubbish behind a quotation") << QByteArray("a; b=\"c\"d");
    QTest::newRow("comma") << QByteArray("a, b");
    QTest::newRow("NUL") << QByteArray("a; b=c\0", 7);
}

void TestHeaderValue::refused()
{
    QFETCH(QByteArray, text);
    QVERIFY(!parseHeaderValue(text));
}

TIDELOFT_TEST_MAIN(TestHeaderValue)
#include "tst_header_value.moc"
