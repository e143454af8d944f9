// Reading of forms. Strict: where two readers could see different parts, the form is refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/multipart.h"

#include "service/http/delimiter_search.h"
#include "service/http/header_value.h"

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestBoundary = 70; // RFC 2046, section 5.1.1

struct FormPart {
    QByteArray name;
    QByteArrayView content; ///< inside the body of the request
};

[[noreturn]] void refuseBroken()
{
    throw Refusal(400, u"The form in the request is broken."_s);
}

void require(bool condition)
{
    if (!condition)
        refuseBroken();
}

bool isControlCharacter(char c)
{
    return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f;
}

bool isBoundaryCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || (c != '\0' && QByteArrayView("'()+_,-./:=? ").contains(c));
}

QByteArray boundaryOf(const Request &request)
{
    const std::optional<HeaderValue> type = parseHeaderValue(request.contentType);
    if (!type || type->value != "multipart/form-data")
        throw Refusal(415, u"The request must be a form (Content-Type multipart/form-data)."_s);
    const QByteArray boundary = type->parameters.value("boundary");
    if (boundary.isEmpty() || boundary.size() > longestBoundary || boundary.endsWith(' ')
        || !std::all_of(boundary.begin(), boundary.end(), &isBoundaryCharacter))
        throw Refusal(400, u"The form in the request has no valid boundary."_s);
    return boundary;
}

QByteArray nameFromDisposition(QByteArrayView value)
{
    const std::optional<HeaderValue> disposition = parseHeaderValue(value);
    require(disposition && disposition->value == "form-data");
    const QByteArray name = disposition->parameters.value("name");
    require(!name.isEmpty());
    return name;
}

QByteArray nameFromHeader(const QByteArray &header)
{
    QByteArray name;
    QByteArray rest = header + "\r\n";
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf("\r\n");
        const QByteArray line = rest.first(end);
        rest.remove(0, end + 2);
        const qsizetype colon = line.indexOf(':');
        require(colon > 0 && std::all_of(line.begin(), line.begin() + colon, &isTokenCharacter)
                && std::none_of(line.begin(), line.end(), &isControlCharacter));
        if (line.first(colon).compare("content-disposition", Qt::CaseInsensitive) != 0)
            continue;
        require(name.isEmpty()); // one name only
        name = nameFromDisposition(QByteArrayView(line).sliced(colon + 1));
    }
    require(!name.isEmpty());
    return name;
}

FormPart readPart(QByteArrayView part)
{
    const qsizetype end = part.first(std::min(part.size(), maximumPartHeader + 4)).indexOf("\r\n\r\n");
    require(end > 0);
    return {nameFromHeader(part.first(end).toByteArray()), part.sliced(end + 4)};
}

QByteArrayView withoutPadding(QByteArrayView text)
{
    while (!text.isEmpty() && (text.front() == ' ' || text.front() == '\t'))
        text = text.sliced(1);
    return text;
}

qsizetype placeOf(const QByteArray &delimiter, QByteArrayView text)
{
    const auto *const place = findDelimiter(text.begin(), text.end(), delimiter);
    require(place != text.end());
    return place - text.begin();
}

// What follows the first delimiter. A preamble may stand before the delimiter; it is not read.
QByteArrayView afterPreamble(QByteArrayView body, const QByteArray &delimiter)
{
    const QByteArrayView atBeginning = QByteArrayView(delimiter).sliced(2); // needs no line break before it
    if (body.startsWith(atBeginning))
        return body.sliced(atBeginning.size());
    return body.sliced(placeOf(delimiter, body) + delimiter.size());
}

QList<FormPart> readForm(QByteArrayView body, const QByteArray &boundary)
{
    const QByteArray delimiter = "\r\n--" + boundary;
    QByteArrayView rest = afterPreamble(body, delimiter);
    QList<FormPart> parts;
    while (!rest.startsWith("--")) {
        rest = withoutPadding(rest);
        require(rest.startsWith("\r\n") && parts.size() < maximumFormParts);
        rest = rest.sliced(2);
        const qsizetype end = placeOf(delimiter, rest);
        parts.append(readPart(rest.first(end)));
        rest = rest.sliced(end + delimiter.size());
    }
    const QByteArrayView epilogue = withoutPadding(rest.sliced(2));
    require(epilogue.isEmpty() || epilogue.startsWith("\r\n"));
    return parts;
}

} // namespace

QByteArray formField(const Request &request, QByteArrayView name)
{
    const QList<FormPart> parts = readForm(request.body, boundaryOf(request));
    const auto isWanted = [name](const FormPart &part) { return part.name == name; };
    const auto wanted = std::find_if(parts.begin(), parts.end(), isWanted);
    if (wanted == parts.end() || std::find_if(wanted + 1, parts.end(), isWanted) != parts.end())
        throw Refusal(400, u"The form must have the field \"%1\" once."_s.arg(QString::fromUtf8(name)));
    return wanted->content.toByteArray();
}

} // namespace tideloft::service
