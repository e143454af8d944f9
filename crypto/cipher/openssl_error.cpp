// Reading OpenSSL's error queue.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/openssl_error.h"

#include <openssl/err.h>

#include <array>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

QString opensslErrorText()
{
    const unsigned long code = ERR_get_error();
    if (code == 0)
        return u"Unknown OpenSSL error"_s;
    std::array<char, 256> text{};
    ERR_error_string_n(code, text.data(), text.size());
    const auto size = static_cast<qsizetype>(qstrnlen(text.data(), text.size()));
    return QString::fromUtf8(text.data(), size);
}

} // namespace tideloft::crypto
