// Randomness from libcrypto.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/secrets/random.h"

#include <openssl/rand.h>

#include <stdexcept>

namespace tideloft::service
{

QByteArray randomBytes(int count)
{
    QByteArray bytes(count, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char *>(bytes.data()), count) != 1)
        throw std::runtime_error("no random bytes");
    return bytes;
}

} // namespace tideloft::service
