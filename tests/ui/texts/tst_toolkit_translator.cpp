// Which words of the toolkit are translated, with and without the toolkit's own translations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/texts/toolkit_translator.h"

using namespace Qt::StringLiterals;
using tideloft::ui::Language;
using tideloft::ui::ToolkitTranslator;

class TestToolkitTranslator : public QObject
{
    Q_OBJECT

private slots:
    void swedish_data();
    void swedish();
    void englishIsTheToolkitsOwn();
    void missingTranslationsAreNoError();
    void nothingIsTranslatedTwice();
};

void TestToolkitTranslator::swedish_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("english");
    QTest::addColumn<QString>("swedish"); // empty: stays English
    const auto row = [](const QByteArray &context, const QByteArray &english, const QString &swedish) {
        QTest::newRow(context + ", " + english) << context << english << swedish;
    };
    row("QLineEdit", "&Paste", u"Klistra &in"_s);
    row("QFileDialog", "Look in:", u"Leta i:"_s);
    row("QPlatformTheme", "Cancel", u"Avbryt"_s);
    row("QPlatformTheme", "OK", {});
    row("QScrollBar", "Scroll here", u"Rulla här"_s); // known to the toolkit's translations alone
    row("QAbstractSocket", "Connection refused", {}); // known to them as well
    row("QHostInfoAgent", "Host not found", {});
    row("QShortcut", "Left", {});
    row("QFileDialog", "no such text", {});
}

void TestToolkitTranslator::swedish()
{
    QFETCH(const QByteArray, context);
    QFETCH(const QByteArray, english);
    const ToolkitTranslator words;
    QTEST(words.translate(context, english), "swedish");
}

void TestToolkitTranslator::englishIsTheToolkitsOwn()
{
    ToolkitTranslator words;
    words.speak(Language::English);
    QVERIFY(words.translate("QLineEdit", "&Paste").isNull());
    QVERIFY(words.translate("QScrollBar", "Scroll here").isNull());
    words.speak(Language::Swedish);
    QCOMPARE(words.translate("QLineEdit", "&Paste"), u"Klistra &in"_s);
}

void TestToolkitTranslator::missingTranslationsAreNoError()
{
    const QTemporaryDir empty;
    const ToolkitTranslator words(empty.path());
    QCOMPARE(words.translate("QLineEdit", "&Paste"), u"Klistra &in"_s);
    QVERIFY(words.translate("QScrollBar", "Scroll here").isNull());
}

// Where it is installed, other translators keep their turn: a text that is not known comes back as null.
void TestToolkitTranslator::nothingIsTranslatedTwice()
{
    ToolkitTranslator words;
    QCoreApplication::installTranslator(&words);
    QCOMPARE(QCoreApplication::translate("QLineEdit", "&Paste"), u"Klistra &in"_s);
    QCOMPARE(QCoreApplication::translate("QLineEdit", "Klistra &in"), u"Klistra &in"_s);
    QCOMPARE(QCoreApplication::translate("QAbstractSocket", "Connection refused"), u"Connection refused"_s);
}

TIDELOFT_TEST_MAIN(TestToolkitTranslator)
#include "tst_toolkit_translator.moc"
