// The rules for user names and passwords.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/account_rules.h"

#include <QList>

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

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

QString userNameRule()
{
    return u"A user name has 3 to 32 letters a-z, digits, dots, hyphens or underscores, and not only dots."_s;
}

bool isPasswordLength(const QString &password)
{
    const qsizetype length = password.toUcs4().size();
    return length >= shortestPassword && length <= longestPassword;
}

QString passwordRule()
{
    return u"A password must have at least 8 characters."_s;
}

} // namespace tideloft::service
