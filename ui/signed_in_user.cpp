// Reading the profile reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/signed_in_user.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

bool SignedInUser::signIn(const QJsonObject &me)
{
    myUsername = me.value(u"username"_s).toString().trimmed().toLower();
    return std::exchange(latest, myUsername) == myUsername;
}

} // namespace tideloft::ui
