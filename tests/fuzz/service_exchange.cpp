// Fuzzing of the service from bytes to response: parsing, routing, bodies, storage, and what is written back.
//
// An input is what one connection brings. The session "a" in it is one of a real user.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/http/translation.h"
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/require.h"
#include "tests/service/semaphore.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <sstream>

using namespace tideloft::service;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;
namespace http = boost::beast::http;
namespace asio = boost::asio;

namespace
{

/// All endpoints over a small database, whose quotas keep it small.
class Service
{
public:
    Service() : cookie(signUp(u"alice"_s)) { signUp(u"bob"_s); }

    Response answer(Request request)
    {
        if (request.cookie == "tideloft_session=a")
            request.cookie = cookie;
        return finished(api.handle(request));
    }

private:
    static ApiSettings settings()
    {
        ApiSettings small;
        small.scryptCost = {16, 8, 1};
        small.quota = {200, 1024 * 1024, 20};
        return small;
    }

    static Response finished(const Reply &reply)
    {
        if (const auto *response = std::get_if<Response>(&reply))
            return *response;
        Semaphore done;
        Response later;
        std::get<Later<Response>>(reply).start([&](Response response) {
            later = std::move(response);
            done.release();
        });
        done.acquire();
        return later;
    }

    QByteArray signUp(const QString &name)
    {
        const QByteArray user =
            QJsonDocument(QJsonObject{{u"username"_s, name}, {u"password"_s, u"a good password"_s}}).toJson();
        finished(api.handle({"POST", "/api/auth/register", "application/json", {}, user}));
        const Response signedIn =
            finished(api.handle({"POST", "/api/auth/login", "application/json", {}, user}));
        require(signedIn.status == 200, "a user can sign in");
        return signedIn.headers.constFirst().second.split(';').constFirst();
    }

    int count = 1;
    char program[5] = "fuzz";
    char *arguments[2] = {program, nullptr};
    const QCoreApplication application{count, arguments}; // the driver of the database is a plug-in
    const QTemporaryDir folder;
    Api api{{folder.filePath(u"fuzz.sqlite"_s)}, settings()};
    const QByteArray cookie;
};

std::string written(const Response &response, const RequestParser &parser)
{
    std::ostringstream text;
    text << toMessage(response, parser.get().version() == 10 ? 10 : 11, true);
    return text.str();
}

// What a client makes of the bytes is what was meant: no value has made a line of its own.
void checkReply(const std::string &bytes, const Response &response)
{
    http::response_parser<http::string_body> read;
    boost::system::error_code error;
    read.eager(true);
    read.body_limit(boost::none);
    std::size_t used = read.put(asio::buffer(bytes), error);
    require(!error && read.is_done() && used == bytes.size(), "one whole reply is written");
    require(read.get().result_int() == static_cast<unsigned>(response.status), "with its status");
    require(QByteArray::fromStdString(read.get().body()) == response.body, "with its body");
    for (const auto &field : read.get()) {
        for (const char c : field.value())
            require(static_cast<unsigned char>(c) >= 0x20, "headers hold no control characters");
    }
}

void checkMeaning(const Response &response)
{
    require(response.problem.isEmpty() && response.status != 500, "nothing fails inside");
    if (response.status < 400)
        return;
    const QString message = QJsonDocument::fromJson(response.body).object().value(u"message"_s).toString();
    require(!message.isEmpty() && message.size() < 1000, "a refusal says why");
}

// Reads a header, and then a body within the limits, as a connection does.
std::optional<Refusal> readRequest(RequestParser &parser, asio::const_buffer &input)
{
    const ServerLimits limits;
    parser.header_limit(limits.headerBytes);
    parser.body_limit(limits.bodyBytes);
    boost::system::error_code error;
    while (!error && !parser.is_done() && input.size() > 0) {
        const bool hadHeader = parser.is_header_done();
        input += parser.put(input, error);
        if (!error && !hadHeader && parser.is_header_done()) {
            if (std::optional<Refusal> failure = headerFailure(parser))
                return failure;
            parser.eager(true);
        }
    }
    if (!error && !parser.is_done())
        parser.put_eof(error);
    return error ? std::optional(parseFailure(error, false)) : std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Service service;
    asio::const_buffer input(data, size);
    for (int i = 0; i < 4 && input.size() > 0; ++i) {
        RequestParser parser;
        const std::optional<Refusal> refusal = readRequest(parser, input);
        Response response;
        if (refusal) {
            response = errorResponse(*refusal);
        } else {
            Request request = headOf(parser, {false, "fuzz", false});
            request.body = takeBody(parser);
            response = service.answer(std::move(request));
        }
        checkMeaning(response);
        checkReply(written(response, parser), response);
        if (refusal)
            break;
    }
    return 0;
}
