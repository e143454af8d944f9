// Messages as the client sends them, in both forms.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

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
