// From the service's search items to names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/found_user_names.h"

#include "crypto/messages/trimmed_member.h"
#include "ui/lists/bounded_rows.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QStringList foundUserNames(const QJsonArray &users)
{
    QStringList names;
    for (const QJsonValue &value : users) {
        const QString name = crypto::trimmedMember(value.toObject(), u"username"_s);
        if (!name.isEmpty() && names.size() < foundUsersLimit)
            names.append(name);
    }
    return names;
}

} // namespace tideloft::ui
