// Keeping two copies of the program from doing the same thing in one directory at the same moment.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "local_files/descriptor.h"

#include <QString>

namespace tideloft::local_files
{

/// An advisory lock on a directory itself, so that no further file is needed; the system takes it back when
/// the program ends in whatever way. Waits for another holder, but not for ever: after `patience`, and where
/// the directory or its file system cannot be locked, the object holds nothing, and its owner goes on
/// without.
class DirectoryLock
{
public:
    /// Writing two files takes far less. A program that holds the lock for longer has been stopped, or means
    /// harm. This program does not wait for it any longer, because its window stands still meanwhile.
    static constexpr int defaultPatience = 2'000; // ms

    explicit DirectoryLock(const QString &path, int patience = defaultPatience);
    [[nodiscard]] bool isHeld() const { return held; }

private:
    const Descriptor directory;
    const bool held;
};

} // namespace tideloft::local_files
