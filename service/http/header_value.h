// Header values that carry parameters: Content-Type, Content-Disposition.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>

#include <optional>

namespace tideloft::service
{

struct HeaderValue {
    QByteArray value;                        ///< in lower case: "multipart/form-data"
    QMap<QByteArray, QByteArray> parameters; ///< names in lower case; values unquoted, else as sent
};

/// True for the characters that names of headers and parameters are made of (RFC 9110, section 5.6.2).
bool isTokenCharacter(char c);

/// Reads a value and its parameters (RFC 9110, section 5.6.6). Nothing when anything else stands there, a
/// quotation does not end, or a parameter stands twice: two readers might take a different one.
std::optional<HeaderValue> parseHeaderValue(QByteArrayView text);

} // namespace tideloft::service
