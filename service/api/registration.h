// Who may make an account.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::service
{

/// Everybody, those whose user name was invited, or nobody.
enum class Registration { Open, Invite, Closed };

} // namespace tideloft::service
