// One wrapped key for every device, record by record or all at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/key_wrapping.h"
#include "tests/support/crypto/device_records.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestKeyWrapping : public QObject
{
    Q_OBJECT

private slots:
    void everyStepIsOneDevice();
    void noDevicesWrapAtOnce();
    void everyDeviceGetsTheKey();
    void aBadKeyEndsIt();
};

void TestKeyWrapping::everyStepIsOneDevice()
{
    const QString key = toBase64Text(publicKeyOf(publishedPrivateKey()));
    const QJsonArray three{device(u"A"_s, key), device(u"B"_s, key), device(u"C"_s, key)};
    KeyWrapping wrapping(three);
    QJsonArray wrapped;
    for (int i = 1; i <= 3; ++i) {
        QVERIFY(!wrapping.isAtEnd());
        QVERIFY(wrapping.wrapNext(QByteArray(32, 'k'), wrapped, nullptr));
        QCOMPARE(wrapped.size(), i);
    }
    QVERIFY(wrapping.isAtEnd());
    QVERIFY(KeyWrapping({}).isAtEnd());
}

void TestKeyWrapping::noDevicesWrapAtOnce()
{
    EncryptedEnvelope envelope;
    QJsonArray wrapped;
    QVERIFY(wrapKeyForDevices({}, QByteArray(32, 'k'), wrapped, envelope));
    QVERIFY(wrapped.isEmpty());
    QVERIFY(envelope.error.isEmpty());
}

void TestKeyWrapping::everyDeviceGetsTheKey()
{
    const QByteArray privateKey = publishedPrivateKey();
    const QString key = toBase64Text(publicKeyOf(privateKey));
    const QByteArray contentKey(32, 'k');
    EncryptedEnvelope envelope;
    QJsonArray wrapped;
    const QJsonArray devices{device(u"A"_s, key), device(u"S"_s, QString()), device(u"B"_s, key)};
    QVERIFY(wrapKeyForDevices(devices, contentKey, wrapped, envelope));
    QVERIFY(envelope.error.isEmpty());
    QCOMPARE(identifiers(wrapped), QStringList({u"A"_s, u"B"_s}));
    for (const auto &record : std::as_const(wrapped)) {
        const QString text = record.toObject().value(u"encryptedKey"_s).toString();
        QCOMPARE(rsaOaepDecrypt(privateKey, fromBase64Text(text)), contentKey);
    }
}

void TestKeyWrapping::aBadKeyEndsIt()
{
    const QString key = toBase64Text(publicKeyOf(publishedPrivateKey()));
    EncryptedEnvelope envelope;
    QJsonArray wrapped;
    const QJsonArray devices{device(u"A"_s, key), device(u"X"_s, u"!!!!"_s), device(u"B"_s, key)};
    QVERIFY(!wrapKeyForDevices(devices, QByteArray(32, 'k'), wrapped, envelope));
    QCOMPARE(envelope.error, u"Could not decode public key for device 'X': Invalid base64 data."_s);
    QCOMPARE(identifiers(wrapped), QStringList{u"A"_s});
}

TIDELOFT_TEST_MAIN(TestKeyWrapping)
#include "tst_key_wrapping.moc"
