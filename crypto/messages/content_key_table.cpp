// Finding, keeping and wiping of content keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/content_key_table.h"

#include "crypto/cipher/aes_gcm.h"

#include <openssl/crypto.h>
#include <openssl/sha.h>

#include <QHashFunctions>

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace tideloft::crypto
{

namespace
{

constexpr auto none = std::numeric_limits<quint32>::max();

} // namespace

// The service chooses the wrapped keys. Were two of them taken for one, a message would open with the key of
// another, and would not have opened without this table. So an entry is found by all of a SHA-256 of the
// text, for which nobody can make two texts; the text itself would take five times the room.
WrappedKeyDigest::WrappedKeyDigest(const QString &wrappedKey)
{
    const auto size = static_cast<size_t>(wrappedKey.size()) * sizeof(QChar);
    if (!SHA256(reinterpret_cast<const unsigned char *>(wrappedKey.utf16()), size, digest.emplace().data()))
        digest.reset();
}

ContentKeyTable::ContentKeyTable(quint32 mostKeys, std::pmr::memory_resource *storage)
    : capacity(std::max(mostKeys, 1U)),
      entries(storage),
      buckets(storage)
{
}

// Texts whose digests begin alike are easy to make, and would all be searched one after the other. The seed,
// which differs in every run, keeps the service from knowing which texts meet in a bucket.
size_t ContentKeyTable::bucketOf(const Digest &digest) const
{
    return qHashBits(digest.data(), digest.size(), QHashSeed::globalSeed()) & (buckets.size() - 1);
}

const ContentKeyTable::Entry *ContentKeyTable::entryOf(const Digest &digest) const
{
    if (buckets.empty())
        return nullptr;
    quint32 place = buckets[bucketOf(digest)];
    while (place != none && entries[place].wrappedKey != digest)
        place = entries[place].next;
    return place == none ? nullptr : &entries[place];
}

QByteArray ContentKeyTable::find(const WrappedKeyDigest &wrappedKey) const
{
    const auto &digest = wrappedKey.bytes();
    const Entry *entry = digest ? entryOf(*digest) : nullptr;
    return entry ? QByteArray::fromRawData(entry->contentKey.data(), aesKeySize) : QByteArray();
}

void ContentKeyTable::insert(const WrappedKeyDigest &wrappedKey, const QByteArray &contentKey)
{
    const auto &digest = wrappedKey.bytes();
    if (!digest || contentKey.size() != aesKeySize || entryOf(*digest))
        return;
    reserveAll();
    const quint32 place = takePlace();
    Entry &entry = entries[place];
    entry.wrappedKey = *digest;
    std::copy(contentKey.cbegin(), contentKey.cend(), entry.contentKey.begin());
    entry.next = std::exchange(buckets[bucketOf(*digest)], place);
}

void ContentKeyTable::clear()
{
    OPENSSL_cleanse(entries.data(), entries.size() * sizeof(Entry));
    entries.clear();
    entries.shrink_to_fit();
    buckets.clear();
    buckets.shrink_to_fit();
    oldest = 0;
}

void ContentKeyTable::reserveAll()
{
    entries.reserve(capacity);
    if (buckets.empty())
        buckets.resize(std::bit_ceil(size_t(capacity)), none);
}

// A free place, or else that of the oldest entry, for the new one to overwrite.
quint32 ContentKeyTable::takePlace()
{
    if (entries.size() < capacity) {
        entries.emplace_back();
        return static_cast<quint32>(entries.size() - 1);
    }
    const quint32 place = std::exchange(oldest, (oldest + 1) % capacity);
    unlink(place);
    return place;
}

void ContentKeyTable::unlink(quint32 place)
{
    quint32 *link = &buckets[bucketOf(entries[place].wrappedKey)];
    while (*link != place)
        link = &entries[*link].next;
    *link = entries[place].next;
}

} // namespace tideloft::crypto
