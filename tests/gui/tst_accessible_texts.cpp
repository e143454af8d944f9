// What a screen reader is told beyond the controls' names: the rows of the lists, the labels of fields, what
// can be pressed, and how much of a hostile name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_probe.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/test_main.h"
#include "ui/texts/bounded_text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestAccessibleTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void conversationsReadFromLeftToRight();
    void everyMessageTellsSenderTextAndTime_data();
    void everyMessageTellsSenderTextAndTime();
    void foundUsersAndSectionsHaveTheirTexts();
    void fieldsKnowTheirLabels_data();
    void fieldsKnowTheirLabels();
    void theFooterCanBePressed();
    void theLanguageListOpensAndFollows();
    void theChosenAccentIsTold();
    void theAccentIsToldInTheLanguageOfItsPage();
    void hostileNamesAreBoundedText_data();
    void hostileNamesAreBoundedText();
};

namespace
{

QByteArray json(const QJsonArray &array)
{
    return QJsonDocument(array).toJson();
}

QJsonObject message(const QString &from, const QString &text, const QString &createdAt)
{
    return {{u"from"_s, from}, {u"text"_s, text}, {u"createdAt"_s, createdAt}};
}

/// Opens the conversation with bob, and gives it ITEMS as its history.
bool showHistory(SettingsProbe &probe, const QJsonArray &items)
{
    return probe.open(u"bob"_s) && probe.settle() // nothing is under way that would take its place
           && callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, u"bob"_s), Q_ARG(QJsonArray, items));
}

QPushButton *swatchCalled(const QWidget *page, const QString &name)
{
    for (auto *swatch : page->findChildren<QPushButton *>()) {
        if (spokenName(swatch) == name)
            return swatch;
    }
    return nullptr;
}

QStringList labelsOf(const QWidget *field)
{
    QStringList labels;
    for (const auto &[label, relation] : spokenOf(field)->relations(QAccessible::Label))
        labels.append(label->text(QAccessible::Name));
    return labels;
}

} // namespace

// A conversation of today tells its time, an older one its day. Where the day ends between the writing and
// the reading both are done once more; settle() has emptied the list by then.
void TestAccessibleTexts::conversationsReadFromLeftToRight()
{
    SettingsProbe probe;
    QDate today;
    do {
        today = QDate::currentDate();
        QVERIFY(probe.settle());
        const QJsonObject bob{{u"peer"_s, u"bob"_s},
                              {u"text"_s, u"See you at noon"_s},
                              {u"createdAt"_s, today.toString(Qt::ISODate) + u"T12:04:00"_s}};
        probe.service.answer("GET /api/chat/conversations", 200,
                             json({bob, QJsonObject{{u"peer"_s, u"anna"_s}, {u"encrypted"_s, true}}}));
        QVERIFY(callSlot(*probe.window, "refreshData") && probe.waitForPeers({u"bob"_s, u"anna"_s}));
    } while (today != QDate::currentDate());
    QCOMPARE(spokenEntries(probe.the<QWidget>(u"dmList"_s)),
             QStringList({u"bob, See you at noon, 12:04"_s, u"anna, 🔒 Encrypted message"_s}));
}

void TestAccessibleTexts::everyMessageTellsSenderTextAndTime_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("me");
    QTest::newRow("Swedish") << Language::Swedish << u"Du"_s;
    QTest::newRow("English") << Language::English << u"You"_s;
}

// Three messages in a row show their sender once and their time once: each alone would tell neither.
void TestAccessibleTexts::everyMessageTellsSenderTextAndTime()
{
    QFETCH(Language, language);
    QFETCH(QString, me);
    SettingsProbe probe(language);
    QVERIFY(showHistory(probe, {message(u"bob"_s, u"a"_s, u"2024-05-17T10:00:00Z"_s),
                                message(u"bob"_s, u"b"_s, u"2024-05-17T10:01:00Z"_s),
                                message(u"bob"_s, u"c"_s, u"2024-05-17T10:02:00Z"_s),
                                message(u"Alice"_s, u"d"_s, u"2024-05-17T10:03:00Z"_s),
                                message(u"alice"_s, u"e"_s, u"never"_s)}));
    QStringList spoken = spokenEntries(probe.the<QWidget>(u"messageList"_s));
    QVERIFY(spoken.takeFirst().startsWith(u"17 "));
    QCOMPARE(spoken.first(4),
             QStringList({u"bob, a, 10:00"_s, u"bob, b, 10:01"_s, u"bob, c, 10:02"_s, me + u", d, 10:03"_s}));
    QCOMPARE(spoken.last(), me + u", e"_s); // without a time there is none to tell
}

void TestAccessibleTexts::foundUsersAndSectionsHaveTheirTexts()
{
    const SettingsProbe probe;
    const QJsonArray users{QJsonObject{{u"username"_s, u"bob"_s}}};
    QVERIFY(callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, users)));
    QCOMPARE(spokenEntries(probe.the<QWidget>(u"searchResults"_s)), QStringList(u"👤  bob"_s));
    probe.openSettings();
    const QStringList sections = spokenEntries(probe.nav());
    QCOMPARE(sections.size(), 8);
    QCOMPARE(sections.first(), u"👤  Account"_s);
    const QAccessibleInterface *first = spokenOf(probe.nav())->child(0);
    QCOMPARE(first->role(), QAccessible::ListItem);
}

void TestAccessibleTexts::fieldsKnowTheirLabels_data()
{
    QTest::addColumn<bool>("isDialog");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("label");
    QTest::newRow("name of a server") << true << 0 << u"Server name"_s;
    QTest::newRow("description of a server") << true << 1 << u"Description (optional)"_s;
    QTest::newRow("display name") << false << 0 << u"Display name"_s;
    QTest::newRow("username") << false << 1 << u"Username"_s;
    QTest::newRow("bio") << false << 2 << u"Bio"_s;
}

void TestAccessibleTexts::fieldsKnowTheirLabels()
{
    QFETCH(bool, isDialog);
    QFETCH(int, index);
    const SettingsProbe probe;
    probe.openSettings();
    QStringList labels;
    const auto look = [&](const QWidget *root) {
        labels = labelsOf(root->findChildren<QLineEdit *>().value(index));
    };
    if (isDialog)
        QVERIFY(withCreateDialog(probe, [&](QDialog &dialog) { look(&dialog); }));
    else
        look(probe.content(Account));
    QTEST(labels.join(u'|'), "label");
}

void TestAccessibleTexts::theFooterCanBePressed()
{
    const SettingsProbe probe;
    QAccessibleActionInterface *actions = spokenOf(probe.the<QWidget>(u"sideFooter"_s))->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    QStringList entries;
    QVERIFY(withMenu(
        [actions] {
            actions->doAction(QAccessibleActionInterface::pressAction());
            QCoreApplication::processEvents();
        },
        [&entries](const QMenu *menu) { entries = entriesOf(menu); }));
    QCOMPARE(entries, QStringList({u"Profile"_s, u"Settings"_s, u"-"_s, u"Log out"_s}));
}

void TestAccessibleTexts::theLanguageListOpensAndFollows()
{
    const GuiProbe probe;
    auto *combo = probe.the<QComboBox>(u"langCombo"_s);
    QAccessibleInterface *spoken = spokenOf(combo);
    QCOMPARE(spoken->text(QAccessible::Value), u"Svenska"_s);
    combo->setCurrentIndex(1);
    QCOMPARE(spoken->text(QAccessible::Name), u"Language: English"_s);
    QCOMPARE(spoken->childCount(), 1);
    QCOMPARE(spoken->child(0)->text(QAccessible::Name), u"Language"_s);
    QCOMPARE(spoken->indexOfChild(spoken->child(0)), 0);
    spoken->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(combo->view()->isVisible());
    QVERIFY(spoken->state().expanded);
    QCOMPARE(spokenEntries(combo->view()), QStringList({u"Svenska"_s, u"English"_s}));
    spoken->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(!combo->view()->isVisible());
}

void TestAccessibleTexts::theChosenAccentIsTold()
{
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Appearance);
    auto *green = swatchCalled(probe.content(Appearance), u"Green"_s);
    QVERIFY(green);
    green->click();
    QStringList chosen;
    for (const auto *swatch : probe.content(Appearance)->findChildren<QPushButton *>()) {
        if (spokenDescription(swatch) == u"Accent color, chosen")
            chosen.append(spokenName(swatch));
    }
    QCOMPARE(chosen, QStringList(u"Green"_s));
}

// The settings keep the language that they were built in; one word of another would be read wrongly.
void TestAccessibleTexts::theAccentIsToldInTheLanguageOfItsPage()
{
    const SettingsProbe probe;
    probe.openSettings();
    probe.clickRow(Appearance);
    auto *green = swatchCalled(probe.content(Appearance), u"Green"_s);
    QVERIFY(green);
    probe.window->setLanguageIndex(0);
    green->click();
    QCOMPARE(spokenDescription(green), u"Accent color, chosen"_s);
}

void TestAccessibleTexts::hostileNamesAreBoundedText_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << u"<img src=\"/dev/zero\"><b>bob</b>"_s;
    QTest::newRow("ampersand") << u"Pier & Harbour &&"_s;
    QTest::newRow("line breaks and a control character") << u"a\nb\u2028c\u001ed"_s;
    QTest::newRow("a million letters") << QString(1'000'000, u'x');
    QTest::newRow("100,000 marks") << u"e"_s + QString(100'000, u'\u0301');
}

void TestAccessibleTexts::hostileNamesAreBoundedText()
{
    QFETCH(QString, name);
    const QString expected = tideloft::ui::inOneLine(name);
    SettingsProbe probe;
    QVERIFY(listServers(probe, {server(u"1"_s, name)}));
    QCOMPARE(spokenName(serverButtons(probe).constFirst()), expected);
    QCOMPARE(spokenDescription(serverButtons(probe).constFirst()), u"Server"_s);
    const QJsonArray items{QJsonObject{{u"peer"_s, name}, {u"text"_s, name}}};
    QVERIFY(callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, items)));
    const QString entry = spokenEntries(probe.the<QWidget>(u"dmList"_s)).value(0);
    QVERIFY(entry.startsWith(expected + u", "_s));
    QVERIFY(entry.size() <= expected.size() + 2 + tideloft::ui::previewLimits.characters + 1);
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(spokenName(probe.the<QLabel>(u"centerTitle"_s)), expected);
    QCOMPARE(spokenName(probe.the<QLabel>(u"peerAvatar"_s)), expected);
    QVERIFY(showHistory(probe, {message(name, u"hi"_s, u"2024-05-17T10:00:00Z"_s)}));
    QCOMPARE(spokenEntries(probe.the<QWidget>(u"messageList"_s)).constLast(), expected + u", hi, 10:00"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestAccessibleTexts)
#include "tst_accessible_texts.moc"
