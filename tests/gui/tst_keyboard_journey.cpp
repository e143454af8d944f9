// A person without a mouse: signs up, finds somebody, writes, opens the settings, changes the picture, makes
// a server and logs out. Nothing but keys, and each goes to whatever has the keyboard by then.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_probe.h"
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/patience.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestKeyboardJourney : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void fromSigningUpToLoggingOut();
    void aServerIsMadeAndItsMenuOpens();
    void tabLeadsBackToWhereItBegan_data();
    void tabLeadsBackToWhereItBegan();
    void dialogsGiveTheKeyboardBack();
};

namespace
{

/// What a service needs to know to let anybody sign up, find bob and write to him.
void prepare(LoopbackService &service)
{
    service.answer("GET /api/users/search", 200, R"([{"username":"boris"},{"username":"bob"}])");
    service.answer("GET /api/chat/history/bob", 200, "[]");
    service.answer("GET /api/chat/public-key/bob", 200,
                   R"({"keys":[{"deviceId":"d","publicKeyBase64":")" + ownKeyPair().publicKey.toUtf8()
                       + R"("}]})");
    service.answer("POST /api/chat/send", 200, "{}");
    service.answer("POST /api/profile/avatar/upload", 200, R"({"avatarUrl":"/a"})");
}

/// The keys of a keyboard, and eyes that see where they go.
class Hands
{
public:
    explicit Hands(const GuiProbe &probe) : window(probe.window.get()) {}

    QString where() const { return window->focusWidget() ? spokenName(window->focusWidget()) : QString(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window->windowHandle(), key, modifiers);
    }
    void type(const QString &text) const { typeInto(*window, text); }
    /// Presses Tab, or Shift and Tab, until the keyboard stands at NAME. False: it never gets there.
    bool walkTo(const QString &name, Qt::Key tab = Qt::Key_Tab) const
    {
        for (int steps = 0; steps < 60; ++steps) {
            if (where() == name)
                return true;
            press(tab, tab == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        }
        return false;
    }

private:
    QWidget *window;
};

bool signUp(GuiProbe &probe, const Hands &hands)
{
    if (!hands.walkTo(u"Språk: Svenska"_s))
        return false;
    hands.press(Qt::Key_Down);
    if (!hands.walkTo(u"Username"_s, Qt::Key_Tab))
        return false;
    hands.type(u"alice"_s);
    hands.press(Qt::Key_Tab);
    hands.type(u"correct horse"_s);
    if (!hands.walkTo(u"Create account"_s))
        return false;
    hands.press(Qt::Key_Space);
    return probe.service.waitForRequests("POST /api/auth/register", 1)
           && waitFor([&probe] { return probe.onMainPage(); }, patience())
           && probe.service.waitForRequests("GET /api/groups", 1);
}

bool findBob(const GuiProbe &probe, const Hands &hands)
{
    if (!hands.walkTo(u"Search or start conversation"_s))
        return false;
    hands.type(u"bo"_s);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    if (!waitFor([results] { return results->count() == 2; }, patience())
        || !hands.walkTo(u"Search results"_s))
        return false;
    hands.press(Qt::Key_Down);
    hands.press(Qt::Key_Return);
    return probe.the<QLabel>(u"centerTitle"_s)->text() == u"bob" && hands.where() == u"Message";
}

bool choosePicture(const GuiProbe &probe, const Hands &hands, const QString &path)
{
    if (!hands.walkTo(u"Profile picture"_s))
        return false;
    const Person<QFileDialog> person([&](const QFileDialog &dialog) { choosePath(dialog, path); });
    hands.press(Qt::Key_Space);
    const auto *status = probe.the<QLabel>(u"myStatus"_s);
    return person.hasAnswered()
           && waitFor([status] { return status->text() == u"✓ Picture updated"; }, patience());
}

} // namespace

void TestKeyboardJourney::fromSigningUpToLoggingOut()
{
    const PictureFolder files;
    GuiProbe probe;
    prepare(probe.service);
    const Hands hands(probe);
    QCOMPARE(hands.where(), u"Användarnamn"_s); // where a person begins to type
    QVERIFY(signUp(probe, hands));
    QVERIFY(findBob(probe, hands));
    hands.type(u"Hello Bob"_s);
    hands.press(Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests("POST /api/chat/send", 1));
    QTRY_COMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), QString());
    QVERIFY(hands.walkTo(u"Settings"_s, Qt::Key_Backtab));
    hands.press(Qt::Key_Space);
    QVERIFY(hands.walkTo(u"Account"_s));
    QVERIFY(choosePicture(probe, hands, files.writeWidePicture(u"me.png"_s)));
    QCOMPARE(hands.where(), u"Profile picture"_s);
    QVERIFY(hands.walkTo(u"Account menu"_s));
    const Person<QMenu> person([](const QMenu &menu) {
        press(menu, Qt::Key_Up); // from the end: "Log out"
        press(menu, Qt::Key_Return);
    });
    hands.press(Qt::Key_Return);
    QVERIFY(person.hasAnswered());
    QVERIFY(!probe.onMainPage());
    QCOMPARE(hands.where(), u"Username"_s);
}

void TestKeyboardJourney::aServerIsMadeAndItsMenuOpens()
{
    SettingsProbe probe;
    probe.service.answer("POST /api/groups", 200, R"({"groupId":"g"})");
    QVERIFY(listServers(probe, {server(u"g"_s, u"Reef"_s)}));
    const Hands hands(probe);
    QVERIFY(hands.walkTo(u"Create server"_s));
    const Person<QDialog> maker([](const QDialog &dialog) {
        typeInto(dialog, u"Reef"_s);
        press(dialog, Qt::Key_Return);
    });
    hands.press(Qt::Key_Space);
    QVERIFY(maker.hasAnswered());
    QVERIFY(probe.service.waitForRequests("POST /api/groups", 1));
    QVERIFY(hands.walkTo(u"Reef"_s));
    // The toolkit makes the key into a request for the menu on the platforms that do not do it themselves.
    QStringList entries;
    const Person<QMenu> reader([&entries](QMenu &menu) {
        entries = entriesOf(&menu);
        press(menu, Qt::Key_Escape);
    });
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {5, 5},
                            probe.window->focusWidget()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(probe.window->focusWidget(), &byKey);
    QVERIFY(reader.hasAnswered());
    QCOMPARE(entries, QStringList({u"Upload server icon"_s, u"Open server"_s}));
    QCOMPARE(hands.where(), u"Reef"_s);
}

void TestKeyboardJourney::tabLeadsBackToWhereItBegan_data()
{
    QTest::addColumn<int>("section");
    QTest::newRow("sign-in page") << -3;
    QTest::newRow("no conversation") << -2;
    QTest::newRow("conversation") << -1;
    for (int section = Account; section <= About; ++section)
        QTest::addRow("settings, section %d", section) << section;
}

// Whatever has the keyboard lets go of it, in both directions, and the way back is the way there.
void TestKeyboardJourney::tabLeadsBackToWhereItBegan()
{
    QFETCH(int, section);
    SettingsProbe probe;
    if (section == -3)
        probe.window->logOut();
    QVERIFY(section != -1 || probe.open(u"bob"_s));
    if (section >= 0) {
        probe.openSettings();
        probe.clickRow(section);
    }
    const Hands hands(probe);
    const auto walk = [&](Qt::Key tab) {
        const QWidget *first = probe.window->focusWidget();
        QList<const QWidget *> way{first};
        do {
            hands.press(tab, tab == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            way.append(probe.window->focusWidget());
        } while (way.last() != first && way.size() < 60);
        return way;
    };
    const QList<const QWidget *> forth = walk(Qt::Key_Tab);
    QCOMPARE(forth.last(), forth.first());
    QVERIFY(forth.size() > 5);
    QList<const QWidget *> back = walk(Qt::Key_Backtab);
    std::reverse(back.begin(), back.end());
    QCOMPARE(back, forth);
}

void TestKeyboardJourney::dialogsGiveTheKeyboardBack()
{
    const SettingsProbe probe;
    const Hands hands(probe);
    for (const QString &button : {u"Create server"_s, u"Quillory"_s}) {
        QVERIFY(hands.walkTo(button));
        const Person<QDialog> person([](const QDialog &dialog) { press(dialog, Qt::Key_Escape); });
        hands.press(Qt::Key_Space);
        QVERIFY(person.hasAnswered());
        QCOMPARE(hands.where(), button);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestKeyboardJourney)
#include "tst_keyboard_journey.moc"
