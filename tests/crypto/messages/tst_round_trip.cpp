// Envelopes between this code and another implementation of the same standards, both ways.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "tests/support/crypto/device_records.h"
#include "tests/support/crypto/envelope_peer.h"
#include "tests/support/crypto/opened.h"
#include "tests/support/crypto/sealed_items.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>

using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

// Any text that UTF-8 can carry: characters of one to four bytes, controls and NUL among them.
QString randomText(QRandomGenerator &random, qsizetype shortest)
{
    QString text;
    const qsizetype length = shortest + random.bounded(random.bounded(20) == 0 ? 20'000 : 200);
    while (text.size() < length) {
        constexpr std::array<quint32, 4> ends{0x80, 0x800, 0xd800, 0x11'0000};
        const auto width = static_cast<size_t>(random.bounded(4));
        const quint32 begin = width == 3 ? 0x1'0000 : 0;
        const char32_t character = begin + random.bounded(ends.at(width) - begin);
        text.append(QString::fromUcs4(&character, 1));
    }
    return text;
}

QJsonObject itemOf(const QString &sealed, const QString &nonce, const QString &wrapped)
{
    const QJsonArray keys{QJsonObject{{u"deviceId"_s, own}, {u"encryptedKey"_s, wrapped}}};
    return {{u"encrypted"_s, 1}, {u"from"_s, u"bob"_s}, {u"text"_s, sealed},
            {u"iv"_s, nonce},    {u"to"_s, u"alice"_s}, {u"recipientKeys"_s, keys}};
}

QString wrappedKeyOf(const EncryptedEnvelope &envelope)
{
    return envelope.recipientKeys.at(0).toObject().value(u"encryptedKey"_s).toString();
}

} // namespace

class TestRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void theOtherOpensWhatIsSealedHere_data() { addKeys(); }
    void theOtherOpensWhatIsSealedHere();
    void whatTheOtherSealsOpensHere_data() { addKeys(); }
    void whatTheOtherSealsOpensHere();
    void bothRefuseTheSameDamage_data() { addKeys(); }
    void bothRefuseTheSameDamage();

private:
    static void addKeys();
    bool takeKeys(const QString &maker);

    EnvelopePeer peer;
    QRandomGenerator random{20'260'329}; // a number of ours, so that a failure comes again
};

void TestRoundTrip::addKeys()
{
    QTest::addColumn<QString>("maker");
    QTest::newRow("with keys made here") << u"here"_s;
    QTest::newRow("with keys of the other as PKCS#1") << u"pkcs1"_s;
    QTest::newRow("with keys of the other as PKCS#8") << u"pkcs8"_s;
}

// Both sides have the key pair afterwards, this one in its key files.
bool TestRoundTrip::takeKeys(const QString &maker)
{
    if (maker == u"here")
        return generateKeyPair() && peer.ask({u"key"_s, readPrivateKeyFile()}) == QStringList{u"ok"_s};
    const QStringList made = peer.ask({u"make"_s, maker});
    return made.size() == 2 && writePrivateKeyFile(made.at(0)) && writePublicKeyFile(made.at(1));
}

void TestRoundTrip::theOtherOpensWhatIsSealedHere()
{
    QFETCH(const QString, maker);
    QVERIFY(takeKeys(maker));
    const QJsonArray devices{device(own, readPublicKeyFile())};
    for (int round = 0; round < rounds(34, 3334); ++round) {
        const QString text = randomText(random, 1);
        const EncryptedEnvelope envelope = encryptMessageEnvelope(text, devices, devices);
        QVERIFY2(envelope.ok, qPrintable(envelope.error));
        const QStringList there =
            peer.ask({u"open"_s, envelope.ivBase64, envelope.ciphertextBase64, wrappedKeyOf(envelope)});
        QCOMPARE(there, QStringList{EnvelopePeer::word(text)});
    }
}

void TestRoundTrip::whatTheOtherSealsOpensHere()
{
    QFETCH(const QString, maker);
    QVERIFY(takeKeys(maker));
    for (int round = 0; round < rounds(34, 3334); ++round) {
        const QString text = randomText(random, 0);
        const QStringList sealed = peer.ask({u"seal"_s, EnvelopePeer::word(text)});
        QCOMPARE(sealed.size(), 3);
        const DecryptResult result =
            opened(itemOf(sealed.at(1), sealed.at(0), sealed.at(2)), u"alice"_s, own);
        QVERIFY2(result.ok, qPrintable(result.error));
        QCOMPARE(result.text, text);
    }
}

// One bit anywhere in the nonce, the ciphertext, the tag or the wrapped key.
void TestRoundTrip::bothRefuseTheSameDamage()
{
    QFETCH(const QString, maker);
    QVERIFY(takeKeys(maker));
    for (int round = 0; round < rounds(34, 334); ++round) {
        QStringList sealed = peer.ask({u"seal"_s, EnvelopePeer::word(randomText(random, 1))});
        QCOMPARE(sealed.size(), 3);
        QString &part = sealed[round % 3];
        QByteArray bytes = fromBase64Text(part);
        char &byte = bytes[random.bounded(static_cast<int>(bytes.size()))];
        byte = static_cast<char>(byte ^ (1 << random.bounded(8)));
        part = toBase64Text(bytes);
        QCOMPARE(peer.ask(QStringList{u"open"_s} + sealed), QStringList{u"refused"_s});
        QVERIFY(!opened(itemOf(sealed.at(1), sealed.at(0), sealed.at(2)), u"alice"_s, own).ok);
    }
}

TIDELOFT_TEST_MAIN(TestRoundTrip)
#include "tst_round_trip.moc"
