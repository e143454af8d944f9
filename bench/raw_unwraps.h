// The floor under all opening of messages: the RSA that no client can do without.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/openssl_ptr.h"

#include <array>

namespace tideloft::bench
{

/// Unwraps one content key again and again, with a key of 2,048 bits and a context that are kept: no program
/// could do better.
class RawUnwraps
{
public:
    RawUnwraps();

    void run(int count);

private:
    using Bytes = std::array<unsigned char, 256>;

    crypto::OpenSslPtr<EVP_PKEY> key;
    crypto::OpenSslPtr<EVP_PKEY_CTX> context;
    Bytes wrapped{};
};

} // namespace tideloft::bench
