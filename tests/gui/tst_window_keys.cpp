// The keys of the whole window: quitting, closing, and the way into the search and out of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void endTheProgram_data();
    void endTheProgram();
    void leadToTheSearch_data();
    void leadToTheSearch();
    void doNothingOnTheSignInPage();
    void escapeLeavesTheSearch_data();
    void escapeLeavesTheSearch();
    void resultsThatComeAfterEscapeStayHidden();
};

namespace
{

constexpr int stillRunning = 7;

void pressKey(const GuiProbe &probe, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(probe.window->windowHandle(), key, modifiers);
}

// Runs the event loop as the client does. The exit code is 0 if the program was asked to quit.
int runAndPress(const GuiProbe &probe, Qt::Key key)
{
    const QObject run; // nothing of this run is left for the next
    QTimer::singleShot(0, &run, [&] {
        pressKey(probe, key, Qt::ControlModifier);
        QTimer::singleShot(0, &run, [] { QCoreApplication::exit(stillRunning); });
    });
    return QApplication::exec();
}

} // namespace

void TestWindowKeys::endTheProgram_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<bool>("ends");
    for (const bool signedIn : {false, true}) {
        const char *page = signedIn ? "main page" : "sign-in page";
        QTest::addRow("Ctrl+Q, %s", page) << Qt::Key_Q << signedIn << true;
        QTest::addRow("Ctrl+W, %s", page) << Qt::Key_W << signedIn << true;
        QTest::addRow("Ctrl+E, %s", page) << Qt::Key_E << signedIn << false;
    }
}

void TestWindowKeys::endTheProgram()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, signedIn);
    QFETCH(bool, ends);
    GuiProbe probe;
    if (signedIn)
        QVERIFY(probe.signIn());
    else
        probe.username()->setFocus();
    QCOMPARE(runAndPress(probe, key), ends ? 0 : stillRunning);
    QCOMPARE(probe.window->isVisible(), !ends);
}

void TestWindowKeys::leadToTheSearch_data()
{
    QTest::addColumn<QString>("from");
    QTest::newRow("the message field") << u"msgInput"_s;
    QTest::newRow("the list of conversations") << u"dmList"_s;
    QTest::newRow("the search itself") << u"sideSearch"_s;
    QTest::newRow("a button") << u"quilloryBtn"_s;
}

void TestWindowKeys::leadToTheSearch()
{
    QFETCH(QString, from);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    auto *search = probe.the<QLineEdit>(u"sideSearch"_s);
    search->setText(u"carol"_s);
    probe.the<QWidget>(from)->setFocus();
    pressKey(probe, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), search);
    QCOMPARE(search->selectedText(), u"carol"_s); // what is typed next takes its place
}

void TestWindowKeys::doNothingOnTheSignInPage()
{
    GuiProbe probe;
    probe.username()->setFocus();
    pressKey(probe, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), probe.username());
}

void TestWindowKeys::escapeLeavesTheSearch_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("isOpen");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the message field") << u"sideSearch"_s << true << u"msgInput"_s;
    QTest::newRow("to the list of conversations") << u"sideSearch"_s << false << u"dmList"_s;
    QTest::newRow("from the results") << u"searchResults"_s << true << u"msgInput"_s;
}

void TestWindowKeys::escapeLeavesTheSearch()
{
    QFETCH(QString, from);
    QFETCH(bool, isOpen);
    QFETCH(QString, expected);
    GuiProbe probe;
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"carol"}])");
    QVERIFY(probe.signIn());
    if (isOpen)
        QVERIFY(probe.open(u"bob"_s));
    auto *search = probe.the<QLineEdit>(u"sideSearch"_s);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    pressKey(probe, Qt::Key_F, Qt::ControlModifier);
    typeText(u"car"_s);
    QTRY_VERIFY(results->isVisible());
    probe.the<QWidget>(from)->setFocus();
    pressKey(probe, Qt::Key_Escape);
    QCOMPARE(search->text(), QString());
    QVERIFY(!results->isVisible());
    QCOMPARE(QApplication::focusWidget(), probe.the<QWidget>(expected));
}

void TestWindowKeys::resultsThatComeAfterEscapeStayHidden()
{
    const QByteArray search = "GET /api/users/search";
    GuiProbe probe;
    probe.service.answer(search, 200, R"([{"username":"carol"}])");
    QVERIFY(probe.signIn());
    pressKey(probe, Qt::Key_F, Qt::ControlModifier);
    probe.service.hold(search);
    typeText(u"car"_s);
    QTRY_VERIFY(probe.service.heldCount(search) > 0);
    pressKey(probe, Qt::Key_Escape);
    probe.service.release(search);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    QTRY_VERIFY(results->count() > 0);
    QVERIFY(!results->isVisible());
    pressKey(probe, Qt::Key_F, Qt::ControlModifier); // and the next search shows its own
    typeText(u"car"_s);
    QTRY_VERIFY(results->isVisible());
}

TIDELOFT_GUI_TEST_MAIN(TestWindowKeys)
#include "tst_window_keys.moc"
