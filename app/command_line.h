// The options that the client answers by itself.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <span>

namespace tideloft::app
{

/// What `--help` or `--version` among ARGUMENTS prints, line end included; nothing for every other command
/// line, which is the toolkit's to read. Looked at before the application object exists, so that it needs no
/// display.
std::optional<QString> answerTo(std::span<char *const> arguments);

} // namespace tideloft::app
