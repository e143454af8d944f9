// A conversation's row, part by part.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_rows.h"
#include "tests/support/page_window.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/sidebar/sidebar.h"

#include <QApplication>
#include <QBoxLayout>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

QVariant marginsOf(const QLayout *layout)
{
    return QVariant::fromValue(layout->contentsMargins());
}

void addAvatarFacts(QVariantMap &facts, const QWidget *place)
{
    const auto *avatar = place->findChild<QLabel *>();
    facts[u"avatar place size"_s] = place->size();
    facts[u"avatar place style"_s] = place->styleSheet();
    facts[u"avatar size"_s] = avatar->size();
    facts[u"avatar alignment"_s] = int(avatar->alignment());
    facts[u"avatar text"_s] = avatar->text();
    facts[u"avatar style"_s] = avatar->styleSheet();
}

void addTextFacts(QVariantMap &facts, const ShownConversation &shown)
{
    const QLayout *block = shown.textBlock;
    facts[u"text block margins"_s] = marginsOf(block);
    facts[u"text block spacing"_s] = block->spacing();
    facts[u"text block stretch"_s] = qobject_cast<QBoxLayout *>(shown.row->layout())->stretch(1);
    facts[u"name"_s] = shown.name->text();
    facts[u"name style"_s] = shown.name->styleSheet();
    facts[u"preview"_s] = shown.preview->text();
    facts[u"preview style"_s] = shown.preview->styleSheet();
}

void addTimeFacts(QVariantMap &facts, const ShownConversation &shown)
{
    const QLayout *block = shown.timeBlock;
    facts[u"time block alignment"_s] = int(block->itemAt(0)->alignment());
    facts[u"stretch below the time"_s] = block->itemAt(1)->spacerItem() != nullptr;
    facts[u"time alignment"_s] = int(shown.time->alignment() & Qt::AlignHorizontal_Mask);
    facts[u"time style"_s] = shown.time->styleSheet();
}

} // namespace

class TestConversationRow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void rowIsMadeOf_data();
    void rowIsMadeOf();
    void everyLabelIsPlainText();
    void initialsAre_data();
    void initialsAre();

private:
    void showConversations(const QJsonArray &items) const;
    QListWidget *dmList() const { return only<QListWidget>(*sidebar, u"dmList"_s); }

    PageWindow window{QSize(260, 720)};
    Sidebar *sidebar = new Sidebar(Language::English, &window);
    QVariantMap facts;
};

void TestConversationRow::showConversations(const QJsonArray &items) const
{
    sidebar->showConversations(
        conversationRows(items, {u"alice"_s, {}, QDateTime::currentDateTime(), Language::English}));
    QCoreApplication::processEvents();
}

void TestConversationRow::initTestCase()
{
    failOnToolkitWarnings();
    window.showPage(sidebar);
    showConversations({QJsonObject{{u"peer"_s, u" bob "_s}, {u"text"_s, u"hi"_s}}});
    QListWidgetItem *entry = dmList()->item(0);
    const ShownConversation shown = shownConversation(dmList(), 0);
    const QWidget *row = shown.row;
    facts[u"entry data"_s] = entry->data(Qt::UserRole);
    facts[u"entry flags"_s] = int(entry->flags());
    facts[u"entry size hint"_s] = entry->sizeHint();
    facts[u"row margins"_s] = marginsOf(row->layout());
    facts[u"row spacing"_s] = row->layout()->spacing();
    facts[u"row style"_s] = row->styleSheet();
    facts[u"row translucent"_s] = row->testAttribute(Qt::WA_TranslucentBackground);
    facts[u"row cursor"_s] = int(row->cursor().shape());
    facts[u"row parts"_s] = row->layout()->count();
    addAvatarFacts(facts, shown.avatarPlace);
    addTextFacts(facts, shown);
    addTimeFacts(facts, shown);
}

void TestConversationRow::rowIsMadeOf_data()
{
    QTest::addColumn<QVariant>("expected");
    const auto fact = [](const char *name, const QVariant &value) { QTest::newRow(name) << value; };
    fact("entry data", u"bob"_s);
    fact("entry flags", int(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    fact("entry size hint", QSize(0, 62));
    fact("row margins", QVariant::fromValue(QMargins(12, 10, 12, 10)));
    fact("row spacing", 12);
    fact("row style", u"background: transparent;"_s);
    fact("row translucent", true);
    fact("row cursor", int(Qt::PointingHandCursor));
    fact("row parts", 3);
    fact("avatar place size", QSize(42, 42));
    fact("avatar place style", u"background: transparent;"_s);
    fact("avatar size", QSize(40, 40));
    fact("avatar alignment", int(Qt::AlignCenter));
    fact("avatar text", u"BO"_s);
    fact("avatar style", u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
                         "border-radius: 20px; color: #7ab0f5; font-size: 13px; font-weight: 700;"_s);
    fact("text block margins", QVariant::fromValue(QMargins()));
    fact("text block spacing", 3);
    fact("text block stretch", 1);
    fact("name", u"bob"_s);
    fact("name style", u"color: #e8f0f8; font-size: 13px; font-weight: 600; background: transparent;"_s);
    fact("preview", u"hi"_s);
    fact("preview style", u"color: #5a7a9a; font-size: 11px; font-weight: 400; background: transparent;"_s);
    fact("time block alignment", int(Qt::AlignRight | Qt::AlignTop));
    fact("stretch below the time", true);
    fact("time alignment", int(Qt::AlignRight));
    fact("time style", u"color: #3a5a7a; font-size: 10px; font-weight: 400; background: transparent;"_s);
}

void TestConversationRow::rowIsMadeOf()
{
    QFETCH(const QVariant, expected);
    QCOMPARE(facts.value(QString::fromLatin1(QTest::currentDataTag())), expected);
}

void TestConversationRow::everyLabelIsPlainText()
{
    const QString markup = u"<b>x</b>"_s;
    showConversations({QJsonObject{{u"peer"_s, markup}, {u"text"_s, markup}}});
    const ShownConversation shown = shownConversation(dmList(), 0);
    const auto labels = shown.row->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 4);
    for (const QLabel *label : labels)
        QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(shown.name->text(), markup);
    QCOMPARE(shown.preview->text(), markup);
}

void TestConversationRow::initialsAre_data()
{
    QTest::addColumn<QString>("peer");
    QTest::addColumn<QString>("initials");
    QTest::newRow("of one letter") << u"b"_s << u"B"_s;
    QTest::newRow("of two letters") << u"bo"_s << u"BO"_s;
    QTest::newRow("of a longer name") << u"åsa"_s << u"ÅS"_s;
    QTest::newRow("of emoji, none cut") << u"🙂🙃🙂"_s << u"🙂🙃"_s;
}

void TestConversationRow::initialsAre()
{
    QFETCH(const QString, peer);
    showConversations({QJsonObject{{u"peer"_s, peer}}});
    const QWidget *place = shownConversation(dmList(), 0).avatarPlace;
    QTEST(place->findChild<QLabel *>()->text(), "initials");
}

TIDELOFT_GUI_TEST_MAIN(TestConversationRow)
#include "tst_conversation_row.moc"
