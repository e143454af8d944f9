// All endpoints of the service, with the threads that they need, over one database.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"

namespace tideloft::service
{

class Api
{
public:
    /// Opens the database. Throws StorageError.
    Api(const StoreSettings &store, const ApiSettings &settings);
    Q_DISABLE_COPY_MOVE(Api)

    /// Waits for what is under way.
    ~Api();

    Reply handle(const Request &request) const { return router.handle(request); }

    /// "METHOD pattern" of each.
    QByteArrayList endpoints() const { return router.endpoints(); }

    /// How large a body the request with this HEAD may bring. Pictures may be sent only to the endpoints for
    /// pictures, and a client that is not signed in may send no more than a sign-in needs. Never throws.
    Admitted admit(const Request &head);

    /// How many tasks wait. From any thread.
    struct Queues {
        std::size_t reads;
        std::size_t writes;
        std::size_t hashes;
    };
    Queues queues() const;

    /// Counts the sessions that have not run out; DONE gets nothing when the database does not tell. False,
    /// and DONE never called, when too much waits already. From any thread.
    bool countSessions(const std::function<void(std::optional<qint64>)> &done);

private:
    ApiContext context;
    Router router;
};

} // namespace tideloft::service
