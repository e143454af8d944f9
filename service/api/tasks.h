// How a handler's work is handed from thread to thread.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/outcome.h"

namespace tideloft::service
{

/// A reply that begins with a look into the database, when it is PEER's turn. Whatever is thrown on the way
/// becomes a reply too.
Later<Response> answerAfter(ApiContext &context, const QByteArray &peer, LookUp lookUp);

/// What an exception means to the client: a Refusal says it, everything else is the service's own failure.
Response failureResponse(const std::exception_ptr &failure);

} // namespace tideloft::service
