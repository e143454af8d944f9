// What passes between the HTTP server and the handlers: plain values, so that tests need no socket.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace tideloft::service
{

/// One request, complete and within the limits.
struct Request {
    QByteArray method;      ///< as sent: "GET", "POST"
    QByteArray target;      ///< path and query as sent, still percent-encoded; begins with "/"
    QByteArray contentType; ///< empty when the client sent none
    QByteArray cookie;      ///< the Cookie header's value
    QByteArray body;
    QByteArray peer = {};         ///< the client's address, as far as one person has it: see peerOf()
    QByteArray ifNoneMatch = {};  ///< the If-None-Match header's value
    QStringList parameters = {};  ///< what stood in the pattern's placeholders, decoded; filled by the router
    bool fromForeignPage = false; ///< a browser sent it for a page that this service did not give out
};

/// What cannot be done as asked: an error reply with this status and text. Handlers throw it.
class Refusal : public std::exception
{
public:
    Refusal(int httpStatus, QString text) : Refusal(httpStatus, std::move(text), httpStatus == 503 ? 1 : 0) {}
    Refusal(int httpStatus, QString text, int secondsToWait)
        : status(httpStatus),
          message(std::move(text)),
          retryAfter(secondsToWait)
    {
    }
    const char *what() const noexcept override { return "request refused"; }

    int status;
    QString message;
    int retryAfter; ///< seconds after which it may be asked again; 0 where that is not said
};

Refusal tooBusy(); ///< while there is too much to do at once

/// How large the body of a request may be: see ServerLimits.
enum class BodySize { Small, Usual, Upload };

/// What the head of a request tells about its body.
struct Admission {
    BodySize bodySize = BodySize::Usual;
    std::int64_t account = 0; ///< whose share of the memory it takes; 0 for everybody who is nobody
    std::optional<Refusal> whenTooLarge = {}; ///< said of a larger body in place of the size
};

/// One reply. Content-Length, Connection and the security headers are the server's business.
struct Response {
    int status = 200;
    QByteArray body;
    QByteArray contentType;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray route;             ///< the pattern that answered, for the log
    QByteArray problem;           ///< what went wrong inside, for the log only
    std::shared_ptr<void> memory; ///< what was set aside for a large body; given back with the last copy
};

/// Takes what was asked for. May be called from any thread, once.
template <typename Result> using Finish = std::function<void(Result)>;

/// What comes later: START is called on the event loop at once, and must neither wait nor throw.
template <typename Result> struct Later {
    std::function<void(Finish<Result> finish)> start;
    std::chrono::milliseconds timeout = std::chrono::milliseconds::max();
    Result whenLate = {}; ///< is taken when nothing has come within that time
};

using Reply = std::variant<Response, Later<Response>>;
using Admitted = std::variant<Admission, Later<Admission>>;
using Handler = std::function<Reply(const Request &)>;

/// What every refusal becomes, with its text as the body.
Response refusalResponse(const Refusal &refusal, const QByteArray &contentType, const QByteArray &body);

/// The decoded value of a query item in form encoding ("+" is a blank); empty when it is missing.
QString queryValue(const Request &request, QByteArrayView name);

/// The value of one cookie of the request; empty when it is missing.
QByteArray cookieValue(const Request &request, QByteArrayView name);

} // namespace tideloft::service
