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

    /// How large a body the request may bring that begins like this: a picture only where one belongs, and
    /// from somebody who is not signed in no more than signing in takes. Never throws.
    Admitted admit(const Request &head);

private:
    ApiContext context;
    Router router;
};

} // namespace tideloft::service
