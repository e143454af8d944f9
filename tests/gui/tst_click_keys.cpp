// Return and Space on the current entry of the conversation list and of the search's results.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestClickKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void openTheCurrentConversation_data();
    void openTheCurrentConversation();
    void openTheCurrentResult_data();
    void openTheCurrentResult();
    void otherKeysOpenNothing_data();
    void otherKeysOpenNothing();
    void aHeldKeyOpensNothing();
    void anEmptyListOpensNothing();
    void aBlankEntryOpensNothing();
    void theFirstEntryIsCurrentOnceTabArrives();
    void keysAsAClickSendOneRequest();
};

namespace
{

const QByteArray bobsHistory = QByteArrayLiteral("GET /api/chat/history/bob");

void addKeys()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Space") << Qt::Key_Space << Qt::KeyboardModifiers();
}

QListWidget *listOf(const GuiProbe &probe, const QString &name)
{
    return probe.the<QListWidget>(name);
}

void pressKey(const GuiProbe &probe, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(probe.window->windowHandle(), key, modifiers);
}

/// Lists anna and bob and leads the keyboard to bob.
bool walkToBob(SettingsProbe &probe)
{
    probe.service.answer(bobsHistory, 200, "[]");
    if (!probe.listPeers({u"anna"_s, u"bob"_s}))
        return false;
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    pressKey(probe, Qt::Key_Tab);
    pressKey(probe, Qt::Key_Down);
    const QListWidgetItem *current = listOf(probe, u"dmList"_s)->currentItem();
    return current && current->data(Qt::UserRole).toString() == u"bob";
}

/// Searches for "bo" and leads the keyboard to the second of the two results.
bool walkToResult(SettingsProbe &probe)
{
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"boris"},{"username":"bob"}])");
    probe.service.answer(bobsHistory, 200, "[]");
    clickAt(probe.the<QWidget>(u"sideSearch"_s), {20, 10});
    typeText(u"bo"_s);
    const auto *results = listOf(probe, u"searchResults"_s);
    if (!waitFor([results] { return results->isVisible() && results->count() == 2; }))
        return false;
    pressKey(probe, Qt::Key_Tab);
    pressKey(probe, Qt::Key_Down);
    return results->hasFocus() && results->currentRow() == 1;
}

} // namespace

void TestClickKeys::openTheCurrentConversation_data()
{
    addKeys();
}

void TestClickKeys::openTheCurrentConversation()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QCOMPARE(probe.centerPage(), u"emptyState"_s); // walking opens nothing
    pressKey(probe, key, modifiers);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QVERIFY(probe.the<QWidget>(u"msgInput"_s)->hasFocus());
    QVERIFY(probe.service.waitForRequests(bobsHistory, 1));
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), QString()); // the key went no further
}

void TestClickKeys::openTheCurrentResult_data()
{
    addKeys();
}

void TestClickKeys::openTheCurrentResult()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    SettingsProbe probe;
    QVERIFY(walkToResult(probe));
    pressKey(probe, key, modifiers);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QVERIFY(listOf(probe, u"searchResults"_s)->isHidden());
    QCOMPARE(listOf(probe, u"searchResults"_s)->count(), 0);
    QCOMPARE(probe.the<QLineEdit>(u"sideSearch"_s)->text(), QString());
    QVERIFY(probe.the<QWidget>(u"msgInput"_s)->hasFocus());
    QVERIFY(probe.service.waitForRequests(bobsHistory, 1));
}

void TestClickKeys::otherKeysOpenNothing_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const Qt::KeyboardModifiers none;
    for (const QString &list : {u"dmList"_s, u"searchResults"_s}) {
        const QByteArray name = list.toLatin1();
        QTest::addRow("%s, a letter", name.constData()) << list << Qt::Key_A << none;
        QTest::addRow("%s, Escape", name.constData()) << list << Qt::Key_Escape << none;
        QTest::addRow("%s, F2", name.constData()) << list << Qt::Key_F2 << none;
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
            const char *shown = key == Qt::Key_Return ? "Return" : "Space";
            QTest::addRow("%s, Ctrl+%s", name.constData(), shown)
                << list << key << Qt::KeyboardModifiers(Qt::ControlModifier);
            QTest::addRow("%s, Shift+%s", name.constData(), shown)
                << list << key << Qt::KeyboardModifiers(Qt::ShiftModifier);
            QTest::addRow("%s, Alt+%s", name.constData(), shown)
                << list << key << Qt::KeyboardModifiers(Qt::AltModifier);
        }
    }
}

void TestClickKeys::otherKeysOpenNothing()
{
    QFETCH(QString, list);
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    SettingsProbe probe;
    QVERIFY(list == u"dmList" ? walkToBob(probe) : walkToResult(probe));
    pressKey(probe, key, modifiers);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    const bool isSearchLeft = list == u"searchResults" && key == Qt::Key_Escape;
    QCOMPARE(listOf(probe, list)->isVisible(), !isSearchLeft);
    QCOMPARE(listOf(probe, list)->count(), isSearchLeft ? 0 : 2);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(bobsHistory), 0);
    QCOMPARE(probe.service.count("GET /api/chat/history/anna"), 0);
}

void TestClickKeys::aHeldKeyOpensNothing()
{
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    QApplication::sendEvent(listOf(probe, u"dmList"_s), &repeated);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestClickKeys::anEmptyListOpensNothing()
{
    SettingsProbe probe;
    QVERIFY(probe.listPeers({}));
    probe.the<QWidget>(u"dmList"_s)->setFocus();
    pressKey(probe, Qt::Key_Return);
    pressKey(probe, Qt::Key_Space);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestClickKeys::aBlankEntryOpensNothing()
{
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    listOf(probe, u"dmList"_s)->currentItem()->setData(Qt::UserRole, u"   "_s);
    pressKey(probe, Qt::Key_Return);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestClickKeys::theFirstEntryIsCurrentOnceTabArrives()
{
    SettingsProbe probe;
    probe.service.answer(bobsHistory, 200, "[]");
    QVERIFY(probe.listPeers({u"bob"_s, u"anna"_s}));
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    pressKey(probe, Qt::Key_Tab);
    QVERIFY(listOf(probe, u"dmList"_s)->hasFocus());
    pressKey(probe, Qt::Key_Return);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
}

void TestClickKeys::keysAsAClickSendOneRequest()
{
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    probe.service.clear();
    pressKey(probe, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(bobsHistory, 1));
    QCOMPARE(probe.service.requests().size(), 1);
}

TIDELOFT_GUI_TEST_MAIN(TestClickKeys)
#include "tst_click_keys.moc"
