// Opening of messages, one function for each step; a step that fails says why and ends the walk.
#include "crypto/open_message.h"

#include "crypto/aes_gcm.h"
#include "crypto/base64.h"
#include "crypto/failure.h"
#include "crypto/key_store.h"
#include "crypto/rsa_oaep.h"
#include "crypto/secret_bytes.h"

#include <optional>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// The Base64 texts of an envelope that concern this device.
struct SealedTexts {
    QString text;
    QString iv;
    QString wrappedKey;
};

// The same decoded, with the key that opens them.
struct SealedBytes {
    SecretBytes privateKey;
    QByteArray wrappedKey;
    QByteArray iv;
    QByteArray text;
};

QString trimmedMember(const QJsonObject &message, const QString &name)
{
    return message.value(name).toString().trimmed();
}

// The array for the side of the conversation that this user is on. The other one is never searched.
QJsonArray ownKeys(const QJsonObject &message, const QString &ownName)
{
    const bool sentByMe = trimmedMember(message, u"from"_s).toLower() == ownName.trimmed().toLower();
    return message.value(sentByMe ? u"senderKeys"_s : u"recipientKeys"_s).toArray();
}

std::optional<SealedTexts> findSealedTexts(const QJsonObject &message, const QString &ownName,
                                           const QString &ownDeviceId, QString *error)
{
    SealedTexts sealed{trimmedMember(message, u"text"_s), trimmedMember(message, u"iv"_s), {}};
    if (sealed.text.isEmpty() || sealed.iv.isEmpty()) {
        *error = u"Encrypted payload is missing text or iv."_s;
        return {};
    }
    sealed.wrappedKey = findWrappedKeyForDevice(ownKeys(message, ownName), ownDeviceId);
    if (sealed.wrappedKey.isEmpty()) {
        *error = u"No encrypted key found for device '%1'. The message was not encrypted for this device, or "
                 "the key arrays are empty. Try re-registering your device key."_s.arg(ownDeviceId);
        return {};
    }
    return sealed;
}

// A step gives its own message where it has one; `fallback` stands for a step that fails without a word.
QByteArray decode(const QString &base64, const QString &fallback, QString *error)
{
    QByteArray bytes = fromBase64Text(base64, error);
    if (bytes.isEmpty())
        return failUnlessExplained(error, fallback);
    return bytes;
}

std::optional<SealedBytes> decodeAll(const QString &privateKey, const SealedTexts &sealed, QString *error)
{
    SecretBytes key(decode(privateKey, u"Private key decode failed."_s, error));
    if (key.isEmpty())
        return {};
    const QByteArray wrappedKey = decode(sealed.wrappedKey, u"Encrypted key decode failed."_s, error);
    if (wrappedKey.isEmpty())
        return {};
    const QByteArray iv = decode(sealed.iv, u"IV decode failed."_s, error);
    if (iv.isEmpty())
        return {};
    const QByteArray text = decode(sealed.text, u"Ciphertext decode failed."_s, error);
    if (text.isEmpty())
        return {};
    return SealedBytes{std::move(key), wrappedKey, iv, text};
}

QString readPrivateKey(QString *error)
{
    const QString key = readPrivateKeyFile(error);
    if (key.isEmpty())
        return failUnlessExplained(error, u"Private key not found."_s);
    return key;
}

SecretBytes unwrapContentKey(const SealedBytes &sealed, QString *error)
{
    SecretBytes contentKey(rsaOaepDecrypt(sealed.privateKey.view(), sealed.wrappedKey, error));
    if (contentKey.isEmpty())
        failUnlessExplained(error, u"RSA decrypt failed."_s);
    return contentKey;
}

// A text without characters is a text too: only a reported error makes an empty one a failure.
DecryptResult openText(const QByteArray &contentKey, const SealedBytes &sealed)
{
    QString error;
    const QByteArray plaintext = aesGcmDecrypt(contentKey, sealed.iv, sealed.text, &error);
    if (plaintext.isEmpty() && !error.isEmpty())
        return {false, error, {}};
    return {true, {}, QString::fromUtf8(plaintext)};
}

DecryptResult openEnvelope(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId)
{
    DecryptResult failed;
    const auto texts = findSealedTexts(message, ownName, ownDeviceId, &failed.error);
    if (!texts)
        return failed;
    const QString privateKey = readPrivateKey(&failed.error);
    if (privateKey.isEmpty())
        return failed;
    const auto sealed = decodeAll(privateKey, *texts, &failed.error);
    if (!sealed)
        return failed;
    const SecretBytes contentKey = unwrapContentKey(*sealed, &failed.error);
    if (contentKey.isEmpty())
        return failed;
    return openText(contentKey.view(), *sealed);
}

} // namespace

bool isEncrypted(const QJsonObject &item)
{
    const QJsonValue encrypted = item.value(u"encrypted"_s);
    return encrypted.toBool(false) || encrypted.toDouble(0) != 0;
}

DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId)
{
    if (!isEncrypted(message))
        return {true, {}, message.value(u"text"_s).toString()};
    return openEnvelope(message, ownName, ownDeviceId);
}

QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           QString *error)
{
    const DecryptResult result = decryptMessage(message, ownName, ownDeviceId);
    if (!result.ok)
        return fail(error, result.error);
    if (error && !error->isEmpty())
        *error = QString();
    return result.text;
}

} // namespace tideloft::crypto
