// Bytes and texts that must not outlive their use: content keys, and private keys in every form.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

namespace tideloft::crypto
{

/// Owns a secret and overwrites it with zeros when it leaves use. A secret is moved in, so that no
/// unwiped original stays with the caller. TEXT is QByteArray or QString.
template <typename Text> class Secret
{
public:
    explicit Secret(Text &&secret) : text(std::move(secret)) { text.detach(); } // no literals
    Secret(Secret &&other) noexcept : text(std::exchange(other.text, {})) {}
    Secret &operator=(Secret &&) = delete;
    Q_DISABLE_COPY(Secret)
    ~Secret() { wipe(); }

    /// The secret itself. Copies share the buffer, and so are wiped together with the secret.
    [[nodiscard]] const Text &view() const { return text; }
    [[nodiscard]] bool isEmpty() const { return text.isEmpty(); }
    /// For filling the buffer in place. Growing it would move it, and leave the old place unwiped.
    [[nodiscard]] Text &buffer() { return text; }
    /// Hands the text over to the caller, who wipes it, or who knows that it is no secret.
    [[nodiscard]] Text release() { return std::exchange(text, {}); }
    /// Overwrites the buffer, to the end of what was ever in it, and empties the object.
    void wipe();

private:
    Text text;
};

extern template class Secret<QByteArray>;
extern template class Secret<QString>;

using SecretBytes = Secret<QByteArray>;
using SecretText = Secret<QString>;

} // namespace tideloft::crypto
