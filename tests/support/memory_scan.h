// Looking for secrets in all that a process has in its memory, its own included.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

namespace tideloft::tests
{

/// Secrets to look for, kept so that the list itself is not found: each byte turned. A secret has at least 16
/// bytes, of which the first 16 are looked for.
class SoughtSecrets
{
public:
    /// Takes note of SECRET, which stays the caller's to wipe.
    void add(const QByteArray &secret);
    /// The same for one that the caller has only as turned() gives it.
    void addTurned(const QByteArray &turnedSecret) { secrets.append(turnedSecret); }
    [[nodiscard]] static QByteArray turned(const QByteArray &secret);
    [[nodiscard]] qsizetype size() const { return secrets.size(); }

    /// In how many places each of them lies in the readable and writable memory of this process, in order.
    [[nodiscard]] QList<int> places() const;
    /// How many of them lie anywhere. Where they do is said as a warning.
    [[nodiscard]] int found() const;

private:
    template <typename Report> void search(const Report &report) const;

    QList<QByteArray> secrets;
};

} // namespace tideloft::tests
