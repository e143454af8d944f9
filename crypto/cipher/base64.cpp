// Base64 over the toolkit's encoder and its lenient decoder.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"

#include "crypto/cipher/failure.h"
#include "crypto/cipher/secret_bytes.h"

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

// Private keys are converted here too, in both directions: what is between text and bytes is wiped.
QString toBase64Text(const QByteArray &bytes)
{
    const SecretBytes encoded(bytes.toBase64());
    return QString::fromLatin1(encoded.view());
}

QByteArray fromBase64Text(const QString &text, QString *error)
{
    const SecretBytes encoded(QStringView(text).trimmed().toUtf8());
    QByteArray bytes = QByteArray::fromBase64(encoded.view());
    // The lenient decoder reports no error. Only a result without a byte shows that the text is no Base64.
    if (bytes.isEmpty() && !encoded.isEmpty())
        return fail(error, u"Invalid base64 data."_s);
    return bytes;
}

} // namespace tideloft::crypto
