// Device keys: publishing the own one, and reading one's own and other users'.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// POST /api/chat/device-key, GET /api/chat/device-keys/me and GET /api/chat/public-key/{username}. CONTEXT
/// must outlive the router.
void addKeyRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
