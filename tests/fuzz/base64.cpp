// Fuzzing of Base64: what comes out of any text, beside a decoder of our own, and back again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/require.h"

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

int sextet(char character)
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const size_t place = alphabet.find(character);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

// Everything outside the alphabet is skipped, padding too; bits that fill no byte are dropped.
QByteArray decoded(const QByteArray &text)
{
    QByteArray bytes;
    quint32 bits = 0;
    int count = 0;
    for (const char character : text) {
        const int value = sextet(character);
        if (value < 0)
            continue;
        bits = (bits << 6 | static_cast<quint32>(value)) & 0xffff;
        count += 6;
        if (count < 8)
            continue;
        count -= 8;
        bytes.append(static_cast<char>(bits >> count & 0xff));
    }
    return bytes;
}

void checkDecoding(const QString &text)
{
    QString error;
    const QByteArray bytes = fromBase64Text(text, &error);
    const QByteArray encoded = text.trimmed().toUtf8();
    require(bytes == decoded(encoded), "both decoders agree");
    require(error.isEmpty() || error == u"Invalid base64 data."_s, "the error has its text");
    require(error.isEmpty() == (!bytes.isEmpty() || encoded.isEmpty()), "no byte out of a text is an error");
    require(fromBase64Text(u" \n"_s + toBase64Text(bytes) + u'\t') == bytes,
            "what was decoded encodes again");
}

void checkEncoding(const QByteArray &bytes)
{
    const QString text = toBase64Text(bytes);
    require(text.size() == (bytes.size() + 2) / 3 * 4, "four characters for three bytes");
    require(fromBase64Text(text) == bytes, "what was encoded decodes again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = rawInput(data, size);
    checkEncoding(bytes);
    checkDecoding(QString::fromUtf8(bytes));
    // As UTF-16 there are lone surrogates too.
    checkDecoding(QString(reinterpret_cast<const QChar *>(QByteArray(bytes).append('\0').constData()),
                          bytes.size() / 2));
    return 0;
}
