// Passwords are kept as scrypt hashes (RFC 7914) that carry their own parameters.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace tideloft::service
{

/// What one guess costs. The default needs 32 MiB and about a quarter of a second.
struct ScryptCost {
    std::uint64_t n = 1U << 15U;
    std::uint64_t r = 8;
    std::uint64_t p = 3;
};

/// "scrypt$N$r$p$salt$key" with a fresh salt of 16 bytes and a key of 32, both in Base64. Slow, and safe to
/// call from any thread. Throws std::runtime_error when there is no memory or no randomness.
QByteArray hashPassword(const QString &password, const ScryptCost &cost);

/// Slow. Compares in constant time. An unreadable hash matches no password.
bool passwordMatches(const QString &password, const QByteArray &hash);

/// A hash that no password matches but that costs as much to compare with: for users who do not exist.
QByteArray unmatchableHash(const ScryptCost &cost);

} // namespace tideloft::service
