// Reading of JSON bodies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/json_body.h"

#include <QJsonDocument>

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

bool declaresJson(const QByteArray &contentType)
{
    return contentType.split(';').constFirst().trimmed().toLower() == "application/json";
}

} // namespace

int jsonDepth(const QByteArray &json)
{
    int depth = 0;
    int deepest = 0;
    bool inString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString && c == '\\')
            ++i;
        else if (c == '"')
            inString = !inString;
        else if (!inString && (c == '[' || c == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!inString && (c == ']' || c == '}'))
            --depth;
    }
    return deepest;
}

bool isSingleLine(const QString &text)
{
    return text.isValidUtf16() && std::none_of(text.begin(), text.end(), [](QChar c) {
               return c.category() == QChar::Other_Control;
           });
}

JsonBody::JsonBody(const Request &request)
{
    if (!declaresJson(request.contentType))
        throw Refusal(415, u"The request must be JSON (Content-Type application/json)."_s);
    if (jsonDepth(request.body) > maximumJsonDepth)
        throw Refusal(400, u"The JSON in the request is nested too deeply."_s);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(request.body, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        throw Refusal(400, u"The request must be one JSON object."_s);
    object = document.object();
}

QString JsonBody::text(const QString &name, qsizetype maximumLength) const
{
    const QJsonValue member = object.value(name);
    if (!member.isString())
        throw Refusal(400, u"The field \"%1\" must be a text."_s.arg(name));
    const QString text = member.toString();
    if (!text.isValidUtf16())
        throw Refusal(400, u"The field \"%1\" is not valid text."_s.arg(name));
    // A code point takes one or two units, so only a text between the two bounds has to be counted.
    if (text.size() > 2 * maximumLength
        || (text.size() > maximumLength && text.toUcs4().size() > maximumLength))
        throw Refusal(400,
                      u"The field \"%1\" must have at most %2 characters."_s.arg(name).arg(maximumLength));
    return text;
}

bool JsonBody::boolean(const QString &name, bool valueWhenMissing) const
{
    const QJsonValue member = object.value(name);
    if (!member.isBool() && !member.isUndefined())
        throw Refusal(400, u"The field \"%1\" must be true or false."_s.arg(name));
    return member.toBool(valueWhenMissing);
}

QJsonArray JsonBody::array(const QString &name) const
{
    const QJsonValue member = object.value(name);
    if (!member.isArray())
        throw Refusal(400, u"The field \"%1\" must be an array."_s.arg(name));
    return member.toArray();
}

} // namespace tideloft::service
