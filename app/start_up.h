// From the process arguments to the event loop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QSettings;

namespace tideloft::app
{

/// The language index of the stored setting, or of the answer to the first start's question; nothing if the
/// question was left without an answer.
std::optional<int> settleLanguage(const QSettings &settings);

/// Runs the client and returns the process's exit code.
int run(int argc, char **argv);

} // namespace tideloft::app
