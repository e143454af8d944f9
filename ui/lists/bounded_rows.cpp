// Cutting a history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/bounded_rows.h"

namespace tideloft::ui
{

QJsonArray newestItems(const QJsonArray &items)
{
    if (items.size() <= historyLimit)
        return items;
    QJsonArray newest;
    for (qsizetype i = items.size() - historyLimit; i < items.size(); ++i)
        newest.append(items.at(i));
    return newest;
}

} // namespace tideloft::ui
