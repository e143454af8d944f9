// Sending messages, and reading them back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

/// GET /api/chat/conversations, GET /api/chat/history/{peer} and POST /api/chat/send. CONTEXT must outlive
/// the router.
void addChatRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
