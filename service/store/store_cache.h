// What is kept in memory of the database, so that the commonest questions need no look into it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <mutex>
#include <optional>

namespace tideloft::service
{

/// Every function may be called from any thread.
template <typename Key, typename Value> class Cache
{
public:
    std::optional<Value> find(const Key &key) const
    {
        const std::lock_guard lock(mutex);
        const auto found = values.constFind(key);
        return found == values.constEnd() ? std::nullopt : std::optional(*found);
    }

    /// To be asked before the database is looked into for something that is to be learnt.
    quint64 generation() const
    {
        const std::lock_guard lock(mutex);
        return forgotten;
    }

    /// Keeps what a reader has found. What is known already is newer, and so is what was forgotten since
    /// then.
    void learn(const Key &key, const Value &value, quint64 lookedAt)
    {
        const std::lock_guard lock(mutex);
        if (!keeps || lookedAt != forgotten || values.contains(key))
            return;
        makeRoom();
        values.insert(key, value);
    }

    /// Keeps what was committed.
    void replace(const Key &key, const Value &value)
    {
        const std::lock_guard lock(mutex);
        if (!keeps)
            return;
        makeRoom();
        values.insert(key, value);
    }

    /// Keeps nothing from now on.
    void keepNothing()
    {
        const std::lock_guard lock(mutex);
        keeps = false;
        values.clear();
        ++forgotten;
    }

    void forgetAll()
    {
        const std::lock_guard lock(mutex);
        values.clear();
        ++forgotten;
    }

private:
    static constexpr qsizetype most = 200'000;

    void makeRoom()
    {
        if (values.size() < most)
            return;
        values.clear();
        ++forgotten;
    }

    mutable std::mutex mutex;
    QHash<Key, Value> values;
    quint64 forgotten = 0;
    bool keeps = true;
};

/// Something that a user asks for again and again: the user's row, and what it is.
struct VersionKey {
    qint64 user = 0;
    QString subject;
    bool operator==(const VersionKey &other) const { return user == other.user && subject == other.subject; }
};

inline size_t qHash(const VersionKey &key, size_t seed = 0)
{
    return qHashMulti(seed, key.user, key.subject);
}

/// Whose session it is, and until when (ms since 1970). A session that was ended is nobody's.
struct CachedSession {
    qint64 user = 0;
    QString name;
    qint64 expiresAt = 0;
};

struct StoreCache {
    Cache<QByteArray, CachedSession> sessions; ///< by the hash of their token
    Cache<VersionKey, qint64> versions;

    /// For a database that other processes change at any moment.
    void keepNothing()
    {
        sessions.keepNothing();
        versions.keepNothing();
    }

    void forgetAll()
    {
        sessions.forgetAll();
        versions.forgetAll();
    }
};

} // namespace tideloft::service
