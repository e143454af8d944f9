// OpenSSL's memory, which holds private keys for a moment.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::crypto
{

/// A program that links this has OpenSSL overwrite all that it frees, from before main() on. False if that
/// came too late because some other library had used OpenSSL already.
bool wipeWhatOpensslFrees();

} // namespace tideloft::crypto
