// All endpoints of the service over one database.
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
    /// `database` must outlive the object.
    Api(Database &database, ApiSettings settings);
    Q_DISABLE_COPY_MOVE(Api)

    Reply handle(const Request &request) const { return router.handle(request); }

    /// How large a body the request may bring that begins like this: a picture only where one belongs, and
    /// from somebody who is not signed in no more than signing in takes. Never throws.
    Admission admit(const Request &head);

private:
    ApiContext context;
    Router router;
};

} // namespace tideloft::service
