// A list of conversations beside one that has all its widgets: whatever happens, both look and read the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_conversations.h"
#include "tests/support/long_form.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "tests/ui/sidebar/conversation_window.h"
#include "ui/sidebar/conversation_list.h"
#include "ui/style/style_sheets.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

/// One of the two: its window, and the client that reads for it. Texts that one side opens stay closed on the
/// other.
struct Side {
    explicit Side(quint32 seed) : service(seed) {}

    ConversationWindow window;
    Conversations service;
};

/// Where both lists differ, in what can be seen, read and reached now; empty if nowhere.
QString difference(ConversationWindow &lazy, ConversationWindow &eager)
{
    const auto facts = [](const ConversationWindow &window) {
        QStringList all{QString::number(window.bar()->value()), QString::number(window.bar()->maximum()),
                        QString::number(window.list.count()), QString::number(window.list.currentRow()),
                        QString::number(window.list.selectedItems().size())};
        for (int y = 0; y < window.list.viewport()->height(); y += 31) {
            QListWidgetItem *entry = window.list.itemAt(20, y);
            all.append(entry ? entry->data(Qt::UserRole).toString() + window.spoken(window.list.row(entry))
                             : u"nothing"_s);
        }
        return all.join(u'|');
    };
    if (facts(lazy) != facts(eager))
        return facts(lazy) + u"\nbut eager\n"_s + facts(eager);
    return lazy.list.grab().toImage() == eager.list.grab().toImage() ? QString() : u"the pictures differ"_s;
}

} // namespace

class TestConversationOracle : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void looksLikeAListOfAllWidgets_data();
    void looksLikeAListOfAllWidgets();
    void otherFontsLookLikeThoseOfTheBeginning();

private:
    void changeBoth(ConversationWindow &lazy, ConversationWindow &eager);

    QRandomGenerator random;
};

void TestConversationOracle::looksLikeAListOfAllWidgets_data()
{
    QTest::addColumn<quint32>("seed");
    for (int seed = 1; seed <= rounds(5, 1'000); ++seed)
        QTest::addRow("seed %d", seed) << quint32(seed);
}

void TestConversationOracle::changeBoth(ConversationWindow &lazy, ConversationWindow &eager)
{
    const int kind = random.bounded(6);
    const int height = 100 + random.bounded(700);
    const int value = random.bounded(qMax(1, eager.bar()->maximum() + 1));
    const int current = random.bounded(qMax(1, eager.list.count()));
    const QString sheet = random.bounded(2) ? darkStyleSheet() : lightStyleSheet();
    const auto key =
        QList{Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home}.at(random.bounded(5));
    for (ConversationWindow *window : {&lazy, &eager}) {
        switch (kind) {
        case 0:
            window->list.resize(window->list.width(), height);
            break;
        case 1:
            window->list.setStyleSheet(sheet);
            break;
        case 2:
            window->list.setCurrentRow(current);
            break;
        case 3:
            QTest::keyClick(&window->list, key);
            break;
        default:
            window->bar()->setValue(value);
        }
    }
}

void TestConversationOracle::looksLikeAListOfAllWidgets()
{
    QFETCH(const quint32, seed);
    QCursor::setPos(5'000, 5'000); // no row is marked because the mouse is there
    random.seed(seed);
    const int count = random.bounded(60);
    Side lazy(seed);
    Side eager(seed);
    lazy.service.fill(count);
    eager.service.fill(count);
    QWidget active; // or one of the two lists would have the keyboard
    active.show();
    auto *conversations = new ConversationList(&lazy.window.list);
    for (int step = 0; step < 40; ++step) {
        if (random.bounded(2) > 0) {
            lazy.service.change();
            eager.service.change();
            QCOMPARE(lazy.service.items, eager.service.items);
            conversations->show(lazy.service.rows());
            showConversationsEagerly(&eager.window.list, eager.service.rows());
        } else {
            changeBoth(lazy.window, eager.window);
        }
        QApplication::processEvents();
        QCOMPARE(difference(lazy.window, eager.window), QString());
    }
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 12 * patience());
    for (int i = 0; i < eager.window.list.count(); ++i)
        QCOMPARE(lazy.window.spoken(i), eager.window.spoken(i));
}

// A preview is cut where its font reaches the end of its room.
void TestConversationOracle::otherFontsLookLikeThoseOfTheBeginning()
{
    QCursor::setPos(5'000, 5'000);
    Side changed(7);
    Side usual(7);
    QWidget active;
    active.show();
    auto *conversations = new ConversationList(&changed.window.list);
    auto *others = new ConversationList(&usual.window.list);
    for (Side *side : {&changed, &usual}) {
        for (int i = 0; i < 100; ++i) // without a time all the room is for the text
            side->service.items.append(QJsonObject{{u"peer"_s, u"peer-%1"_s.arg(i)},
                                                   {u"text"_s, u"little by little it will fill it all"_s}});
    }
    changed.window.list.setStyleSheet(darkStyleSheet() + u"QWidget { font-family: \"DejaVu Sans Mono\"; }"_s);
    QApplication::processEvents();
    conversations->show(changed.service.rows());
    QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled(), 12 * patience());
    const QImage before = changed.window.list.grab().toImage();
    changed.window.list.setStyleSheet(darkStyleSheet()); // in narrower letters more of a text has room
    QApplication::processEvents();
    others->show(usual.service.rows());
    for (const int value : {0, 1'000, 300}) {
        for (const Side *side : {&changed, &usual})
            side->window.bar()->setValue(value);
        QTRY_VERIFY_WITH_TIMEOUT(conversations->isSettled() && others->isSettled(), 12 * patience());
        QApplication::processEvents();
        QCOMPARE(difference(changed.window, usual.window), QString());
    }
    changed.window.bar()->setValue(0);
    QVERIFY(changed.window.list.grab().toImage() != before);
}

TIDELOFT_GUI_TEST_MAIN(TestConversationOracle)
#include "tst_conversation_oracle.moc"
