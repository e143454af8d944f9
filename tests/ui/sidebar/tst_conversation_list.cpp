// The conversation list: which items get a row, what it says, and what a click does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_rows.h"
#include "tests/support/midnight.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/sidebar_page_probe.h"
#include "tests/support/test_main.h"
#include "ui/messages/message_reader.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

QString atNoon(QDate day)
{
    return day.startOfDay().addSecs(12 * 3600).toUTC().toString(Qt::ISODate);
}

} // namespace

class TestConversationList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void itemWithoutPeerHasNoRow();
    void orderIsTheServices();
    void everyReplyIsListedAnew();
    void previewSays_data();
    void previewSays();
    void sealedPreviewIsOpened();
    void longPreviewIsCutAt140Pixels();
    void timeShows_data();
    void timeShows();
    void clickOpensByTheEntrysData();
    void clickOnBlankNameDoesNothing();

private:
    void show(const QJsonArray &items, Language language = Language::English);
    QListWidget *dmList() const { return page->the<QListWidget>(u"dmList"_s); }
    QStringList peers() const;
    QString previewAt(int index) const { return shownConversation(dmList(), index).preview->text(); }

    const QString deviceId = u"this device"_s;
    std::unique_ptr<SidebarPageProbe> page;
    MessageReader reader{deviceId};
};

void TestConversationList::initTestCase()
{
    stayAwayFromMidnight();
    makeKeyPair();
    reader.signIn(u"alice"_s);
    page = std::make_unique<SidebarPageProbe>();
}

// As the window does with every reply.
void TestConversationList::show(const QJsonArray &items, Language language)
{
    page->sidebar->showConversations(reader.conversationRows(items, language));
}

QStringList TestConversationList::peers() const
{
    QStringList names;
    for (int i = 0; i < dmList()->count(); ++i)
        names.append(dmList()->item(i)->data(Qt::UserRole).toString());
    return names;
}

void TestConversationList::itemWithoutPeerHasNoRow()
{
    const QJsonObject bob{{u"peer"_s, u"bob"_s}};
    show({QJsonObject{{u"text"_s, u"lost"_s}}, QJsonObject{{u"peer"_s, u"   "_s}},
          QJsonObject{{u"peer"_s, 7}}, 42, u"carol"_s, QJsonValue(), bob});
    QCOMPARE(peers(), QStringList{u"bob"_s});
}

void TestConversationList::orderIsTheServices()
{
    const QStringList names{u"zoe"_s, u"adam"_s, u"Mia"_s, u"adam"_s};
    QJsonArray items;
    for (const QString &name : names)
        items.append(QJsonObject{{u"peer"_s, name}});
    show(items);
    QCOMPARE(peers(), names);
}

void TestConversationList::everyReplyIsListedAnew()
{
    const auto item = [](const QString &peer, const QString &text) {
        return QJsonObject{{u"peer"_s, peer}, {u"text"_s, text}};
    };
    show({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"1"_s)});
    const QPointer<QWidget> bob = dmList()->itemWidget(dmList()->item(0));
    const QPointer<QWidget> eve = dmList()->itemWidget(dmList()->item(1));
    dmList()->setCurrentRow(1);
    show({item(u"bob"_s, u"1"_s), item(u"eve"_s, u"2"_s)});
    QCOMPARE(peers(), QStringList({u"bob"_s, u"eve"_s}));
    QVERIFY(bob); // it says what it said
    QTRY_VERIFY(!eve);
    QCOMPARE(previewAt(1), u"2"_s);
    QVERIFY(dmList()->selectedItems().isEmpty());
    show({});
    QCOMPARE(dmList()->count(), 0);
    QTRY_VERIFY(!bob);
}

void TestConversationList::previewSays_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QJsonValue>("encrypted");
    QTest::addColumn<QString>("preview");
    const QString english = u"🔒 Encrypted message"_s;
    QTest::newRow("encrypted item that cannot be opened, English")
        << Language::English << QJsonValue(true) << english;
    QTest::newRow("encrypted item that cannot be opened, Swedish")
        << Language::Swedish << QJsonValue(true) << u"🔒 Krypterat meddelande"_s;
    QTest::newRow("marked by the number 1") << Language::English << QJsonValue(1) << english;
    QTest::newRow("not encrypted") << Language::English << QJsonValue(false) << u"abc"_s;
    QTest::newRow("the text true is no mark") << Language::English << QJsonValue(u"true"_s) << u"abc"_s;
    QTest::newRow("the number 0 is no mark") << Language::English << QJsonValue(0) << u"abc"_s;
}

void TestConversationList::previewSays()
{
    QFETCH(const Language, language);
    QFETCH(const QJsonValue, encrypted);
    QFETCH(const QString, preview);
    show({QJsonObject{{u"peer"_s, u"bob"_s}, {u"text"_s, u"abc"_s}, {u"encrypted"_s, encrypted}}}, language);
    QCOMPARE(previewAt(0), preview);
}

void TestConversationList::sealedPreviewIsOpened()
{
    const KeyPair own = ownKeyPair();
    QJsonObject theirs = sealedMessage(u"bob"_s, u"Hej på dig"_s, own, deviceId);
    QJsonObject mine = sealedMessage(u"Alice"_s, u"from me"_s, own, deviceId, true);
    theirs.insert(u"peer"_s, u"bob"_s);
    mine.insert(u"peer"_s, u"eve"_s);
    show({theirs, mine});
    QCOMPARE(previewAt(0), u"Hej på dig"_s);
    QCOMPARE(previewAt(1), u"from me"_s);
}

void TestConversationList::longPreviewIsCutAt140Pixels()
{
    const QString text = u"word and "_s.repeated(34).left(300);
    show({QJsonObject{{u"peer"_s, u"bob"_s}, {u"text"_s, text}}});
    const QLabel *label = shownConversation(dmList(), 0).preview;
    QVERIFY(label->text().endsWith(u"…"_s));
    QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= 140);
    QCOMPARE(label->text(), label->fontMetrics().elidedText(text, Qt::ElideRight, 140));
    QVERIFY(label->text().chopped(1).size() > 10 && text.startsWith(label->text().chopped(1)));
}

void TestConversationList::timeShows_data()
{
    QTest::addColumn<QJsonValue>("createdAt");
    QTest::addColumn<QString>("time");
    const QDate today = QDate::currentDate();
    const auto day = [](QDate date) { return QLocale().toString(date, u"d MMM"_s); };
    QTest::newRow("today: hours and minutes") << QJsonValue(atNoon(today)) << u"12:00"_s;
    QTest::newRow("yesterday: day and month")
        << QJsonValue(atNoon(today.addDays(-1))) << day(today.addDays(-1));
    QTest::newRow("long ago: day and month")
        << QJsonValue(u"2021-03-07T12:00:00.000Z"_s) << day(QDate(2021, 3, 7));
    QTest::newRow("no date can be read") << QJsonValue(u"soon"_s) << QString();
    QTest::newRow("a number") << QJsonValue(5) << QString();
    QTest::newRow("without createdAt") << QJsonValue(QJsonValue::Undefined) << QString();
}

void TestConversationList::timeShows()
{
    QFETCH(const QJsonValue, createdAt);
    QFETCH(const QString, time);
    QJsonObject item{{u"peer"_s, u"bob"_s}};
    item.insert(u"createdAt"_s, createdAt);
    show({item});
    QCOMPARE(shownConversation(dmList(), 0).time->text(), time);
}

void TestConversationList::clickOpensByTheEntrysData()
{
    show({QJsonObject{{u"peer"_s, u"bob"_s}}, QJsonObject{{u"peer"_s, u"eve"_s}}});
    dmList()->item(1)->setData(Qt::UserRole, u"  mallory "_s);
    QSignalSpy chosen(page->sidebar, &Sidebar::conversationChosen);
    clickRow(dmList(), 1);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toString(), u"mallory"_s);
}

void TestConversationList::clickOnBlankNameDoesNothing()
{
    show({QJsonObject{{u"peer"_s, u"bob"_s}}});
    dmList()->item(0)->setData(Qt::UserRole, u"   "_s);
    const qsizetype before = page->sentSignals();
    clickRow(dmList(), 0);
    QCOMPARE(page->sentSignals(), before);
}

TIDELOFT_GUI_TEST_MAIN(TestConversationList)
#include "tst_conversation_list.moc"
