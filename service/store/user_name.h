// What a user name looks like, and when two spellings mean the same user.
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

} // namespace tideloft::service
