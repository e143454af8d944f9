// How much is laid out to show a history: every text is measured once, and what is drawn is bounded.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_hostile_probe.h"
#include "tests/support/test_main.h"
#include "ui/chat/history_list.h"
#include "ui/texts/bounded_text.h"

#include <QAbstractButton>
#include <QGraphicsEffect>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestHostileEffort : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void everyTextIsMeasuredOnce_data();
    void everyTextIsMeasuredOnce();
    void aPageAtRestIsNotDrawn();
    void theOwnNameIsBounded_data();
    void theOwnNameIsBounded();
};

namespace
{

/// What makes a text one that the measuring document measures: a paragraph of Latin-1 goes by a shorter way.
const QString beyondLatin1 = u"ł"_s;

/// Counts the characters that the program's measuring document takes in while this lives.
class Measured
{
public:
    Measured()
    {
        auto *document = qApp->findChild<QTextDocument *>(QString(), Qt::FindDirectChildrenOnly);
        if (!document)
            qFatal("Nothing has been measured yet");
        QObject::connect(document, &QTextDocument::contentsChange, &receiver,
                         [this](int, int, int added) { characters += added; });
    }
    qint64 characters = 0;

private:
    QObject receiver;
};

/// Counts the paints of messages' texts while this lives.
class DrawnTexts : public QObject
{
public:
    DrawnTexts() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->inherits("tideloft::ui::BubbleText"))
            ++count;
        return QObject::eventFilter(watched, event);
    }
    int count = 0;
};

void letThingsSettle()
{
    for (int i = 0; i < 50; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

/// The service has no history of bob: nothing but what the test gives the window is shown.
void openBob(const HostileProbe &probe)
{
    const QJsonArray items{QJsonObject{{u"peer"_s, u"bob"_s}, {u"text"_s, u"Hi"_s}}};
    callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, items));
    auto *list = probe.the<QListWidget>(u"dmList"_s);
    emit list->itemClicked(list->item(0));
}

void showHistory(const HostileProbe &probe, const QStringList &texts)
{
    QJsonArray items;
    for (const QString &text : texts)
        items.append(QJsonObject{{u"from"_s, u"bob"_s}, {u"text"_s, text}});
    callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, u"bob"_s), Q_ARG(QJsonArray, items));
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    probe.window->repaint();
}

QStringList numbered(int count, const QString &text)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(beyondLatin1 + QString::number(i) + text);
    return texts;
}

/// The characters of the messages' texts that have widgets, and the greatest effort of one.
std::pair<qint64, qint64> drawn(const HostileProbe &probe)
{
    qint64 characters = 0;
    qint64 effort = 0;
    for (const auto *label : probe.the<QListWidget>(u"messageList"_s)->findChildren<QLabel *>()) {
        if (label->inherits("tideloft::ui::BubbleText")) {
            characters += label->text().size();
            effort = qMax(effort, drawingEffort(label->text()));
        }
    }
    return {characters, effort};
}

} // namespace

void TestHostileEffort::everyTextIsMeasuredOnce_data()
{
    QTest::addColumn<QStringList>("texts");
    const QString letters = u"Somebody wrote these words to somebody else. "_s.repeated(6).left(250);
    QTest::newRow("1,000 messages") << numbered(1'000, u" Hello there"_s);
    QTest::newRow("1,000 messages of 250 characters") << numbered(1'000, letters);
    QTest::newRow("1,000 messages of 5 emoji") << numbered(1'000, u"🔥🎉👍🏽😀🇸🇪"_s);
    QTest::newRow("a word of 100,000 letters") << QStringList{beyondLatin1 + QString(100'000, u'x')};
    QTest::newRow("a word of 100,000 wide letters") << QStringList{beyondLatin1 + QString(100'000, u'W')};
    QTest::newRow("100,000 halves of pairs") << QStringList{QString(100'000, QChar(0xd800))};
    QTest::newRow("10 words of 100,000 letters") << numbered(10, QString(100'000, u'x'));
    QTest::newRow("5 messages of 1,000 emoji") << numbered(5, u"🔥"_s.repeated(1'000));
    QTest::newRow("20 messages of 2,000 lines") << numbered(20, u"x\n"_s.repeated(2'000));
    QTest::newRow("20 messages with 2,000 marks") << numbered(20, u"a"_s + QString(2'000, QChar(0x301)));
}

void TestHostileEffort::everyTextIsMeasuredOnce()
{
    QFETCH(const QStringList, texts);
    HostileProbe probe(Language::English);
    openBob(probe);
    showHistory(probe, {beyondLatin1}); // and the measuring document is there
    const Measured measured;
    showHistory(probe, texts);
    const auto *history = probe.the<QListWidget>(u"messageList"_s)->findChild<HistoryList *>();
    QTRY_VERIFY_WITH_TIMEOUT(history->isSettled(), 60'000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the first one
    const auto [characters, effort] = drawn(probe);
    qint64 written = 0;
    for (const QString &text : texts)
        written += firstPart(text, messageLimits).size();
    const qint64 ends = 2 * texts.size(); // each text's, and that of nothing after it
    QVERIFY(characters > 2'000);
    QVERIFY2(measured.characters <= written + ends,
             qPrintable(u"%1 of %2"_s.arg(measured.characters).arg(written)));
    QVERIFY(measured.characters >= characters);
    QVERIFY2(effort <= messageLimits.effort + 100, qPrintable(QString::number(effort))); // and "…"
}

// A text that asks for the next paint in each paint would keep a processor busy as long as it is in sight.
void TestHostileEffort::aPageAtRestIsNotDrawn()
{
    HostileProbe probe(Language::English);
    openBob(probe);
    DrawnTexts drawnTexts;
    showHistory(probe, {u"https://example.org/a/long/way/to/a/page?that=has&many=words"_s, u"short"_s,
                        u"x"_s.repeated(25), u"\u00a0x"_s.repeated(500), u"中"_s.repeated(3'000)});
    letThingsSettle();
    QVERIFY(drawnTexts.count > 0);
    const auto effects = probe.window->findChildren<QGraphicsEffect *>();
    const QList<QPointer<QGraphicsEffect>> fadings(effects.begin(), effects.end());
    for (const QPointer<QGraphicsEffect> &fading : fadings)
        QTRY_VERIFY(!fading || !fading->isEnabled());
    letThingsSettle();
    drawnTexts.count = 0;
    letThingsSettle();
    QCOMPARE(drawnTexts.count, 0);
}

void TestHostileEffort::theOwnNameIsBounded_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ordinary") << u"alice"_s;
    QTest::newRow("50,000 marks") << u"a"_s + QString(50'000, QChar(0x301));
    QTest::newRow("100,000 letters") << QString(100'000, u'w');
    QTest::newRow("two directions") << u"\u05d0a"_s.repeated(50'000);
    QTest::newRow("5,000 emoji") << u"🔥"_s.repeated(5'000);
    QTest::newRow("100,000 lines") << u"a\n"_s.repeated(50'000) + u"a"_s;
}

// Fields lay out all of their text. A label that cuts its text while it draws keeps all of it.
void TestHostileEffort::theOwnNameIsBounded()
{
    QFETCH(const QString, name);
    HostileProbe probe(Language::English);
    callSlot(*probe.window, "onMeLoaded", Q_ARG(QJsonObject, (QJsonObject{{u"username"_s, name}})));
    QVERIFY(probe.onMainPage());
    probe.openSettings();
    probe.clickRow(0);
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), name);
    int shown = 0;
    for (const auto *field : probe.window->findChildren<QLineEdit *>()) {
        shown += field->text().startsWith(name.left(5)) ? 1 : 0;
        QCOMPARE(field->text().size() <= nameLimits.characters + 1, true);
        QVERIFY(drawingEffort(field->text()) <= nameLimits.effort + 10);
    }
    QVERIFY(shown >= 2); // the display name, and the user name
    for (const auto *button : probe.window->findChildren<QAbstractButton *>())
        QVERIFY(drawingEffort(button->text()) <= nameLimits.effort);
    QCOMPARE(probe.trouble(), QString());
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text().size() <= 4, true);
}

TIDELOFT_GUI_TEST_MAIN(TestHostileEffort)
#include "tst_hostile_effort.moc"
