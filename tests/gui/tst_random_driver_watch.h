// What has to be true of the window whatever was done to it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gui_probe.h"

#include <map>
#include <memory_resource>
#include <optional>

namespace tideloft::tests
{

/// The storage in which the client remembers keys: while it stands, a test can look into what is in use.
class KeyStorage : public std::pmr::memory_resource
{
public:
    KeyStorage();
    ~KeyStorage() override;
    /// Whether anything but zeros stands in it.
    [[nodiscard]] bool holdsAnything() const;

private:
    void *do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void *place, std::size_t bytes, std::size_t alignment) override;
    bool do_is_equal(const memory_resource &other) const noexcept override { return this == &other; }

    std::pmr::memory_resource *before;
    std::map<char *, std::size_t> blocks;
};

/// Keeps the first warning of the toolkit while it stands; warnings of the client's own are let through.
class WarningWatch
{
public:
    WarningWatch();
    ~WarningWatch();
    static const QString &warning(); ///< empty if there was none
};

/// What is wrong with the window, its pages, its lists, its keys or the number of windows; empty if nothing.
QString faultOf(const GuiProbe &probe, const KeyStorage &keys);
/// Rows without an entry; empty if there are none. To be asked when nothing is under way: rows that are gone
/// wait for the event loop that deletes them.
QString leftOverRows(const GuiProbe &probe);

} // namespace tideloft::tests
