// What the net tests share: how a request of the client looks on the wire, and everything that it emits.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/api_client.h"
#include "tests/support/loopback_service.h"

#include <QSignalSpy>

#include <functional>
#include <memory>
#include <vector>

namespace tideloft::tests
{

/// Something that a client is asked to do.
using Operation = std::function<void(net::ApiClient &)>;

/// The head of REQUEST without the headers that the toolkit adds of its own (Host, User-Agent and the like).
QByteArray ownHead(const RecordedRequest &request);

/// What ownHead() must be for a JSON request of CLIENT: REQUESTLINE is "METHOD target". A GET has no LENGTH.
QByteArray jsonHead(const QByteArray &requestLine, const net::ApiClient &client, qsizetype length = -1);

/// Records every signal of a client, so that "nothing was emitted" can be said of all of them.
class SignalLog
{
public:
    explicit SignalLog(const net::ApiClient &client);
    /// "name" of every signal emitted so far; the names stand in the order of declaration.
    QList<QByteArray> emitted() const;

private:
    std::vector<std::unique_ptr<QSignalSpy>> spies;
};

/// Returns once a further request of CLIENT has been answered, and with it whatever came in before.
bool settle(net::ApiClient &client);

} // namespace tideloft::tests

Q_DECLARE_METATYPE(tideloft::tests::Operation)
