// Messages as the client sends them, in both forms.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace tideloft::tests
{

inline QString base64(qsizetype size, char filling = 'k')
{
    return QString::fromLatin1(QByteArray(size, filling).toBase64());
}

inline QJsonObject wrappedKey(const QString &deviceId = QStringLiteral("d1"), qsizetype size = 256)
{
    return {{QStringLiteral("deviceId"), deviceId}, {QStringLiteral("encryptedKey"), base64(size)}};
}

inline QJsonObject sealedMessage(const QString &to, const QString &text = base64(40, 't'))
{
    return {{QStringLiteral("to"), to},
            {QStringLiteral("text"), text},
            {QStringLiteral("iv"), base64(12, 'i')},
            {QStringLiteral("encryptedKey"), QString()},
            {QStringLiteral("senderEncryptedKey"), QString()},
            {QStringLiteral("recipientKeys"), QJsonArray{wrappedKey()}},
            {QStringLiteral("senderKeys"), QJsonArray{wrappedKey(QStringLiteral("mine"))}},
            {QStringLiteral("algorithm"), QStringLiteral("AES-GCM")},
            {QStringLiteral("encrypted"), 1}};
}

/// A sealed message whose nonce begins with WHO and ends with NUMBER, so that no two are alike.
inline QJsonObject numberedMessage(const QString &to, int number, char who = '0')
{
    QJsonObject message = sealedMessage(to);
    const QByteArray nonce = who + QByteArray::number(number).rightJustified(11, '0');
    message.insert(QStringLiteral("iv"), QString::fromLatin1(nonce.toBase64()));
    return message;
}

/// As Base64.
inline QByteArray nonceOf(const QJsonValue &message)
{
    return message[QStringLiteral("iv")].toString().toLatin1();
}

inline QByteArrayList noncesOf(const QJsonArray &messages)
{
    QByteArrayList all;
    for (const QJsonValue &message : messages)
        all << nonceOf(message);
    return all;
}

inline QJsonObject plainMessage(const QString &to, const QString &text)
{
    return {{QStringLiteral("to"), to},
            {QStringLiteral("text"), text},
            {QStringLiteral("iv"), QString()},
            {QStringLiteral("encryptedKey"), QString()},
            {QStringLiteral("senderEncryptedKey"), QString()},
            {QStringLiteral("recipientKeys"), QJsonArray()},
            {QStringLiteral("senderKeys"), QJsonArray()},
            {QStringLiteral("algorithm"), QStringLiteral("plain")},
            {QStringLiteral("encrypted"), 0}};
}

} // namespace tideloft::tests
