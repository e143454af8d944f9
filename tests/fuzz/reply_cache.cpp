// Fuzzing of arrays that are read again and again: parsing only what changed gives what parsing all would.
//
// The bytes 0x1e of an input stand between one body and the next.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_cache.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/require.h"

using namespace tideloft::net;
using namespace tideloft::tests;

namespace
{

void checkBody(ReplyCache &repeated, const QByteArray &body)
{
    const QJsonDocument whole = QJsonDocument::fromJson(body);
    const QJsonDocument read = repeated.read(body);
    require(read == whole && read.isNull() == whole.isNull(), "what is shared changes nothing");
    require(read.isArray() == whole.isArray(), "an array stays one");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Deep copies: a body is gone when the next one is compared with it.
    const QList<QByteArray> bodies =
        QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\x1e');
    ReplyCache repeated;
    for (const QByteArray &body : bodies)
        checkBody(repeated, body);
    const qsizetype parsed = repeated.parsedElements();
    checkBody(repeated, bodies.last());
    // An empty array has nothing to parse, and one behind white space is parsed as a whole.
    const bool isSplit =
        bodies.last().startsWith('[') && !QJsonDocument::fromJson(bodies.last()).array().isEmpty();
    require(repeated.parsedElements() == parsed || !isSplit, "the same body is not parsed again");
    return 0;
}
