// Return and Space on the current entry of the conversation list and of the search's results.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/popups.h"
#include "tests/support/sidebar_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestClickKeys : public QObject
{
    Q_OBJECT

private slots:
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
};

namespace
{

void addKeys()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Space") << Qt::Key_Space << Qt::KeyboardModifiers();
}

/// What the sidebar has chosen: one peer, several with blanks between them, or none.
QString chosen(const QSignalSpy &choices)
{
    QStringList peers;
    for (const QList<QVariant> &choice : choices)
        peers.append(choice.constFirst().toString());
    return peers.join(u' ');
}

/// The sidebar with what it chooses, and a person who leads the keyboard through its lists.
class ClickProbe : public SidebarPageProbe
{
public:
    QListWidget *list(const QString &name) const { return the<QListWidget>(name); }

    /// Lists anna and bob and leads the keyboard to bob.
    bool walkToBob() const
    {
        listPeers({u"anna"_s, u"bob"_s});
        the<QWidget>(u"sideSearch"_s)->setFocus();
        pressKey(Qt::Key_Tab);
        pressKey(Qt::Key_Down);
        const QListWidgetItem *current = list(u"dmList"_s)->currentItem();
        return current && current->data(Qt::UserRole).toString() == u"bob";
    }
    /// Searches for "bo" and leads the keyboard to the second of the two results.
    bool walkToResult() const
    {
        clickAt(the<QWidget>(u"sideSearch"_s), {20, 10});
        typeText(u"bo"_s);
        sidebar->showFoundUsers({u"boris"_s, u"bob"_s});
        pressKey(Qt::Key_Tab);
        pressKey(Qt::Key_Down);
        const auto *results = list(u"searchResults"_s);
        return results->hasFocus() && results->currentRow() == 1;
    }

    QSignalSpy conversations{sidebar, &tideloft::ui::Sidebar::conversationChosen};
    QSignalSpy left{sidebar, &tideloft::ui::Sidebar::searchLeft};
};

} // namespace

void TestClickKeys::openTheCurrentConversation_data()
{
    addKeys();
}

void TestClickKeys::openTheCurrentConversation()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const ClickProbe probe;
    QVERIFY(probe.walkToBob());
    QCOMPARE(probe.sentSignals(), 0); // walking opens nothing
    probe.pressKey(key, modifiers);
    QCOMPARE(chosen(probe.conversations), u"bob"_s);
    QCOMPARE(probe.sentSignals(), 1);
    QCOMPARE(probe.the<QLineEdit>(u"sideSearch"_s)->text(), QString()); // the key went no further
}

void TestClickKeys::openTheCurrentResult_data()
{
    addKeys();
}

void TestClickKeys::openTheCurrentResult()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const ClickProbe probe;
    QVERIFY(probe.walkToResult());
    probe.pressKey(key, modifiers);
    QCOMPARE(chosen(probe.conversations), u"bob"_s);
    QVERIFY(probe.list(u"searchResults"_s)->isHidden());
    QCOMPARE(probe.list(u"searchResults"_s)->count(), 0);
    QCOMPARE(probe.the<QLineEdit>(u"sideSearch"_s)->text(), QString());
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
    const ClickProbe probe;
    QVERIFY(list == u"dmList" ? probe.walkToBob() : probe.walkToResult());
    const qsizetype before = probe.sentSignals(); // the search, as it was typed
    probe.pressKey(key, modifiers);
    const bool isSearchLeft = list == u"searchResults" && key == Qt::Key_Escape;
    QCOMPARE(probe.list(list)->isVisible(), !isSearchLeft);
    QCOMPARE(probe.list(list)->count(), isSearchLeft ? 0 : 2);
    QCOMPARE(probe.left.size(), isSearchLeft ? 1 : 0);
    QCOMPARE(probe.sentSignals(), before + probe.left.size());
}

void TestClickKeys::aHeldKeyOpensNothing()
{
    const ClickProbe probe;
    QVERIFY(probe.walkToBob());
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    QApplication::sendEvent(probe.list(u"dmList"_s), &repeated);
    QCOMPARE(probe.sentSignals(), 0);
}

void TestClickKeys::anEmptyListOpensNothing()
{
    const ClickProbe probe;
    probe.listPeers({});
    probe.the<QWidget>(u"dmList"_s)->setFocus();
    probe.pressKey(Qt::Key_Return);
    probe.pressKey(Qt::Key_Space);
    QCOMPARE(probe.sentSignals(), 0);
}

void TestClickKeys::aBlankEntryOpensNothing()
{
    const ClickProbe probe;
    QVERIFY(probe.walkToBob());
    probe.list(u"dmList"_s)->currentItem()->setData(Qt::UserRole, u"   "_s);
    probe.pressKey(Qt::Key_Return);
    QCOMPARE(probe.sentSignals(), 0);
}

void TestClickKeys::theFirstEntryIsCurrentOnceTabArrives()
{
    const ClickProbe probe;
    probe.listPeers({u"bob"_s, u"anna"_s});
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    probe.pressKey(Qt::Key_Tab);
    QVERIFY(probe.list(u"dmList"_s)->hasFocus());
    probe.pressKey(Qt::Key_Return);
    QCOMPARE(chosen(probe.conversations), u"bob"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestClickKeys)
#include "tst_click_keys.moc"
