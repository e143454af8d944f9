// Replies of every shape that a service could send, good and bad, as a table.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace tideloft::tests
{

struct ReplyShape {
    QByteArray name;
    QByteArray bytes;   ///< all that the service sends
    bool closes;        ///< whether it hangs up then, or waits for the next request
    QString error;      ///< the toolkit's words, "%1" for the request's URL; empty where it finds no fault
    QByteArray readsAs; ///< the JSON that a reader finds in the body; empty where there is none
};

/// JSON of every kind in a faultless reply. The connection stays open.
QList<ReplyShape> documentShapes();
/// Faults and oddities of HTTP itself.
QList<ReplyShape> wireShapes();

/// DEPTH arrays, one inside the other.
QByteArray nestedArrays(int depth);

} // namespace tideloft::tests
