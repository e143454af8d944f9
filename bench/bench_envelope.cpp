// How long sealing and opening a message take. Run it with -median 5; a Debug build measures the same,
// because the time is spent in OpenSSL.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/open_message.h"
#include "tests/support/test_main.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace tideloft;

class BenchEnvelope : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void seal_data();
    void seal();
    void open();

private:
    QJsonArray devices(int count) const;

    QString publicKey;
};

void BenchEnvelope::initTestCase()
{
    QVERIFY(crypto::ensureKeyPair());
    publicKey = crypto::readPublicKeyFile();
}

QJsonArray BenchEnvelope::devices(int count) const
{
    QJsonArray list;
    for (int i = 0; i < count; ++i)
        list.append(QJsonObject{{u"deviceId"_s, QString::number(i)}, {u"publicKeyBase64"_s, publicKey}});
    return list;
}

void BenchEnvelope::seal_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("for 1 device") << 1;
    QTest::newRow("for 10 devices") << 10;
    QTest::newRow("for 50 devices") << 50;
}

void BenchEnvelope::seal()
{
    QFETCH(int, count);
    const QJsonArray recipients = devices(count);
    QBENCHMARK
    {
        QVERIFY(crypto::encryptMessageEnvelope(u"Hello"_s, recipients, {}).ok);
    }
}

void BenchEnvelope::open()
{
    const auto envelope = crypto::encryptMessageEnvelope(u"Hello"_s, devices(1), {});
    const QJsonObject message{{u"encrypted"_s, true},
                              {u"from"_s, u"bob"_s},
                              {u"text"_s, envelope.ciphertextBase64},
                              {u"iv"_s, envelope.ivBase64},
                              {u"recipientKeys"_s, envelope.recipientKeys}};
    QBENCHMARK
    {
        QCOMPARE(crypto::decryptMessage(message, u"alice"_s, u"0"_s).text, u"Hello"_s);
    }
}

TIDELOFT_TEST_MAIN(BenchEnvelope)
#include "bench_envelope.moc"
