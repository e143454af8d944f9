// Storage that outlives what was kept in it, so that a test can look at what was left behind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>
#include <cstddef>
#include <memory_resource>

namespace tideloft::tests
{

/// Hands out parts of its own bytes and takes none back for use: they stay as their user left them.
class WipeWatch
{
public:
    std::pmr::memory_resource *storage() { return &resource; }

    /// Where the first copy of a secret lies, or -1.
    [[nodiscard]] qsizetype find(const QByteArray &secret) const { return view().indexOf(secret); }
    [[nodiscard]] bool holds(const QByteArray &secret) const { return find(secret) >= 0; }
    [[nodiscard]] QByteArray at(qsizetype position, qsizetype size) const
    {
        return view().mid(position, size);
    }

private:
    [[nodiscard]] QByteArray view() const
    {
        return QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()),
                                       static_cast<qsizetype>(bytes.size()));
    }

    std::array<std::byte, 64 * 1024> bytes{};
    std::pmr::monotonic_buffer_resource resource{bytes.data(), bytes.size(),
                                                 std::pmr::null_memory_resource()};
};

} // namespace tideloft::tests
