// Fuzzing of opening a message, with a cache that has the key of some.
//
// In the texts of an item "$key" stands for a wrapped key that opens, "$iv" for its nonce, and "$sealed:"
// before a text for that text sealed. So mutations of what was sealed reach what opens it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/open_message.h"
#include "crypto/messages/decryption_cache.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/key_home.h"

using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

const QString sealedMark = u"$sealed:"_s;

const KeyHome &device()
{
    static const KeyHome home;
    return home;
}

QString filledText(const QString &text)
{
    if (text == u"$key"_s)
        return device().wrappedKey;
    if (text == u"$iv"_s)
        return toBase64Text(device().nonce);
    if (!text.startsWith(sealedMark))
        return text;
    const QByteArray plain = text.sliced(sealedMark.size()).toUtf8();
    return toBase64Text(aesGcmEncrypt(device().contentKey, device().nonce, plain));
}

// RSA takes longer than everything else together, and looks the same whatever it fails at.
QJsonObject withoutRsa(QJsonObject item)
{
    for (const QString &side : {u"recipientKeys"_s, u"senderKeys"_s}) {
        QJsonArray records = item.value(side).toArray();
        for (auto &&record : records) {
            const QJsonObject object = QJsonValue(record).toObject();
            if (!object.value(u"encryptedKey"_s).toString().trimmed().isEmpty())
                record = changed(object, u"encryptedKey"_s, device().wrappedKey);
        }
        if (!records.isEmpty())
            item.insert(side, records);
    }
    return item;
}

void checkResult(const DecryptResult &result)
{
    require(result.ok == result.error.isEmpty(), "a message opens or says why not");
    require(result.ok || result.text.isEmpty(), "what does not open has no text");
}

bool same(const DecryptResult &left, const DecryptResult &right)
{
    return left.ok == right.ok && left.error == right.error && left.text == right.text;
}

// What was sealed comes out again; what is no envelope passes.
void checkText(const QJsonObject &templateItem, const QJsonObject &item, const DecryptResult &result)
{
    const QString text = templateItem.value(u"text"_s).toString();
    if (!isEncrypted(item))
        require(result.ok && result.text == item.value(u"text"_s).toString(),
                "a plain message is passed through");
    else if (result.ok)
        require(text.startsWith(sealedMark)
                    && result.text == QString::fromUtf8(text.sliced(sealedMark.size()).toUtf8()),
                "what opens is what was sealed");
}

// The cache has "$key" from the first message on, and nothing clears it.
void openFirst(DecryptionCache &cache)
{
    const QJsonArray keys{QJsonObject{{u"deviceId"_s, own}, {u"encryptedKey"_s, u"$key"_s}}};
    const QJsonObject first{{u"encrypted"_s, true},
                            {u"from"_s, u"bob"_s},
                            {u"text"_s, u"$sealed:first"_s},
                            {u"iv"_s, u"$iv"_s},
                            {u"recipientKeys"_s, keys}};
    const auto result = decryptMessage(filled(first, filledText).toObject(), u"alice"_s, own, cache);
    require(result.text == u"first"_s && cache.size() == 1, "a message opens and is cached");
}

DecryptResult openHere(const QJsonObject &item)
{
    static DecryptionCache cache;
    if (cache.size() == 0)
        openFirst(cache);
    return decryptMessage(item, u"alice"_s, own, cache);
}

DecryptResult checkOpening(const QJsonObject &original, const QJsonObject &item)
{
    const DecryptResult result = openHere(item);
    checkResult(result);
    checkText(original, item, result);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject original = jsonInput(data, size).object();
    const QJsonObject item = filled(original, filledText).toObject();
    checkOpening(original, withoutRsa(item));
    if (mayPay(rawInput(data, size), 64)) {
        const DecryptResult result = checkOpening(original, item);
        require(same(result, decryptMessage(item, u"alice"_s, own)), "a cache changes no result");
    }
    return 0;
}
