// Splitting of an array's text, and reuse of what has been parsed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_cache.h"

#include <QJsonArray>

#include <cstring>
#include <optional>
#include <utility>

namespace tideloft::net
{

namespace
{

bool isWhiteSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

// The first character after the text that begins, with its quotation mark, at POSITION.
const char *afterText(const char *position, const char *end)
{
    for (++position; position != end; ++position) {
        position = static_cast<const char *>(std::memchr(position, '"', size_t(end - position)));
        if (!position)
            return end;
        const char *escape = position;
        while (*(escape - 1) == '\\')
            --escape;
        if ((position - escape) % 2 == 0)
            return position + 1;
    }
    return end;
}

// What stands between the outermost brackets and commas. What is no array there is left to the parser, and so
// is the question whether the parts are JSON.
QList<QByteArrayView> split(QByteArrayView body)
{
    while (!body.isEmpty() && isWhiteSpace(body.back()))
        body.chop(1);
    if (body.size() < 2 || body.front() != '[' || body.back() != ']')
        return {};
    QList<QByteArrayView> parts;
    const char *end = body.end() - 1;
    const char *begin = body.begin() + 1;
    int depth = 0;
    for (const char *at = begin; at != end;) {
        const char character = *at;
        if (character == '"') {
            at = afterText(at, end);
            continue;
        }
        if (character == ',' && depth == 0) {
            parts.append(QByteArrayView(begin, at));
            begin = at + 1;
        }
        depth += (character == '{' || character == '[') - (character == '}' || character == ']');
        ++at;
    }
    parts.append(QByteArrayView(begin, end));
    return parts;
}

// Parsed inside of brackets, as deep as it stands in its array: the parser's limit holds for both alike.
std::optional<QJsonValue> parsePart(QByteArrayView part)
{
    QByteArray bracketed;
    bracketed.reserve(part.size() + 2);
    bracketed.append('[').append(part).append(']');
    const QJsonArray array = QJsonDocument::fromJson(bracketed).array();
    return array.size() == 1 ? std::optional(array.first()) : std::nullopt;
}

struct Ends {
    qsizetype front = 0;
    qsizetype back = 0;
};

// How many parts are the same, counted from both ends.
Ends sameParts(const QList<QByteArrayView> &before, const QList<QByteArrayView> &now)
{
    const qsizetype most = qMin(before.size(), now.size());
    Ends same;
    while (same.front < most && before[same.front] == now[same.front])
        ++same.front;
    while (same.front + same.back < most
           && before[before.size() - 1 - same.back] == now[now.size() - 1 - same.back])
        ++same.back;
    return same;
}

} // namespace

void ReplyCache::clear()
{
    bodyBefore.clear();
    partsBefore.clear();
    documentBefore = {};
}

QJsonDocument ReplyCache::parseWhole(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    parsed += document.array().size();
    return document;
}

// An array is its parts and the commas between them: it is JSON if, and only if, every part is one value.
QJsonDocument ReplyCache::parse(const QByteArray &body, const QList<QByteArrayView> &parts)
{
    const QJsonArray before = documentBefore.array();
    const Ends same = sameParts(partsBefore, parts);
    if (same.front + same.back == 0)
        return parseWhole(body);
    QJsonArray array;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const qsizetype old = i < same.front ? i : before.size() - parts.size() + i;
        if (i < same.front || i >= parts.size() - same.back) {
            array.append(before.at(old));
            continue;
        }
        const auto value = parsePart(parts[i]);
        if (!value)
            return parseWhole(body);
        ++parsed;
        array.append(*value);
    }
    return QJsonDocument(array);
}

QJsonDocument ReplyCache::read(const QByteArray &body)
{
    if (!partsBefore.isEmpty() && body == bodyBefore)
        return documentBefore;
    const QList<QByteArrayView> parts = split(body);
    const QJsonDocument document = parse(body, parts);
    if (document.array().size() != parts.size() || parts.isEmpty()) {
        clear();
        return document;
    }
    documentBefore = document;
    partsBefore = parts;
    bodyBefore = body;
    return document;
}

} // namespace tideloft::net
