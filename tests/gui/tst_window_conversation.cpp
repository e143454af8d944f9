// Opening a conversation and moving between the pages of the center, by clicks and keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPropertyAnimation>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowConversation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void clickShowsTheConversation();
    void subtitleFollowsTheLanguageOfTheMoment();
    void avatarOfThePeer_data();
    void avatarOfThePeer();
    void blankUserDataOpensNothing_data();
    void blankUserDataOpensNothing();
    void userDataIsTrimmed();
    void messagesButtonReturnsToTheConversation();
    void messagesButtonWithoutConversation();
    void fadeInReplacesTheEffect();
    void fadeInOfTheMainPage();
    void actionButtonFocusesTheSearch();
    void addButtonFocusesAndEmptiesTheSearch();
    void oneCharacterSearchHidesAndSendsNothing_data();
    void oneCharacterSearchHidesAndSendsNothing();
};

void TestWindowConversation::clickShowsTheConversation()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"Bobby"_s));
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Bobby"_s);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"🔒 End-to-end krypterad"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), u"BO"_s);
    QVERIFY(probe.the<QLineEdit>(u"msgInput"_s)->hasFocus());
    QCOMPARE(probe.service.count("GET /api/chat/history/Bobby"), 1);
    QVERIFY(probe.center()->currentWidget()->graphicsEffect());
}

void TestWindowConversation::subtitleFollowsTheLanguageOfTheMoment()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"🔒 End-to-end encrypted"_s);
    probe.window->setLanguageIndex(0);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"🔒 End-to-end encrypted"_s);
    probe.click(u"railBtn=💬"_s);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"🔒 End-to-end krypterad"_s);
}

void TestWindowConversation::avatarOfThePeer_data()
{
    QTest::addColumn<QString>("peer");
    QTest::addColumn<QString>("avatar");
    QTest::newRow("one letter") << u"b"_s << u"B"_s;
    QTest::newRow("two letters") << u"bo"_s << u"BO"_s;
    QTest::newRow("longer") << u"carol"_s << u"CA"_s;
    QTest::newRow("surrogate pairs stay whole") << u"😀😁x"_s << u"😀😁"_s;
}

void TestWindowConversation::avatarOfThePeer()
{
    QFETCH(QString, peer);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({peer}));
    probe.clickPeer(peer);
    QTEST(probe.the<QLabel>(u"peerAvatar"_s)->text(), "avatar");
}

void TestWindowConversation::blankUserDataOpensNothing_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::newRow("none") << QVariant();
    QTest::newRow("empty") << QVariant(QString());
    QTest::newRow("blanks") << QVariant(u"  \t "_s);
}

void TestWindowConversation::blankUserDataOpensNothing()
{
    QFETCH(QVariant, data);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({u"bob"_s}));
    const auto *list = probe.the<QListWidget>(u"dmList"_s);
    list->item(0)->setData(Qt::UserRole, data);
    probe.service.clear();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QVERIFY(probe.settle());
    for (const RecordedRequest &request : probe.service.requests())
        QVERIFY2(!request.target.contains("/history/"), request.target.constData());
}

void TestWindowConversation::userDataIsTrimmed()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({u"bob"_s}));
    const auto *list = probe.the<QListWidget>(u"dmList"_s);
    list->item(0)->setData(Qt::UserRole, u"  carol "_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"carol"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/carol", 1));
}

void TestWindowConversation::messagesButtonReturnsToTheConversation()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    auto *messages = qobject_cast<QAbstractButton *>(named(*probe.window, u"railBtn=💬"_s));
    auto *settings = qobject_cast<QAbstractButton *>(named(*probe.window, u"railBtn=⚙"_s));
    messages->setChecked(false);
    settings->setChecked(true);
    probe.center()->setCurrentIndex(0);
    probe.service.clear();
    QTest::mouseClick(messages, Qt::LeftButton);
    QVERIFY(messages->isChecked());
    QVERIFY(!settings->isChecked());
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QVERIFY(probe.the<QLineEdit>(u"msgInput"_s)->hasFocus());
    QCOMPARE(probe.service.count("GET /api/chat/history/bob"), 0); // shown, not loaded again
    QTest::mouseClick(messages, Qt::LeftButton);
    QVERIFY(messages->isChecked()); // it cannot be switched off
}

void TestWindowConversation::messagesButtonWithoutConversation()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.center()->setCurrentIndex(1);
    auto *messages = qobject_cast<QAbstractButton *>(named(*probe.window, u"railBtn=💬"_s));
    QTest::mouseClick(messages, Qt::LeftButton);
    QVERIFY(messages->isChecked());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestWindowConversation::fadeInReplacesTheEffect()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    const QWidget *page = probe.center()->widget(1);
    const QPointer<QGraphicsEffect> first = page->graphicsEffect();
    QVERIFY(first);
    probe.clickPeer(u"bob"_s);
    QVERIFY(page->graphicsEffect());
    QVERIFY(!first); // a widget deletes the effect that another one replaces
    const auto *second = qobject_cast<QGraphicsOpacityEffect *>(page->graphicsEffect());
    QVERIFY(second);
    QTRY_VERIFY(!second->isEnabled());
    QCOMPARE(second->opacity(), 1.0);
    QCOMPARE(page->graphicsEffect(), second);
}

void TestWindowConversation::fadeInOfTheMainPage()
{
    GuiProbe probe;
    QVERIFY(!probe.root()->widget(1)->graphicsEffect());
    QVERIFY(callSlot(*probe.window, "onMeLoaded", Q_ARG(QJsonObject, QJsonObject())));
    const auto *effect = qobject_cast<QGraphicsOpacityEffect *>(probe.root()->widget(1)->graphicsEffect());
    QVERIFY(effect);
    const auto *animation = effect->findChild<QPropertyAnimation *>();
    QVERIFY(animation);
    QCOMPARE(animation->propertyName(), QByteArray("opacity"));
    QCOMPARE(animation->duration(), 180);
    QCOMPARE(animation->startValue().toDouble(), 0.0);
    QCOMPARE(animation->endValue().toDouble(), 1.0);
    QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
    const QPointer<const QPropertyAnimation> alive(animation);
    QTRY_VERIFY(!alive); // it deletes itself when it stops
    QCOMPARE(effect->opacity(), 1.0);
}

void TestWindowConversation::actionButtonFocusesTheSearch()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.click(u"emptyActionBtn"_s);
    QVERIFY(probe.the<QLineEdit>(u"sideSearch"_s)->hasFocus());
}

void TestWindowConversation::addButtonFocusesAndEmptiesTheSearch()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"bobby"}])");
    auto *search = probe.the<QLineEdit>(u"sideSearch"_s);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    QTest::keyClicks(search, u"bob"_s);
    QTRY_VERIFY(results->isVisible());
    QVERIFY(probe.service.waitForRequests("GET /api/users/search", 2)); // "bo" and "bob"
    QVERIFY(probe.settle());
    probe.username()->setFocus();
    probe.click(u"addDmBtn"_s);
    QVERIFY(search->hasFocus());
    QCOMPARE(search->text(), QString());
    QVERIFY(!results->isVisible());
}

void TestWindowConversation::oneCharacterSearchHidesAndSendsNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("one letter") << u"b"_s;
    QTest::newRow("one letter among blanks") << u"  b  "_s;
    QTest::newRow("blanks only") << u"    "_s;
}

void TestWindowConversation::oneCharacterSearchHidesAndSendsNothing()
{
    QFETCH(QString, typed);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    auto *results = probe.the<QListWidget>(u"searchResults"_s);
    results->addItem(u"a result of an earlier search"_s);
    results->show();
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), typed);
    QVERIFY(!results->isVisible());
    QCOMPARE(results->count(), 0);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /api/users/search"), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowConversation)
#include "tst_window_conversation.moc"
