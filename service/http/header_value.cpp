// Reading of header values, strictly from left to right.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/header_value.h"

namespace tideloft::service
{

namespace
{

class Reader
{
public:
    explicit Reader(QByteArrayView text) : rest(text) {}

    bool atEnd() const { return rest.isEmpty(); }
    bool take(char c);
    void skipBlanks();
    QByteArray takeWhile(bool (*belongs)(char));
    std::optional<QByteArray> takeQuoted();

private:
    QByteArrayView rest;
};

bool Reader::take(char c)
{
    const bool there = !rest.isEmpty() && rest.front() == c;
    if (there)
        rest = rest.sliced(1);
    return there;
}

void Reader::skipBlanks()
{
    while (take(' ') || take('\t')) {
    }
}

QByteArray Reader::takeWhile(bool (*belongs)(char))
{
    qsizetype length = 0;
    while (length < rest.size() && belongs(rest[length]))
        ++length;
    const QByteArray taken = rest.first(length).toByteArray();
    rest = rest.sliced(length);
    return taken;
}

// What stands between two quotation marks; a backslash stands before a character that is meant as itself.
std::optional<QByteArray> Reader::takeQuoted()
{
    QByteArray text;
    while (!take('"')) {
        take('\\');
        if (rest.isEmpty())
            return std::nullopt;
        text += rest.front();
        rest = rest.sliced(1);
    }
    return text;
}

bool isValueCharacter(char c)
{
    return isTokenCharacter(c) || c == '/';
}

std::optional<QByteArray> takeParameterValue(Reader &reader)
{
    if (reader.take('"'))
        return reader.takeQuoted();
    const QByteArray token = reader.takeWhile(&isTokenCharacter);
    return token.isEmpty() ? std::nullopt : std::optional(token);
}

} // namespace

bool isTokenCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || (c != '\0' && QByteArrayView("!#$%&'*+-.^_`|~").contains(c));
}

std::optional<HeaderValue> parseHeaderValue(QByteArrayView text)
{
    Reader reader(text);
    reader.skipBlanks();
    HeaderValue header{reader.takeWhile(&isValueCharacter).toLower(), {}};
    reader.skipBlanks();
    while (reader.take(';')) {
        reader.skipBlanks();
        const QByteArray name = reader.takeWhile(&isTokenCharacter).toLower();
        if (name.isEmpty())
            continue; // a semicolon too many is allowed
        if (!reader.take('=') || header.parameters.contains(name))
            return std::nullopt;
        const std::optional<QByteArray> value = takeParameterValue(reader);
        if (!value)
            return std::nullopt;
        header.parameters.insert(name, *value);
        reader.skipBlanks();
    }
    return reader.atEnd() ? std::optional(header) : std::nullopt;
}

} // namespace tideloft::service
