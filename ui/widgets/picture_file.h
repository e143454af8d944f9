// Choosing a picture file, and what is wrong with one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <optional>

namespace tideloft::ui
{

/// The file dialogs' filter.
QString pictureFilter(Language language);

/// Why the file at PATH cannot be a profile picture, in the order in which it is looked at: it cannot be
/// opened, it is larger than 5 MiB (5242880 bytes), or its name's suffix is none of the known ones. Nothing
/// if it can. The contents are not read.
std::optional<LocalizedText> problemWithPicture(const QString &path);

} // namespace tideloft::ui
