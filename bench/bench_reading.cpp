// What opening and sealing cost beside the RSA that cannot be avoided, as ratios of times taken in one run.
// Build it optimised: what stands beside RSA is this program's own code.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/oaep_context.h"
#include "bench/paired_times.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/openssl_ptr.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/open_message.h"
#include "tests/support/test_main.h"

#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <QJsonArray>
#include <QJsonObject>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::bench;

namespace
{

using Run = int (*)(EVP_PKEY_CTX *, unsigned char *, size_t *, const unsigned char *, size_t);

constexpr int messageCount = 1000;
constexpr int partSize = 20; // short enough for a turn, long enough to be timed
const QString own = u"device 0"_s;

const unsigned char *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

void runRaw(EVP_PKEY_CTX *context, Run run, const QByteArray &input)
{
    std::array<unsigned char, 256> output{};
    size_t size = output.size();
    if (run(context, output.data(), &size, bytesOf(input), static_cast<size_t>(input.size())) <= 0)
        qFatal("RSA-OAEP failed.");
}

QJsonArray devicesWith(const QString &publicKey, int count)
{
    QJsonArray list;
    for (int i = 0; i < count; ++i)
        list.append(QJsonObject{{u"deviceId"_s, u"device %1"_s.arg(i)}, {u"publicKeyBase64"_s, publicKey}});
    return list;
}

QJsonObject sealedFor(const QJsonArray &devices, const QString &text)
{
    const auto envelope = crypto::encryptMessageEnvelope(text, devices, {});
    return {{u"encrypted"_s, true},
            {u"from"_s, u"bob"_s},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"recipientKeys"_s, envelope.recipientKeys}};
}

void openAll(const QList<QJsonObject> &messages, crypto::DecryptionCache &cache)
{
    for (const QJsonObject &message : messages) {
        if (!crypto::decryptMessage(message, u"alice"_s, own, cache).ok)
            qFatal("A message did not open.");
    }
}

} // namespace

class BenchReading : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void openingAfresh();
    void openingCached_data();
    void openingCached();
    void sealing();

private:
    [[nodiscard]] QList<QJsonObject> messagesFor(int deviceCount) const;

    QString publicKey;
};

void BenchReading::initTestCase()
{
    QVERIFY(crypto::ensureKeyPair());
    publicKey = crypto::readPublicKeyFile();
}

QList<QJsonObject> BenchReading::messagesFor(int deviceCount) const
{
    const QJsonArray devices = devicesWith(publicKey, deviceCount);
    QList<QJsonObject> messages;
    for (int i = 0; i < messageCount; ++i)
        messages << sealedFor(devices, u"Message number %1, as long as most of them are."_s.arg(i));
    return messages;
}

// The floor keeps its context too, which no program could do better.
void BenchReading::openingAfresh()
{
    const QList<QJsonObject> messages = messagesFor(1);
    QList<QByteArray> wrappedKeys;
    for (const QJsonObject &message : messages)
        wrappedKeys << crypto::fromBase64Text(
            crypto::findWrappedKeyForDevice(message.value(u"recipientKeys"_s).toArray(), own));
    const QByteArray der = crypto::fromBase64Text(crypto::readPrivateKeyFile());
    const unsigned char *position = bytesOf(der);
    const crypto::OpenSslPtr<EVP_PKEY> key(d2i_AutoPrivateKey(nullptr, &position, der.size()));
    const auto context = oaepContext(key.get(), EVP_PKEY_decrypt_init);
    const auto unwrapRaw = [&](int part) {
        for (const QByteArray &wrappedKey : wrappedKeys.mid(part * partSize, partSize))
            runRaw(context.get(), EVP_PKEY_decrypt, wrappedKey);
    };
    std::optional<crypto::DecryptionCache> cache;
    const auto openFresh = [&](int part) {
        if (part == 0)
            cache.emplace();
        openAll(messages.mid(part * partSize, partSize), *cache);
    };
    printRatio("opening 1,000 messages / 1,000 raw unwraps",
               pairedTimes(messageCount / partSize, unwrapRaw, openFresh), 1.10);
}

void BenchReading::openingCached_data()
{
    QTest::addColumn<int>("devices");
    QTest::newRow("sealed for 1 device") << 1;
    QTest::newRow("sealed for 10 devices") << 10;
}

void BenchReading::openingCached()
{
    QFETCH(const int, devices);
    const QList<QJsonObject> messages = messagesFor(devices);
    crypto::DecryptionCache cache;
    openAll(messages, cache);
    const double time = medianTime([&] { openAll(messages, cache); });
    std::printf("opening 1,000 cached messages, %s: %.2f us a message\n", QTest::currentDataTag(),
                time * 1000 / messageCount);
}

void BenchReading::sealing()
{
    constexpr int deviceCount = 50;
    const QJsonArray devices = devicesWith(publicKey, deviceCount);
    const QByteArray der = crypto::fromBase64Text(publicKey);
    const QByteArray contentKey(32, 'k');
    const auto encryptRaw = [&](int) {
        for (int i = 0; i < deviceCount; ++i) {
            const unsigned char *position = bytesOf(der);
            const crypto::OpenSslPtr<EVP_PKEY> key(d2i_PUBKEY(nullptr, &position, der.size()));
            runRaw(oaepContext(key.get(), EVP_PKEY_encrypt_init).get(), EVP_PKEY_encrypt, contentKey);
        }
    };
    const auto seal = [&](int) {
        if (!crypto::encryptMessageEnvelope(u"Hello"_s, devices, {}).ok)
            qFatal("Nothing was sealed.");
    };
    printRatio("sealing 20 times for 50 devices / 1,000 raw parsings and encryptions",
               pairedTimes(20, encryptRaw, seal), 1.10);
}

TIDELOFT_TEST_MAIN(BenchReading)
#include "bench_reading.moc"
