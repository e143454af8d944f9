// Which texts may be user names and passwords, and when two spellings of a name mean the same user.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace tideloft::service
{

/// The name as it is stored: trimmed and in lower case. Nothing when what is left is no name: 3 to 32 of
/// [a-z0-9._-], and not only dots, which would vanish from the path of an address.
std::optional<QString> normalizedUserName(const QString &text);

/// How many characters of a name are read before it is trimmed.
constexpr qsizetype longestTypedName = 256;

/// What people are told who chose another name.
QString userNameRule();

/// How many characters a password has.
constexpr qsizetype shortestPassword = 8;
constexpr qsizetype longestPassword = 256;
bool isPasswordLength(const QString &password);

/// What people are told who chose a shorter one.
QString passwordRule();

} // namespace tideloft::service
