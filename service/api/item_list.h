// A reply that grows item by item, within bounds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/byte_budget.h"
#include "service/http/exchange.h"

namespace tideloft::service
{

class ItemList
{
public:
    /// Takes the memory of the reply from BUDGET for this account, as the reply grows.
    ItemList(ByteBudget &budget, std::int64_t account) : share(budget.take(account, 0)) {}

    /// False, and nothing added, when the reply would become too large. Throws a Refusal with status 503 when
    /// there is no memory left for it now.
    bool add(QByteArray item);

    /// To be called once: a JSON array of the items.
    Response response();
    Response reversedResponse(); ///< the last item first

private:
    ByteBudget::Share share;
    QList<QByteArray> items;
    qsizetype bytes = 0;
};

} // namespace tideloft::service
