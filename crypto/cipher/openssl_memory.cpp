// All memory that OpenSSL gives back is overwritten first: it frees the encodings of private keys, on their
// way in and out, as they are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/openssl_memory.h"

#include "local_files/system.h"

#include <openssl/crypto.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

using tideloft::local_files::system::sizeOfBlock;

namespace
{

void *take(size_t size, const char *, int)
{
    return std::malloc(size);
}

void giveBack(void *memory, const char *, int)
{
    if (memory)
        OPENSSL_cleanse(memory, sizeOfBlock(memory));
    std::free(memory);
}

// The system's own would leave the old place as it was.
void *move(void *memory, size_t size, const char *, int)
{
    if (!memory || size == 0) {
        giveBack(memory, nullptr, 0);
        return size == 0 ? nullptr : std::malloc(size);
    }
    void *const moved = std::malloc(size);
    if (moved) {
        std::memcpy(moved, memory, std::min(size, sizeOfBlock(memory)));
        giveBack(memory, nullptr, 0);
    }
    return moved;
}

// Before main(): once OpenSSL has taken memory, it refuses.
[[maybe_unused]] const int chosen = CRYPTO_set_mem_functions(take, move, giveBack);

} // namespace

namespace tideloft::crypto
{

bool wipeWhatOpensslFrees()
{
    return chosen == 1;
}

} // namespace tideloft::crypto
