// Bytes that must not outlive their use: content keys and decoded private keys.
#pragma once

#include <QByteArray>

#include <utility>

namespace tideloft::crypto
{

/// Owns a secret and overwrites it with zeros when it leaves use. A secret is moved in, so that no
/// unwiped original stays with the caller.
class SecretBytes
{
public:
    explicit SecretBytes(QByteArray &&secret) : bytes(std::move(secret)) { bytes.detach(); } // no literals
    SecretBytes(SecretBytes &&other) noexcept : bytes(std::exchange(other.bytes, {})) {}
    SecretBytes &operator=(SecretBytes &&) = delete;
    Q_DISABLE_COPY(SecretBytes)
    ~SecretBytes() { wipe(); }

    /// The secret itself. Copies of it share its buffer, and so are wiped with it.
    [[nodiscard]] const QByteArray &view() const { return bytes; }
    [[nodiscard]] bool isEmpty() const { return bytes.isEmpty(); }
    /// Overwrites the buffer and empties the object.
    void wipe();

private:
    QByteArray bytes;
};

} // namespace tideloft::crypto
