// Reading of the service's replies for whoever is signed in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"
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
    void signingOutForgetsTheHistory();
    void lateReplyIsReadWithoutAUser();
    void newKeyFileIsReadAtOnce();
    void unreadableMessageSaysSoInTheLanguageOfTheMoment();

private:
    [[nodiscard]] QStringList shownTexts(Language language = Language::English);
    [[nodiscard]] QJsonObject sealed(const QString &text) const;

    KeyPair mine = makeKeyPair();
    std::unique_ptr<MessageReader> reader;
};

namespace
{

const QString thisDevice = u"this"_s;

}

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

void TestMessageReader::previewsAreOpened()
{
    QJsonObject conversation = sealed(u"see you"_s);
    conversation.insert(u"peer"_s, u"bob"_s);
    const QList<ui::ConversationRowModel> rows = reader->conversationRows({conversation}, Language::English);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().peer, u"bob"_s);
    QCOMPARE(rows.first().preview, u"see you"_s);
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
