// A request as a service of the tests got it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

namespace tideloft::tests
{

using HeaderList = QList<QPair<QByteArray, QByteArray>>;

/// One request, exactly as it came over the wire.
struct RecordedRequest {
    QByteArray method;
    QByteArray target;  ///< path and query
    QByteArray head;    ///< request line and headers, up to and with the blank line
    HeaderList headers; ///< in the order sent, names and values as they came
    QByteArray body;

    /// The first value under NAME, in upper or lower case; null when there is none.
    QByteArray header(const QByteArray &name) const;
    bool hasHeader(const QByteArray &name) const { return !header(name).isNull(); }
    bool matches(const QByteArray &key) const; ///< whether KEY of the service's table means this request
};

} // namespace tideloft::tests
