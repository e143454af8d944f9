// Two replies of a list, one after the other, out of the bytes of one input.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fuzz/json_input.h"
#include "tests/support/local_zone.h"
#include "ui/texts/text.h"

#include <QDateTime>

namespace tideloft::tests
{

struct TwoReplies {
    QJsonArray before;
    QJsonArray after;
    ui::Language language = ui::Language::English;
};

/// An object with `before`, `after` and `swedish`, or one array: what came after nothing.
inline TwoReplies twoReplies(const uint8_t *data, size_t size)
{
    const QJsonDocument document = jsonInput(data, size);
    if (document.isArray())
        return {{}, document.array(), ui::Language::English};
    const QJsonObject both = document.object();
    const bool swedish = both.value(QStringLiteral("swedish")).toBool();
    return {both.value(QStringLiteral("before")).toArray(), both.value(QStringLiteral("after")).toArray(),
            swedish ? ui::Language::Swedish : ui::Language::English};
}

/// The moment at which both are shown, in a zone that has summer time.
inline QDateTime shownAt()
{
    [[maybe_unused]] static const bool zoneIsSet = (setLocalZone(stockholm), true);
    return {QDate(2026, 3, 29), QTime(3, 30)};
}

/// Instead of opening an envelope: its nonce, so that the input decides what comes out.
inline QString openedText(const QJsonObject &item)
{
    return item.value(QStringLiteral("iv")).toString();
}

} // namespace tideloft::tests
