// Failures that OpenSSL explains.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/failure.h"

#include "crypto/cipher/openssl_error.h"

namespace tideloft::crypto
{

Failure failOpenssl(QString *error, const QString &message)
{
    // Taken from the queue even if ERROR is null: a queued error would explain the wrong failure later.
    const QString reason = opensslErrorText();
    return fail(error, message.arg(reason));
}

} // namespace tideloft::crypto
