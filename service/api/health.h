// Whether the service can do its work.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// GET /healthz: 200 while the database can be written; 503 and the reason when it cannot, or when it has not
/// answered within a second. CONTEXT must outlive the router.
void addHealthRoute(Router &router, ApiContext &context);

} // namespace tideloft::service
