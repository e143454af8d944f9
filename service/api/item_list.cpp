// Counting the bytes of a reply before they are there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/item_list.h"

#include "service/api/json_reply.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

constexpr auto mostBytes = static_cast<qsizetype>(usualAccountBytes);
constexpr auto countedLater = static_cast<qsizetype>(mostCountedByAddress); // when it is sent
// Memory is set aside in pieces of this size. The unused rest of a reply's last piece stays set aside until
// the reply is sent. Slow readers may hold hundreds of replies, so the pieces are small.
constexpr qsizetype step = qsizetype{16} * 1024;

} // namespace

bool ItemList::add(QByteArray item)
{
    const qsizetype size = bytes + item.size() + 1; // with its comma
    if (size > mostBytes)
        return false;
    if (size > countedLater && !share.grow(static_cast<std::uint64_t>((size / step + 1) * step)))
        throw tooBusy();
    bytes = size;
    items.append(std::move(item));
    return true;
}

Response ItemList::response()
{
    QByteArray body;
    body.reserve(bytes + 2);
    body += '[';
    for (QByteArray &item : items) {
        if (body.size() > 1)
            body += ',';
        body += item;
        item = {}; // so that only one copy is held
    }
    Response response = jsonTextResponse(body += ']');
    if (bytes > countedLater)
        response.memory = std::make_shared<ByteBudget::Share>(std::move(share));
    return response;
}

Response ItemList::reversedResponse()
{
    std::reverse(items.begin(), items.end());
    return response();
}

} // namespace tideloft::service
