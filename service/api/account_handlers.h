// Creating an account, signing in and signing out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// POST /api/auth/register, /api/auth/login and /api/auth/logout. CONTEXT must outlive the router.
void addAccountRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
