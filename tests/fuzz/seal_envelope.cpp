// Fuzzing of sealing for the device records that the service lists.
//
// In the texts of the records "$public" stands for a public key as it should be, and "$pem" for the same as
// PEM, so that mutations of the rest reach what wraps the content key.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/envelope.h"
#include "crypto/messages/open_message.h"
#include "net/device_key_records.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/key_home.h"
#include "tests/support/crypto/device_records.h"
#include "ui/messages/sealing_devices.h"

using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

const KeyHome &device()
{
    static const KeyHome home;
    return home;
}

QString filledText(const QString &text)
{
    static const QString pemText = toBase64Text(publicPemOf(publishedPrivateKey()));
    if (text == u"$public"_s)
        return device().publicText;
    return text == u"$pem"_s ? pemText : text;
}

// Every key that is parsed takes longer than all the rest.
QJsonArray listed(const QJsonObject &input, const QString &name)
{
    QJsonArray records = filled(input.value(name), filledText).toArray();
    while (records.size() > 4)
        records.removeLast();
    return tideloft::net::normaliseDeviceKeys(records);
}

QString trimmed(const QJsonValue &record, const QString &member)
{
    return record.toObject().value(member).toString().trimmed();
}

QStringList usableDevices(const QJsonArray &devices)
{
    QStringList identifiers;
    for (const QJsonValue &record : devices) {
        if (!trimmed(record, u"deviceId"_s).isEmpty() && !trimmed(record, u"publicKeyBase64"_s).isEmpty())
            identifiers.append(trimmed(record, u"deviceId"_s));
    }
    return identifiers;
}

void checkWrapped(const QJsonArray &wrapped, const QJsonArray &devices)
{
    require(identifiers(wrapped) == usableDevices(devices), "every usable device has its key, in order");
    for (const QJsonValue &record : wrapped)
        require(!fromBase64Text(trimmed(record, u"encryptedKey"_s)).isEmpty(), "a wrapped key is Base64");
}

void checkSealed(const EncryptedEnvelope &envelope, const QString &text)
{
    require(envelope.error.isEmpty(), "what was sealed has no error");
    require(fromBase64Text(envelope.ivBase64).size() == gcmNonceSize, "the nonce has its size");
    require(fromBase64Text(envelope.ciphertextBase64).size() == text.toUtf8().size() + gcmTagSize,
            "the ciphertext is as long as the text and its tag");
    require(!envelope.recipientKeys.isEmpty(), "somebody can read it");
}

bool isForThisDevice(const QJsonArray &devices)
{
    for (const QJsonValue &record : devices) {
        const QString key = trimmed(record, u"publicKeyBase64"_s);
        if (!key.isEmpty() && trimmed(record, u"deviceId"_s).toLower() == own)
            return key == device().publicText;
    }
    return false;
}

void checkOpens(const EncryptedEnvelope &envelope, const QString &text)
{
    const QJsonObject item{{u"encrypted"_s, 1},
                           {u"from"_s, u"bob"_s},
                           {u"text"_s, envelope.ciphertextBase64},
                           {u"iv"_s, envelope.ivBase64},
                           {u"recipientKeys"_s, envelope.recipientKeys}};
    const DecryptResult result = decryptMessage(item, u"alice"_s, own);
    require(result.ok && result.text == QString::fromUtf8(text.toUtf8()), "what was sealed opens");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject input = jsonInput(data, size).object();
    const QString text = input.value(u"text"_s).toString();
    const QJsonArray recipients = tideloft::ui::recipientDevices(
        listed(input, u"recipient"_s), filledText(input.value(u"publicKey"_s).toString()));
    const QJsonArray senders = tideloft::ui::senderDevices(listed(input, u"sender"_s), own);
    const EncryptedEnvelope envelope = encryptMessageEnvelope(text, recipients, senders);
    if (!envelope.ok) {
        require(!envelope.error.isEmpty(), "a failure says why");
        return 0;
    }
    checkSealed(envelope, text);
    checkWrapped(envelope.recipientKeys, recipients);
    checkWrapped(envelope.senderKeys, senders);
    if (isForThisDevice(recipients) && mayPay(rawInput(data, size), 16))
        checkOpens(envelope, text);
    return 0;
}
