// Who is signed in: a random value in a cookie, of which only the hash is stored.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/outcome.h"
#include "service/store/users.h"

#include <optional>

namespace tideloft::service
{

/// A random token that cannot be guessed. It is made before the change that begins the session, so a change
/// that runs twice begins one session.
QByteArray newSessionToken();

/// Begins a session and returns the Set-Cookie value that carries its token. A remembered session lasts 30
/// days; any other lasts 24 hours and its cookie ends with the client. Sessions that have run out are deleted
/// on the way.
QByteArray beginSession(const ApiContext &context, Database &database, const User &user,
                        const QByteArray &token, bool remember);

/// False for a request that cannot have a session, whatever is stored.
bool carriesSession(const Request &request);

/// The user whose session the request carries; nobody when it carries none or an old one.
std::optional<User> sessionUser(ApiContext &context, Database &database, const Request &request);

/// The same from the cache alone: nobody when the session is not there.
std::optional<User> cachedUser(const ApiContext &context, const Request &request);

/// Ends the session of the request and returns the Set-Cookie value that removes its cookie.
QByteArray endSession(const ApiContext &context, Database &database, const Request &request);

/// The refusal of a request that needs a session and has none.
Refusal signInFirst();

/// Who looks, while something is stored for a user, whether the account is active still.
enum class StateCheck { BeforeChange, ByChange };

/// Lets signed-in users through and answers everybody else with 401.
Handler forSignedIn(ApiContext &context, UserHandler handler, StateCheck check = StateCheck::BeforeChange);

} // namespace tideloft::service
