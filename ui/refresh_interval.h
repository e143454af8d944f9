// How often the client asks the service for the conversations and the open history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::ui
{

inline constexpr int refreshInterval = 3'000; ///< ms

} // namespace tideloft::ui
