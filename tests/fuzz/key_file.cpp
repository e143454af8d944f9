// Fuzzing of what is in a key file: reading it, and working with the key that it holds or does not hold.
//
// An input that begins with "p" is the public half's file, every other the private half's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/envelope.h"
#include "crypto/messages/open_message.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/key_home.h"
#include "tests/support/crypto/device_records.h"

using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

const KeyHome &device()
{
    static const KeyHome home;
    return home;
}

// Parsing a key and working with it takes a hundred times longer than reading its file.
constexpr size_t share = 32;

QJsonObject messageForThisDevice()
{
    static const QJsonObject message = sealed(u"a message"_s);
    return message;
}

// A byte order mark at the beginning is taken for what it is when the text is read again.
void checkWriting(const QString &text)
{
    QString error;
    const bool written = writePrivateKeyFile(text, &error);
    require(written == !text.trimmed().isEmpty(), "any text is written, unless it is blank");
    require(written || error == u"Private key is empty."_s, "a failure says why");
    require(!written || readFile(privateKeyPath()) == text.trimmed().toUtf8(),
            "the file holds the trimmed text");
    if (written)
        require(readPrivateKeyFile() == QString::fromUtf8(text.trimmed().toUtf8().trimmed()),
                "what is written is read again");
}

void checkOpening(const QString &text)
{
    const DecryptResult result = decryptMessage(messageForThisDevice(), u"alice"_s, own);
    require(result.ok == result.error.isEmpty(), "a message opens or says why not");
    require(result.text == (result.ok ? u"a message"_s : QString()), "what opens is what was sealed");
    require(result.ok || text != device().privateText, "the key opens what is for it");
}

void checkPrivateHalf(const QByteArray &content)
{
    require(writeFile(privateKeyPath(), content), "the file can be written");
    QString error;
    const QString text = readPrivateKeyFile(&error);
    require(error.isEmpty() && text == QString::fromUtf8(content.trimmed()), "the file is read, trimmed");
    if (mayPay(content, share))
        checkOpening(text);
    checkWriting(QString::fromUtf8(content));
}

void checkSealing(const QString &text)
{
    const EncryptedEnvelope envelope =
        encryptMessageEnvelope(u"text"_s, {tideloft::tests::device(own, text)}, {});
    require(envelope.ok == envelope.error.isEmpty(), "a text is sealed or it is said why not");
    require(envelope.ok || text != device().publicText, "the key seals");
}

void checkPublicHalf(const QByteArray &content)
{
    require(writeFile(publicKeyPath(), content), "the file can be written");
    QString error;
    const QString text = readPublicKeyFile(&error);
    require(error.isEmpty() && text == QString::fromUtf8(content.trimmed()), "the file is read, trimmed");
    if (mayPay(content, share))
        checkSealing(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    (void)device();
    const QByteArray input = rawInput(data, size);
    if (input.startsWith('p'))
        checkPublicHalf(input.sliced(1));
    else
        checkPrivateHalf(input);
    return 0;
}
