// Texts in the chat history: sealed ones opened with the key files, and texts that only look like markup.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include "crypto/keys/key_store.h"

#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QTextDocumentFragment>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestChatSealed : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void sealedMessagesAreOpened();
    void messageThatCannotBeOpened_data();
    void messageThatCannotBeOpened();
    void aToolTipSaysWhy_data();
    void aToolTipSaysWhy();
    void anotherReasonChangesTheRow();
    void onlyTheRightArrayIsSearched();
    void missingKeyFileIsReadAgainAtTheNextReply();
    void markupIsShownAsText_data();
    void markupIsShownAsText();

private:
    QString shownText(int index) const { return shownMessage(chat.messageList(), index).text->text(); }

    /// The tool tip of a message's row as people see it, hovering over its text.
    QString shownTip(int index) const;
    QString spoken(int index) const;

    ChatWindow chat;
    KeyPair own;
};

QString TestChatSealed::shownTip(int index) const
{
    QWidget *text = shownMessage(chat.messageList(), index).text;
    QToolTip::hideText();
    QHelpEvent hover(QEvent::ToolTip, QPoint(2, 2), text->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(text, &hover);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

QString TestChatSealed::spoken(int index) const
{
    return chat.messageList()->item(index)->data(Qt::AccessibleTextRole).toString();
}

void TestChatSealed::initTestCase()
{
    failOnToolkitWarnings();
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    own = ownKeyPair();
    QVERIFY(!own.privateKey.isEmpty());
}

void TestChatSealed::sealedMessagesAreOpened()
{
    QJsonObject numbered = sealedMessage(u"bob"_s, u"marked by a number"_s, own, chat.deviceId());
    numbered.insert(u"encrypted"_s, 1);
    const QJsonObject theirs = sealedMessage(u"bob"_s, u"Hej 🙂\nåäö"_s, own, chat.deviceId().toUpper());
    const QJsonObject mine = sealedMessage(u"Alice"_s, u"from me"_s, own, chat.deviceId(), true);
    QVERIFY(chat.showHistory(u"bob"_s, {theirs, mine, numbered}));
    QCOMPARE(chat.messageList()->count(), 4);
    QCOMPARE(shownText(1), u"Hej 🙂\nåäö"_s);
    QCOMPARE(shownText(2), u"from me"_s);
    QVERIFY(shownMessage(chat.messageList(), 2).isMine);
    QCOMPARE(shownText(3), u"marked by a number"_s);
}

void TestChatSealed::messageThatCannotBeOpened_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("shown");
    const QString english = u"🔒 Message could not be displayed"_s;
    const QString swedish = u"🔒 Meddelandet kunde inte visas"_s;
    const auto row = [](const char *name, int language, const QString &member, const QJsonValue &value,
                        const QString &shown) {
        QTest::newRow(name) << language << member << value << shown;
    };
    const QJsonArray none;
    const QJsonArray others{QJsonObject{{u"deviceId"_s, u"other"_s}, {u"encryptedKey"_s, u"AAAA"_s}}};
    row("no key for this device, English", 1, u"recipientKeys"_s, none, english);
    row("no key for this device, Swedish", 0, u"recipientKeys"_s, none, swedish);
    row("keys for other devices alone", 1, u"recipientKeys"_s, others, english);
    row("keys that are no list", 1, u"recipientKeys"_s, 5, english);
    row("altered text", 1, u"text"_s, u"QUJDREVGR0hJSktMTU5PUFFSU1RVVldY"_s, english);
    row("text missing", 1, u"text"_s, QJsonValue(QJsonValue::Null), english);
    row("nonce too short", 1, u"iv"_s, u"AAAAAAAAAAA="_s, english);
    row("nothing wrong", 1, u"extra"_s, 1, u"secret"_s);
}

void TestChatSealed::messageThatCannotBeOpened()
{
    QFETCH(const int, language);
    QFETCH(const QString, member);
    QFETCH(const QJsonValue, value);
    QJsonObject sealed = sealedMessage(u"bob"_s, u"secret"_s, own, chat.deviceId());
    sealed.insert(member, value);
    chat.window.setLanguageIndex(language);
    QVERIFY(chat.showHistory(
        u"bob"_s, {plainMessage(u"bob"_s, u"before"_s), sealed, plainMessage(u"bob"_s, u"after"_s)}));
    chat.window.setLanguageIndex(1);
    QCOMPARE(chat.messageList()->count(), 4);
    QCOMPARE(shownText(1), u"before"_s);
    QTEST(shownText(2), "shown");
    QCOMPARE(shownText(3), u"after"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestChatSealed::aToolTipSaysWhy_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("why");
    QTest::newRow("other device, English") << 1 << u"recipientKeys"_s << QJsonValue(QJsonArray())
                                           << u"Read it on the device that it was written for."_s;
    QTest::newRow("other device, Swedish")
        << 0 << u"recipientKeys"_s << QJsonValue(QJsonArray()) << u"Läs det på enheten som det skrevs för."_s;
    QTest::newRow("damaged, English")
        << 1 << u"iv"_s << QJsonValue(u""_s)
        << u"Encrypted payload is missing text or iv. Ask the sender to send it again."_s;
    QTest::newRow("damaged, Swedish")
        << 0 << u"iv"_s << QJsonValue(u""_s)
        << u"Encrypted payload is missing text or iv. Be avsändaren skicka det igen."_s;
}

void TestChatSealed::aToolTipSaysWhy()
{
    QFETCH(const int, language);
    QFETCH(const QString, member);
    QFETCH(const QJsonValue, value);
    QFETCH(const QString, why);
    const QJsonObject whole = sealedMessage(u"bob"_s, u"secret"_s, own, chat.deviceId());
    QJsonObject sealed = whole;
    sealed.insert(member, value);
    chat.window.setLanguageIndex(language);
    QVERIFY(chat.showHistory(u"bob"_s, {whole, sealed}));
    chat.window.setLanguageIndex(1);
    QVERIFY2(shownTip(2).endsWith(why), qPrintable(shownTip(2)));
    QVERIFY2(spoken(2).endsWith(why), qPrintable(spoken(2)));
    QCOMPARE(shownMessage(chat.messageList(), 1).bubble->toolTip(), QString());
    QVERIFY(!spoken(1).contains(why));
}

void TestChatSealed::anotherReasonChangesTheRow()
{
    QJsonObject sealed = sealedMessage(u"bob"_s, u"secret"_s, own, chat.deviceId());
    sealed.insert(u"recipientKeys"_s, QJsonArray());
    QVERIFY(chat.showHistory(u"bob"_s, {sealed}));
    QVERIFY(shownTip(1).startsWith(u"No encrypted key found for device '%1'."_s.arg(chat.deviceId())));
    sealed.insert(u"iv"_s, QString());
    QVERIFY(chat.showHistory(u"bob"_s, {sealed}));
    QCOMPARE(shownTip(1), u"Encrypted payload is missing text or iv. Ask the sender to send it again."_s);
    QVERIFY(spoken(1).contains(u"Encrypted payload is missing text or iv."_s));
}

void TestChatSealed::onlyTheRightArrayIsSearched()
{
    QVERIFY(chat.showHistory(u"bob"_s, {sealedMessage(u"bob"_s, u"x"_s, own, chat.deviceId(), true),
                                        sealedMessage(u"alice"_s, u"x"_s, own, chat.deviceId())}));
    QCOMPARE(shownText(1), u"🔒 Message could not be displayed"_s);
    QCOMPARE(shownText(2), u"🔒 Message could not be displayed"_s);
}

void TestChatSealed::missingKeyFileIsReadAgainAtTheNextReply()
{
    using namespace tideloft::crypto;
    const QJsonArray items{sealedMessage(u"bob"_s, u"secret"_s, own, chat.deviceId())};
    QVERIFY(QFile::remove(privateKeyPath()));
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QCOMPARE(shownText(1), u"🔒 Message could not be displayed"_s);
    QVERIFY(writePrivateKeyFile(own.privateKey));
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QCOMPARE(shownText(1), u"secret"_s);
}

void TestChatSealed::markupIsShownAsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("bold") << u"<b>x</b>"_s;
    QTest::newRow("picture of a device") << u"<img src=/dev/zero>"_s;
    QTest::newRow("link") << u"<a href=\"file:///etc/passwd\">x</a>"_s;
    QTest::newRow("entity") << u"&lt;b&gt; &amp;"_s;
}

void TestChatSealed::markupIsShownAsText()
{
    QFETCH(const QString, text);
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(text, text)}));
    const ShownMessage message = shownMessage(chat.messageList(), 1);
    QCOMPARE(message.name->text(), text);
    QCOMPARE(message.text->text(), text);
    for (const QLabel *label : message.row->findChildren<QLabel *>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
    // Every character takes its place: as markup the text would be narrower, or end the program.
    const QFontMetrics metrics = message.text->fontMetrics();
    QTRY_VERIFY(message.text->width() >= metrics.horizontalAdvance(text));
}

TIDELOFT_GUI_TEST_MAIN(TestChatSealed)
#include "tst_chat_sealed.moc"
