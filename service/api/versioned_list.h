// Lists that clients ask for again and again: what has not changed is neither built nor sent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/outcome.h"
#include "service/api/router.h"

namespace tideloft::service
{

struct VersionedList {
    /// Which list the request is about, as its version is kept in memory.
    std::function<QString(const Request &)> subject;
    std::function<qint64(Database &, const Request &, const User &)> version;
    std::function<Response(Database &, const Request &, const User &)> content;
    int most = 0; ///< of how many items it gives
};

/// Gives the list with its entity tag. Where the request names that tag the reply is 304; while session and
/// version are in memory, it costs no look into the database. CONTEXT must outlive the handler.
Handler forUnchanged(ApiContext &context, const VersionedList &list);

} // namespace tideloft::service
