// What OpenSSL says about its latest failure.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::crypto
{

/// Takes the earliest error from this thread's queue and returns its text; later errors stay queued.
/// Without one the text is "Unknown OpenSSL error".
QString opensslErrorText();

} // namespace tideloft::crypto
