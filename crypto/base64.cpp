// Base64 over the toolkit's encoder and its lenient decoder.
#include "crypto/base64.h"

#include "crypto/failure.h"

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

QString toBase64Text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray fromBase64Text(const QString &text, QString *error)
{
    const QByteArray encoded = text.trimmed().toUtf8();
    QByteArray bytes = QByteArray::fromBase64(encoded);
    // The lenient decoder reports nothing; that it found not one byte is the only sign of foreign text.
    if (bytes.isEmpty() && !encoded.isEmpty())
        return fail(error, u"Invalid base64 data."_s);
    return bytes;
}

} // namespace tideloft::crypto
