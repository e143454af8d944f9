// Wiping of secrets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/secret_bytes.h"

#include <openssl/crypto.h>

#include <algorithm>

namespace tideloft::crypto
{

template <typename Text> void Secret<Text>::wipe()
{
    // data() would detach from a sharing copy and wipe the duplicate, leaving the
    // secret where it was; constData() reaches the buffer that really holds it.
    const auto *begin = text.constData() - text.data_ptr().freeSpaceAtBegin();
    // A text that was shortened in place still has its old end behind its new one.
    const qsizetype size = std::max(text.size(), text.capacity());
    OPENSSL_cleanse(const_cast<void *>(static_cast<const void *>(begin)),
                    static_cast<size_t>(size) * sizeof(*begin));
    text.clear();
}

template class Secret<QByteArray>;
template class Secret<QString>;

} // namespace tideloft::crypto
