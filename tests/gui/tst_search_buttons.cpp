// The buttons that lead to the search for users: what they say, and that they put the cursor into it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSearchButtons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(chat.signIn()); }
    void init() { failOnToolkitWarnings(); }
    void addButtonClearsAndFocusesTheSearch();
    void emptyStatesButtonFocusesTheSearch();
    void buttonSays_data();
    void buttonSays();

private:
    ChatWindow chat;
};

void TestSearchButtons::addButtonClearsAndFocusesTheSearch()
{
    chat.service.answer("GET /api/users/search", 200, R"([{"username":"boa"}])");
    QTest::keyClicks(chat.sideSearch(), u"bo"_s);
    QTRY_VERIFY(chat.searchResults()->isVisible());
    chat.window.setFocus();
    QVERIFY(!chat.sideSearch()->hasFocus());
    QTest::mouseClick(chat.child<QPushButton>("addDmBtn"), Qt::LeftButton);
    QVERIFY(chat.sideSearch()->hasFocus());
    QCOMPARE(chat.sideSearch()->text(), QString());
    QVERIFY(!chat.searchResults()->isVisible());
}

void TestSearchButtons::emptyStatesButtonFocusesTheSearch()
{
    ChatWindow fresh; // with no conversation open, so that the button can be seen
    QVERIFY(fresh.signIn());
    fresh.sideSearch()->setText(u"bo"_s);
    fresh.window.setFocus();
    QVERIFY(!fresh.sideSearch()->hasFocus());
    QTest::mouseClick(fresh.child<QPushButton>("emptyActionBtn"), Qt::LeftButton);
    QVERIFY(fresh.sideSearch()->hasFocus());
    QCOMPARE(fresh.sideSearch()->text(), u"bo"_s);
}

void TestSearchButtons::buttonSays_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("text");
    QTest::newRow("add, Swedish") << 0 << QByteArray("addDmBtn") << u"+"_s;
    QTest::newRow("add, English") << 1 << QByteArray("addDmBtn") << u"+"_s;
    QTest::newRow("start, Swedish") << 0 << QByteArray("emptyActionBtn") << u"➕  Starta ny konversation"_s;
    QTest::newRow("start, English") << 1 << QByteArray("emptyActionBtn") << u"➕  Start new conversation"_s;
}

void TestSearchButtons::buttonSays()
{
    QFETCH(const int, language);
    QFETCH(const QByteArray, button);
    chat.window.setLanguageIndex(language);
    QTEST(chat.child<QPushButton>(button.constData())->text(), "text");
    chat.window.setLanguageIndex(1);
}

TIDELOFT_GUI_TEST_MAIN(TestSearchButtons)
#include "tst_search_buttons.moc"
