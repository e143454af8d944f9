// Byte arrays as OpenSSL wants to see them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::crypto
{

/// Never null, not even for a null array: OpenSSL takes a null pointer for a question about the length or, in
/// GCM, for additional data.
inline const unsigned char *readable(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

/// As readable(), for output.
inline unsigned char *writable(QByteArray &bytes)
{
    return reinterpret_cast<unsigned char *>(bytes.data());
}

} // namespace tideloft::crypto
