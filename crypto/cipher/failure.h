// How an operation of this room says that it failed: a message for whoever asked, and an empty result.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::crypto
{

/// The empty result of a failed operation in whatever shape the operation returns: no bytes, no text, false.
struct Failure {
    template <typename Result> operator Result() const { return Result(); }
};

/// Replaces the text behind ERROR, which may be null.
inline Failure fail(QString *error, const QString &message)
{
    if (error)
        *error = message;
    return {};
}

/// As fail(), unless an earlier and more specific text is there already.
inline Failure failUnlessExplained(QString *error, const QString &message)
{
    return error && !error->isEmpty() ? Failure{} : fail(error, message);
}

/// As fail(), with "%1" replaced by the earliest queued OpenSSL error, which is taken from the queue.
Failure failOpenssl(QString *error, const QString &message);

} // namespace tideloft::crypto
