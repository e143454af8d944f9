// The rule for user names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/user_name.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

bool mayStandInName(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'.' || c == u'_' || c == u'-';
}

} // namespace

std::optional<QString> normalizedUserName(const QString &text)
{
    const QString name = text.trimmed().toLower();
    if (name.size() < 3 || name.size() > 32 || !std::all_of(name.begin(), name.end(), mayStandInName)
        || name.count(u'.') == name.size())
        return std::nullopt;
    return name;
}

} // namespace tideloft::service
