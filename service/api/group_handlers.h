// Groups: making and listing them, and their icons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// GET and POST /api/groups, GET /api/groups/{id} and POST /api/groups/{id}/icon. CONTEXT must outlive the
/// router.
void addGroupRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
