// The own profile, and finding other users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// GET /api/me, POST /api/profile/update and GET /api/users/search. CONTEXT must outlive the router.
void addProfileRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
