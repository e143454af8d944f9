// The floor under all opening of messages: the RSA that no client can do without.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::bench
{

/// Milliseconds of processor time that libcrypto alone takes for COUNT unwraps with a key of 2,048 bits.
double rawUnwraps(int count);

} // namespace tideloft::bench
