// Unpredictable bytes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::service
{

/// Throws std::runtime_error when the system has no randomness to give.
QByteArray randomBytes(int count);

} // namespace tideloft::service
