// The service that tests talk to: HTTP/1.1 with kept connections, as far as a client needs it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopback_service.h"
#include "tests/support/waiting.h"

#include "tests/support/patience.h"
#include "tests/support/test_service_endpoint.h"

#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

const QByteArray headEnd = QByteArrayLiteral("\r\n\r\n");

// What the toolkit shows of a failure ends with these words.
QByteArray reasonPhrase(int status)
{
    static const QHash<int, QByteArray> phrases{
        {200, "OK"},
        {201, "Created"},
        {204, "No Content"},
        {302, "Found"},
        {307, "Temporary Redirect"},
        {400, "Bad Request"},
        {401, "Unauthorized"},
        {403, "Forbidden"},
        {404, "Not Found"},
        {409, "Conflict"},
        {413, "Payload Too Large"},
        {429, "Too Many Requests"},
        {500, "Internal Server Error"},
        {503, "Service Unavailable"},
    };
    return phrases.value(status, "Status");
}

bool contains(const HeaderList &headers, const QByteArray &name)
{
    return std::any_of(headers.begin(), headers.end(), [&](const auto &header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
}

QByteArray answerBytes(int status, const QByteArray &body, HeaderList headers)
{
    if (!contains(headers, "Content-Type"))
        headers.prepend({"Content-Type", "application/json"});
    if (!contains(headers, "Content-Length"))
        headers.append({"Content-Length", QByteArray::number(body.size())});
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n";
    for (const auto &[name, value] : std::as_const(headers))
        bytes += name + ": " + value + "\r\n";
    return bytes + "\r\n" + body;
}

QByteArray methodAndPath(const RecordedRequest &request)
{
    return request.method + ' ' + request.target.split('?').first();
}

QByteArray methodAndTarget(const RecordedRequest &request)
{
    return request.method + ' ' + request.target;
}

RecordedRequest parseHead(const QByteArray &head)
{
    RecordedRequest request;
    request.head = head;
    QList<QByteArray> lines = head.chopped(headEnd.size()).split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    request.method = words.value(0);
    request.target = words.value(1);
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    }
    return request;
}

} // namespace

QByteArray RecordedRequest::header(const QByteArray &name) const
{
    for (const auto &[known, value] : headers) {
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return value.isNull() ? QByteArray("") : value;
    }
    return {};
}

bool RecordedRequest::matches(const QByteArray &key) const
{
    return key == methodAndTarget(*this) || key == methodAndPath(*this);
}

/// One client's connection. Cuts what arrives into requests, and lets answers out in the requests' order.
class LoopbackConnection : public QTcpSocket
{
    Q_OBJECT

public:
    explicit LoopbackConnection(LoopbackService *owner) : QTcpSocket(owner), service(owner)
    {
        connect(this, &QTcpSocket::readyRead, this, &LoopbackConnection::cutRequests);
        connect(this, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    }

    void put(qsizetype turn, const LoopbackService::Answer &answer)
    {
        answers[turn - sent] = answer;
        if (state() != ConnectedState)
            return;
        while (!answers.isEmpty() && answers.first()) {
            const LoopbackService::Answer next = *answers.takeFirst();
            ++sent;
            write(next.bytes);
            if (next.closes)
                disconnectFromHost();
        }
    }

private:
    void cutRequests()
    {
        input += readAll();
        for (qsizetype end = input.indexOf(headEnd); end >= 0; end = input.indexOf(headEnd)) {
            const qsizetype bodyStart = end + headEnd.size();
            RecordedRequest request = parseHead(input.left(bodyStart));
            const qsizetype length = request.header("Content-Length").toLongLong();
            if (input.size() < bodyStart + length)
                return;
            request.body = input.mid(bodyStart, length);
            input.remove(0, bodyStart + length);
            answers.append(std::nullopt);
            service->handle(this, sent + answers.size() - 1, request);
        }
    }

    LoopbackService *service;
    QByteArray input;
    QList<std::optional<LoopbackService::Answer>> answers; // one place a request, until it is answered
    qsizetype sent = 0;                                    // and forgotten: a soak asks many thousand times
};

LoopbackService::LoopbackService()
{
    if (!listen(QHostAddress::LocalHost))
        qFatal("The loopback service found no port: %s", qPrintable(errorString()));
    port = serverPort(); // kept: a closed server has none
    setServiceBaseUrl(url());
}

LoopbackService::~LoopbackService()
{
    stop();
}

QString LoopbackService::url() const
{
    return u"http://127.0.0.1:%1"_s.arg(port);
}

void LoopbackService::stop()
{
    close();
    qDeleteAll(findChildren<LoopbackConnection *>());
}

void LoopbackService::answer(const QByteArray &key, int status, const QByteArray &body,
                             const HeaderList &headers)
{
    table.insert(key, {answerBytes(status, body, headers), false});
}

void LoopbackService::answerOnce(const QByteArray &key, int status, const QByteArray &body,
                                 const HeaderList &headers)
{
    once[key].append({answerBytes(status, body, headers), false});
}

void LoopbackService::raw(const QByteArray &key, const QByteArray &bytes, bool closes)
{
    table.insert(key, {bytes, closes});
}

void LoopbackService::release(const QByteArray &key)
{
    heldKeys.remove(key);
    while (heldCount(key) > 0)
        releaseAt(key, 0);
}

void LoopbackService::releaseAt(const QByteArray &key, qsizetype index)
{
    const QList<qsizetype> positions = positionsOf(key);
    if (index < 0 || index >= positions.size())
        qFatal("No request number %lld waits under %s", qlonglong(index), key.constData());
    letGo(positions.at(index));
}

QList<RecordedRequest> LoopbackService::requests(const QByteArray &key) const
{
    QList<RecordedRequest> found;
    std::copy_if(recorded.begin(), recorded.end(), std::back_inserter(found),
                 [&](const RecordedRequest &request) { return request.matches(key); });
    return found;
}

RecordedRequest LoopbackService::lastRequest(const QByteArray &key) const
{
    const QList<RecordedRequest> found = key.isEmpty() ? recorded : requests(key);
    return found.isEmpty() ? RecordedRequest() : found.last();
}

bool LoopbackService::waitForRequests(const QByteArray &key, qsizetype wanted) const
{
    return waitFor([&] { return count(key) >= wanted; }, patience());
}

void LoopbackService::incomingConnection(qintptr descriptor)
{
    auto *connection = new LoopbackConnection(this);
    connection->setSocketDescriptor(descriptor);
}

void LoopbackService::handle(LoopbackConnection *connection, qsizetype turn, const RecordedRequest &request)
{
    recorded.append(request);
    const bool held = std::any_of(heldKeys.begin(), heldKeys.end(),
                                  [&](const QByteArray &key) { return request.matches(key); });
    if (held)
        waiting.append({connection, turn, request});
    else
        connection->put(turn, takeAnswer(request));
}

LoopbackService::Answer LoopbackService::takeAnswer(const RecordedRequest &request)
{
    for (const QByteArray &key : {methodAndTarget(request), methodAndPath(request)}) {
        if (const auto queued = once.find(key); queued != once.end() && !queued->isEmpty())
            return queued->takeFirst();
        if (const auto entry = table.constFind(key); entry != table.constEnd())
            return *entry;
    }
    const QByteArray message = "No answer was prepared for " + methodAndPath(request);
    return {answerBytes(404, R"({"message":")" + message + R"("})", {}), false};
}

QList<qsizetype> LoopbackService::positionsOf(const QByteArray &key) const
{
    QList<qsizetype> positions;
    for (qsizetype position = 0; position < waiting.size(); ++position) {
        if (waiting.at(position).request.matches(key))
            positions.append(position);
    }
    return positions;
}

void LoopbackService::letGo(qsizetype position)
{
    const Waiting next = waiting.takeAt(position);
    if (next.connection) // the client may have hung up meanwhile
        next.connection->put(next.turn, takeAnswer(next.request));
}

} // namespace tideloft::tests

#include "loopback_service.moc"
