// What is told of a message that could not be displayed: the reason, and a sentence on what to do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/messages/unreadable_message.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestUnreadableMessage : public QObject
{
    Q_OBJECT

private slots:
    void reasonAndAdvice_data();
    void reasonAndAdvice();
    void hostileReasonIsBounded();
};

void TestUnreadableMessage::reasonAndAdvice_data()
{
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("swedish");
    QTest::addColumn<QString>("english");
    const QString elsewhere = u"Läs det på enheten som det skrevs för."_s;
    const QString elsewhereToo = u"Read it on the device that it was written for."_s;
    const QString keys = u"Lägg tillbaka nyckelfilerna, eller logga in igen."_s;
    const QString keysToo = u"Put the key files back, or sign in again."_s;
    const QString again = u"Be avsändaren skicka det igen."_s;
    const QString againToo = u"Ask the sender to send it again."_s;
    QTest::newRow("other device") << u"No encrypted key found for device 'x'."_s << elsewhere << elsewhereToo;
    QTest::newRow("no key") << u"Private key not found."_s << keys << keysToo;
    QTest::newRow("damaged key") << u"Could not parse private key: no start line"_s << keys << keysToo;
    const QString either = u"Lägg tillbaka nyckelfilerna, eller be avsändaren skicka det igen."_s;
    const QString eitherToo = u"Put the key files back, or ask the sender to send it again."_s;
    QTest::newRow("missing key file")
        << u"Could not open file: /home/x/chat_private_key.b64"_s << keys << keysToo;
    QTest::newRow("no Base64") << u"Invalid base64 data."_s << either << eitherToo;
    QTest::newRow("another key") << u"RSA-OAEP decrypt failed: oaep decoding error"_s << either << eitherToo;
    QTest::newRow("altered") << u"AES-GCM authentication failed."_s << again << againToo;
    QTest::newRow("empty") << u"The message is empty."_s << again << againToo;
}

void TestUnreadableMessage::reasonAndAdvice()
{
    QFETCH(const QString, reason);
    QFETCH(const QString, swedish);
    QFETCH(const QString, english);
    QCOMPARE(messageTrouble(reason, Language::Swedish), reason + u' ' + swedish);
    QCOMPARE(messageTrouble(reason, Language::English), reason + u' ' + english);
}

void TestUnreadableMessage::hostileReasonIsBounded()
{
    const QString trouble = messageTrouble(u"a\n"_s.repeated(100'000), Language::English);
    QVERIFY(trouble.size() < 300);
    QVERIFY(!trouble.contains(u'\n'));
    QVERIFY(trouble.endsWith(u"Ask the sender to send it again."_s));
}

TIDELOFT_TEST_MAIN(TestUnreadableMessage)
#include "tst_unreadable_message.moc"
