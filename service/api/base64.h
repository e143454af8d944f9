// Strict Base64 (RFC 4648, section 4): what one reader accepts, every reader must understand.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::service
{

/// The bytes of a padded Base64 text; empty when it is empty or holds anything else.
inline QByteArray decodeBase64(const QString &text)
{
    const QByteArray base64 = text.toUtf8();
    const auto result = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    return result && base64.size() % 4 == 0 ? result.decoded : QByteArray();
}

} // namespace tideloft::service
