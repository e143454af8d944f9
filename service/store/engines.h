// The engines that there are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/engine.h"

#include <memory>

namespace tideloft::service
{

/// The engine of a place: `postgresql://…`, `sqlite:FILE` or FILE. Throws StorageError when the place has no
/// such form.
std::unique_ptr<Engine> engineFor(const QString &place);

} // namespace tideloft::service
