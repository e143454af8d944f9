// Stored language or first start's question: which index the window gets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/start_up.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

using namespace Qt::StringLiterals;
using tideloft::app::settleLanguage;

namespace
{

QWidget *question()
{
    return QApplication::activeModalWidget();
}

void press(int button)
{
    QTest::mouseClick(question()->findChildren<QPushButton *>(u"langBtn"_s).at(button), Qt::LeftButton);
}

} // namespace

class TestSettleLanguage : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings().clear(); }
    void storedLanguage_data();
    void storedLanguage();
    void firstStart_data();
    void firstStart();
    void escapeLeavesNoLanguageAndAsksAgain();
    void unreadableStoreIsAFirstStart();
};

void TestSettleLanguage::storedLanguage_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("expected");
    const auto row = [](const char *name, const QVariant &stored, int expected) {
        QTest::newRow(name) << stored << expected;
    };
    row("en is English", u"en"_s, 1);
    row("sv is Swedish", u"sv"_s, 0);
    row("EN is Swedish: the comparison is exact", u"EN"_s, 0);
    row("a blank before en is Swedish", u" en"_s, 0);
    row("a blank after en is Swedish", u"en "_s, 0);
    row("another language is Swedish", u"de"_s, 0);
    row("en_GB is Swedish", u"en_GB"_s, 0);
    row("an empty value is Swedish, and no first start", u""_s, 0);
    row("a number is Swedish", 1, 0);
}

void TestSettleLanguage::storedLanguage()
{
    QFETCH(const QVariant, stored);
    QFETCH(const int, expected);
    QSettings().setValue(u"language"_s, stored);
    bool asked = false;
    QTimer::singleShot(0, this, [&asked] {
        asked = question();
        if (asked)
            QTest::keyClick(question(), Qt::Key_Escape);
    });
    QCOMPARE(settleLanguage(QSettings()), std::optional(expected));
    QCoreApplication::processEvents(); // the timer's turn, if no question took it
    QVERIFY(!asked);
    QCOMPARE(QSettings().value(u"language"_s).toString(), stored.toString());
}

void TestSettleLanguage::firstStart_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("stored");
    QTest::newRow("Svenska is index 0") << 0 << u"sv"_s;
    QTest::newRow("English is index 1") << 1 << u"en"_s;
}

void TestSettleLanguage::firstStart()
{
    QFETCH(const int, button);
    QFETCH(const QString, stored);
    QTimer::singleShot(0, this, [button] { press(button); });
    QCOMPARE(settleLanguage(QSettings()), std::optional(button)); // the buttons stand in the order of indices
    QCOMPARE(QSettings().value(u"language"_s).toString(), stored);
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());     // the question is gone
    QCOMPARE(settleLanguage(QSettings()), std::optional(button)); // and is not asked again
}

void TestSettleLanguage::escapeLeavesNoLanguageAndAsksAgain()
{
    for (int start = 0; start < 2; ++start) {
        bool asked = false;
        QTimer::singleShot(0, this, [&asked] {
            asked = question();
            QTest::keyClick(question(), Qt::Key_Escape);
        });
        QCOMPARE(settleLanguage(QSettings()), std::nullopt);
        QVERIFY(asked);
        QCOMPARE(QSettings().allKeys(), QStringList());
    }
}

void TestSettleLanguage::unreadableStoreIsAFirstStart()
{
    const QString file = QSettings().fileName();
    QFile::remove(file);
    QVERIFY(QDir().mkpath(file)); // a folder where the file should be
    QTimer::singleShot(0, this, [] { press(1); });
    QCOMPARE(settleLanguage(QSettings()), std::optional(1)); // holds for this run, though it cannot be stored
    QVERIFY(QFileInfo(file).isDir());
    QVERIFY(QDir().rmdir(file));
}

TIDELOFT_GUI_TEST_MAIN(TestSettleLanguage)
#include "tst_settle_language.moc"
