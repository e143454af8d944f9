// Limits on attempts to sign in and to register, which are counted where all processes see them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/outcome.h"

namespace tideloft::service
{

enum class Attempted { SignInToAccount, SignInFromAddress, Registration };

struct CountedAttempt {
    Attempted what;
    QByteArray key; ///< the name or the address
};

/// Goes on with NEXT once the attempts are counted, one after the other, and answers with 429 as soon as one
/// of them is one too many. A file has one process, which counts in memory: no stranger makes it write. In a
/// shared database the processes count together.
Outcome onceCounted(ApiContext &context, Database &lookUp, const QList<CountedAttempt> &attempts,
                    const LookUp &next);

} // namespace tideloft::service
