// Base64 as text: the form in which keys, nonces and ciphertexts are stored and sent (RFC 4648, section 4).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// Standard alphabet, "=" padding, no line breaks.
QString toBase64Text(const QByteArray &bytes);

/// Decodes leniently: characters outside the alphabet are skipped, padding is optional. Blank text gives no
/// bytes and no error; other text that yields no byte at all is an error.
QByteArray fromBase64Text(const QString &text, QString *error = nullptr);

} // namespace tideloft::crypto
