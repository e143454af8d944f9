// Replies with a hundred thousand elements: what is made of them is bounded, and what people have is whole.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/test_main.h"
#include "ui/lists/bounded_rows.h"
#include "ui/messages/conversation_row_models.h"

#include <QApplication>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

constexpr int far = 100'000;

QJsonArray numbered(int count, const QString &name, const QJsonObject &rest = {})
{
    QJsonArray items;
    for (int i = 0; i < count; ++i) {
        QJsonObject item = rest; // a fresh one: each value that is replaced would stay in its bytes
        item.insert(name, u"n%1"_s.arg(i));
        items.append(item);
    }
    return items;
}

QString userOf(const QListWidget *list, int index)
{
    return list->item(index)->data(Qt::UserRole).toString();
}

// The limit, what is just below it and above it, and what is far beyond.
void addCounts(qsizetype limit)
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("shown");
    const int most = static_cast<int>(limit);
    QTest::newRow("a few") << 30 << 30;
    QTest::newRow("as many as are shown") << most << most;
    QTest::newRow("one more") << most + 1 << most;
    QTest::newRow("100,000") << far << most;
}

} // namespace

class TestHostileNumbers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void foundUsers_data() { addCounts(foundUsersLimit); }
    void foundUsers();
    void unusableUsersTakeNoPlace();
    void conversations_data() { addCounts(conversationsLimit); }
    void conversations();
    void noConversationIsOpenedUnseen();
    void serverRail_data() { addCounts(serversLimit); }
    void serverRail();
    void history_data() { addCounts(historyLimit); }
    void history();
};

void TestHostileNumbers::foundUsers()
{
    QFETCH(const int, count);
    QFETCH(const int, shown);
    const SettingsProbe probe;
    callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, numbered(count, u"username"_s)));
    const auto *list = probe.the<QListWidget>(u"searchResults"_s);
    QCOMPARE(list->count(), shown);
    QCOMPARE(userOf(list, 0), u"n0"_s);
    QCOMPARE(userOf(list, shown - 1), u"n%1"_s.arg(shown - 1));
}

void TestHostileNumbers::unusableUsersTakeNoPlace()
{
    QJsonArray users = numbered(far, u"nickname"_s);
    users.append(QJsonObject{{u"username"_s, u"last"_s}});
    const SettingsProbe probe;
    callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, users));
    const auto *list = probe.the<QListWidget>(u"searchResults"_s);
    QCOMPARE(list->count(), 1);
    QCOMPARE(userOf(list, 0), u"last"_s);
}

void TestHostileNumbers::conversations()
{
    QFETCH(const int, count);
    QFETCH(const int, shown);
    const SettingsProbe probe;
    callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, numbered(count, u"peer"_s)));
    const auto *list = probe.the<QListWidget>(u"dmList"_s);
    QCOMPARE(list->count(), shown);
    QCOMPARE(userOf(list, 0), u"n0"_s);
    QCOMPARE(userOf(list, shown - 1), u"n%1"_s.arg(shown - 1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the row that stood there before
    const auto rows = list->viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    QVERIFY(!rows.isEmpty() && rows.size() <= 100); // those near the screen
}

// Opening costs more than showing.
void TestHostileNumbers::noConversationIsOpenedUnseen()
{
    qsizetype opened = 0;
    const auto open = [&opened](const QJsonObject &) {
        ++opened;
        return QString();
    };
    const QJsonArray items = numbered(far, u"peer"_s, {{u"encrypted"_s, true}});
    const auto rows =
        conversationRows(items, {u"alice"_s, open, QDateTime::currentDateTime(), Language::English});
    QCOMPARE(rows.size(), conversationsLimit);
    QCOMPARE(opened, 0);
    (void)rows.last().preview.value();
    QCOMPARE(opened, 1);
}

void TestHostileNumbers::serverRail()
{
    QFETCH(const int, count);
    QFETCH(const int, shown);
    const SettingsProbe probe;
    callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, numbered(count, u"groupId"_s)));
    const QList<QAbstractButton *> buttons = serverButtons(probe);
    QCOMPARE(buttons.size(), shown);
    QCOMPARE(buttons.last()->accessibleName(), u"n%1"_s.arg(shown - 1));
    buttons.last()->click(); // makes all of them anew
    QCOMPARE(serverButtons(probe).size(), shown);
    QCOMPARE(serverChecks(probe).indexOf(true), shown - 1);
}

void TestHostileNumbers::history()
{
    QFETCH(const int, count);
    QFETCH(const int, shown);
    SettingsProbe probe;
    QVERIFY(probe.open(u"bob"_s));
    QVERIFY(probe.settle());
    const QJsonArray items =
        numbered(count, u"text"_s, {{u"from"_s, u"bob"_s}, {u"createdAt"_s, u"2026-11-21T10:00:00Z"_s}});
    callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, u"bob"_s), Q_ARG(QJsonArray, items));
    const auto *list = probe.the<QListWidget>(u"messageList"_s);
    QCOMPARE(list->count(), shown + 1); // and the day
    const auto textAt = [list](int index) {
        return list->item(index)->data(Qt::AccessibleTextRole).toString().split(u", "_s);
    };
    QVERIFY(textAt(1).contains(u"n%1"_s.arg(count - shown)));
    QVERIFY(textAt(shown).contains(u"n%1"_s.arg(count - 1)));
    QVERIFY(labelTexts(list->itemWidget(list->item(shown))).contains(u"n%1"_s.arg(count - 1)));
}

TIDELOFT_GUI_TEST_MAIN(TestHostileNumbers)
#include "tst_hostile_numbers.moc"
