// Content keys that were unwrapped before, each under the wrapped key that it came from.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <memory_resource>
#include <optional>
#include <vector>

namespace tideloft::crypto
{

/// What stands for a wrapped key text: its SHA-256. Made once for a message, however often the table
/// is asked; where a digest is expected a text will do.
class WrappedKeyDigest
{
public:
    WrappedKeyDigest(const QString &wrappedKey);
    using Bytes = std::array<unsigned char, 32>;
    /// Nothing if the digest could not be made; such a key is neither kept nor found.
    [[nodiscard]] const std::optional<Bytes> &bytes() const { return digest; }

private:
    std::optional<Bytes> digest;
};

/// A table of at most `mostKeys` entries of one size; a full one overwrites its oldest entry with a new
/// one. The whole is overwritten with zeros when it is cleared and when it dies.
class ContentKeyTable
{
public:
    /// Takes nothing from `storage` before the first key; then all at once, so that no key is ever moved and
    /// left behind. A full entry takes 68 bytes.
    ContentKeyTable(quint32 mostKeys, std::pmr::memory_resource *storage);
    Q_DISABLE_COPY_MOVE(ContentKeyTable)
    ~ContentKeyTable() { clear(); }

    /// The 32-byte content key of a wrapped key text, seen in its place: good until the table changes. Empty
    /// if it is not there.
    [[nodiscard]] QByteArray find(const WrappedKeyDigest &wrappedKey) const;
    /// Keeps a content key. One that is there already, or has another size than 32 bytes, changes nothing.
    void insert(const WrappedKeyDigest &wrappedKey, const QByteArray &contentKey);
    /// Wipes all keys and gives the storage back.
    void clear();
    [[nodiscard]] qsizetype size() const { return static_cast<qsizetype>(entries.size()); }

private:
    using Digest = WrappedKeyDigest::Bytes;

    struct Entry {
        Digest wrappedKey;
        std::array<char, 32> contentKey;
        quint32 next; ///< the next entry of the same bucket
    };

    [[nodiscard]] size_t bucketOf(const Digest &digest) const;
    [[nodiscard]] const Entry *entryOf(const Digest &digest) const;
    void reserveAll();
    quint32 takePlace();
    void unlink(quint32 place);

    const quint32 capacity;
    std::pmr::vector<Entry> entries;
    std::pmr::vector<quint32> buckets; ///< for each the entry that came last
    quint32 oldest = 0;                ///< the place of the oldest entry, once the table is full
};

} // namespace tideloft::crypto
