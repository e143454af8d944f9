// Reading of the service's replies for whoever is signed in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/message_reader.h"
#include "ui/messages/unreadable_message.h"

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::tests;
using ui::Language;
using ui::MessageReader;

class TestMessageReader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void opensWhatIsSealedForThisDevice();
    void keepsOneHistory();
    void noHistoryGivesNoRows();
    void previewsAreOpened();
    void knownPreviewsAreNotReadAgain();
    void signingOutClosesPreviews();
    void anotherUserClosesPreviews();
    void previewsAreReadAnew_data();
    void previewsAreReadAnew();
    void signingOutForgetsTheHistory();
    void lateReplyIsReadWithoutAUser();
    void newKeyFileIsReadAtOnce();
    void unreadableMessageSaysSoInTheLanguageOfTheMoment();

private:
    [[nodiscard]] QStringList shownTexts(Language language = Language::English);
    [[nodiscard]] QString preview(const QJsonArray &conversations, Language language = Language::English);
    [[nodiscard]] QJsonObject sealed(const QString &text) const;
    [[nodiscard]] QJsonObject conversation(const QString &text) const;

    KeyPair mine = makeKeyPair();
    std::unique_ptr<MessageReader> reader;
};

void TestMessageReader::init()
{
    mine = makeKeyPair();
    reader = std::make_unique<MessageReader>(thisDevice);
    reader->signIn(u"alice"_s);
}

QJsonObject TestMessageReader::sealed(const QString &text) const
{
    return sealedMessage(u"bob"_s, text, mine, thisDevice);
}

QStringList TestMessageReader::shownTexts(Language language)
{
    QStringList texts;
    for (const ui::HistoryRow &row : reader->historyRows(language)) {
        if (const auto *message = std::get_if<ui::MessageRowModel>(&row))
            texts.append(message->text.value());
    }
    return texts;
}

void TestMessageReader::opensWhatIsSealedForThisDevice()
{
    reader->keepHistory(u"bob"_s, {sealed(u"one"_s), sealed(u"two"_s)});
    QCOMPARE(shownTexts(), QStringList({u"one"_s, u"two"_s}));
    QCOMPARE(shownTexts(), QStringList({u"one"_s, u"two"_s})); // what is remembered reads the same
}

void TestMessageReader::keepsOneHistory()
{
    reader->keepHistory(u"bob"_s, {sealed(u"one"_s)});
    reader->keepHistory(u"carol"_s, {sealed(u"two"_s)});
    QCOMPARE(reader->historyPeer(), u"carol"_s);
    QCOMPARE(shownTexts(), QStringList{u"two"_s});
}

void TestMessageReader::noHistoryGivesNoRows()
{
    QVERIFY(reader->historyRows(Language::English).isEmpty());
    reader->keepHistory(u"bob"_s, {});
    QCOMPARE(reader->historyPeer(), u"bob"_s);
    QVERIFY(reader->historyRows(Language::English).isEmpty());
}

QString TestMessageReader::preview(const QJsonArray &conversations, Language language)
{
    return reader->conversationRows(conversations, language).value(0).preview.value();
}

QJsonObject TestMessageReader::conversation(const QString &text) const
{
    QJsonObject item = sealed(text);
    item.insert(u"peer"_s, u"bob"_s);
    return item;
}

void TestMessageReader::previewsAreOpened()
{
    const auto rows = reader->conversationRows({conversation(u"see you"_s)}, Language::English);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().peer, u"bob"_s);
    QCOMPARE(rows.first().preview.value(), u"see you"_s);
}

void TestMessageReader::knownPreviewsAreNotReadAgain()
{
    const QJsonArray items{conversation(u"one"_s), conversation(u"two"_s)};
    const auto rows = reader->conversationRows(items, Language::English);
    QVERIFY(!rows.at(1).preview.isOpen());
    QCOMPARE(rows.at(0).preview.value(), u"one"_s);
    const auto again = reader->conversationRows(items, Language::English);
    QCOMPARE(again, rows);
    QVERIFY(again.at(0).preview.isOpen());
    QVERIFY(!again.at(1).preview.isOpen());
}

void TestMessageReader::signingOutClosesPreviews()
{
    const QJsonArray items{conversation(u"one"_s), conversation(u"two"_s)};
    const auto rows = reader->conversationRows(items, Language::English);
    QCOMPARE(rows.at(0).preview.value(), u"one"_s);
    reader->signOut();
    QCOMPARE(rows.at(1).preview.value(), ui::unreadablePreview(Language::English));
}

void TestMessageReader::anotherUserClosesPreviews()
{
    const QJsonArray items{conversation(u"one"_s), conversation(u"two"_s)};
    const auto rows = reader->conversationRows(items, Language::English);
    reader->signIn(u"alice"_s); // the same user once more
    QCOMPARE(rows.at(0).preview.value(), u"one"_s);
    reader->signIn(u"eve"_s);
    QCOMPARE(rows.at(0).preview.value(), u"one"_s);
    QCOMPARE(rows.at(1).preview.value(), ui::unreadablePreview(Language::English));
}

void TestMessageReader::previewsAreReadAnew_data()
{
    QTest::addColumn<bool>("hasNewKey");
    QTest::addColumn<bool>("isSwedish");
    QTest::newRow("with another key file") << true << false;
    QTest::newRow("in another language, where they do not open") << true << true;
    QTest::newRow("in another language") << false << true;
}

void TestMessageReader::previewsAreReadAnew()
{
    QFETCH(const bool, hasNewKey);
    QFETCH(const bool, isSwedish);
    const QJsonArray items{conversation(u"one"_s)};
    QCOMPARE(preview(items), u"one"_s);
    if (hasNewKey)
        makeKeyPair();
    const Language language = isSwedish ? Language::Swedish : Language::English;
    QCOMPARE(preview(items, language), hasNewKey ? ui::unreadablePreview(language) : u"one"_s);
}

void TestMessageReader::signingOutForgetsTheHistory()
{
    reader->keepHistory(u"bob"_s, {sealed(u"one"_s)});
    reader->signOut();
    QVERIFY(reader->historyPeer().isEmpty());
    QVERIFY(shownTexts().isEmpty());
}

void TestMessageReader::lateReplyIsReadWithoutAUser()
{
    reader->signOut();
    reader->keepHistory(u"bob"_s, {sealed(u"late"_s)});
    QCOMPARE(shownTexts(), QStringList{u"late"_s});
}

void TestMessageReader::newKeyFileIsReadAtOnce()
{
    const QJsonArray items{sealed(u"one"_s)};
    reader->keepHistory(u"bob"_s, items);
    QCOMPARE(shownTexts(), QStringList{u"one"_s});
    makeKeyPair();
    reader->keepHistory(u"bob"_s, items);
    QVERIFY(shownTexts() != QStringList{u"one"_s});
}

void TestMessageReader::unreadableMessageSaysSoInTheLanguageOfTheMoment()
{
    const QJsonArray items{sealed(u"one"_s)};
    makeKeyPair();
    reader->keepHistory(u"bob"_s, items);
    QCOMPARE(shownTexts(Language::English), QStringList{ui::unreadableText(Language::English)});
    QCOMPARE(shownTexts(Language::Swedish), QStringList{ui::unreadableText(Language::Swedish)});
}

TIDELOFT_TEST_MAIN(TestMessageReader)
#include "tst_message_reader.moc"
