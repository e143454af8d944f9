// What stands for settings that nobody has made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/server_settings.h"

namespace tideloft::service
{

std::shared_ptr<ByteBudget> transferBudget(const ServerLimits &limits)
{
    return std::make_shared<ByteBudget>(limits.transferBytes, limits.accountTransferBytes);
}

Response plainRefusal(const Refusal &refusal)
{
    return refusalResponse(refusal, "text/plain; charset=utf-8", refusal.message.toUtf8());
}

} // namespace tideloft::service
