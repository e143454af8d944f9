// A real HTTP service on this machine that a test fills with answers, and that keeps what it was asked.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/recorded_request.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QSet>
#include <QTcpServer>

namespace tideloft::tests
{

class LoopbackConnection;

/// Listens on 127.0.0.1 and makes itself the base URL of the program's clients. It answers on the caller's
/// event loop, in the order of a connection's requests, from a table whose KEY is "METHOD path" (any query)
/// or "METHOD path?query" (this one, before the other). A later entry replaces an earlier one of its key.
/// What has no entry gets 404 and a JSON `message`.
class LoopbackService : public QTcpServer
{
    Q_OBJECT

public:
    LoopbackService();
    ~LoopbackService() override;
    QString url() const; ///< "http://127.0.0.1:PORT"
    /// Goes down: closes every connection and refuses new ones. The base URL stays.
    void stop();

    /// A complete answer; its Content-Type is application/json unless HEADERS has one.
    void answer(const QByteArray &key, int status, const QByteArray &body, const HeaderList &headers = {});
    /// The same for one request only; queued, and used up before the table's entry.
    void answerOnce(const QByteArray &key, int status, const QByteArray &body,
                    const HeaderList &headers = {});
    /// These bytes instead of an answer; then the connection is closed. For answers that are no good.
    void raw(const QByteArray &key, const QByteArray &bytes, bool closes = true);
    /// No answer: the connection is closed. (The toolkit may ask again on a fresh one.)
    void drop(const QByteArray &key) { raw(key, {}); }

    /// From now on requests of KEY wait. What they get is looked up when they are let go.
    void hold(const QByteArray &key) { heldKeys.insert(key); }
    /// Answers all that wait under KEY, the oldest first, and holds no more.
    void release(const QByteArray &key);
    /// Answers only the one with INDEX among those waiting (0: the oldest); the others still wait.
    void releaseAt(const QByteArray &key, qsizetype index);
    qsizetype heldCount(const QByteArray &key) const { return positionsOf(key).size(); }

    const QList<RecordedRequest> &requests() const { return recorded; }
    QList<RecordedRequest> requests(const QByteArray &key) const;
    qsizetype count(const QByteArray &key) const { return requests(key).size(); }
    /// The newest request, of KEY if one is given; an empty one when there was none.
    RecordedRequest lastRequest(const QByteArray &key = {}) const;
    /// Runs the event loop until COUNT requests of KEY have come; false when they did not within patience().
    bool waitForRequests(const QByteArray &key, qsizetype wanted) const;
    void clear() { recorded.clear(); } ///< forgets the recorded requests; answers and holds stay

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    struct Answer {
        QByteArray bytes;
        bool closes = false;
    };
    struct Waiting {
        QPointer<LoopbackConnection> connection;
        qsizetype turn = 0;
        RecordedRequest request;
    };
    friend class LoopbackConnection;

    void handle(LoopbackConnection *connection, qsizetype turn, const RecordedRequest &request);
    Answer takeAnswer(const RecordedRequest &request);
    QList<qsizetype> positionsOf(const QByteArray &key) const;
    void letGo(qsizetype position);

    quint16 port = 0;
    QHash<QByteArray, Answer> table;
    QHash<QByteArray, QList<Answer>> once;
    QSet<QByteArray> heldKeys;
    QList<Waiting> waiting;
    QList<RecordedRequest> recorded;
};

} // namespace tideloft::tests
