// Keeps two copies of the program from doing the same thing in one directory at the same moment.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "local_files/descriptor.h"

#include <QString>

namespace tideloft::local_files
{

/// An advisory lock on a directory itself, so that no further file is needed. The system releases the lock
/// when the program ends, however it ends. Waits up to PATIENCE for another holder. If the directory cannot
/// be locked in that time, or at all, the object holds nothing, and its owner goes on without the lock.
class DirectoryLock
{
public:
    /// Writing two files takes far less. A program that holds the lock for longer was stopped, or does so on
    /// purpose. This program stops waiting then, because its window does not react while it waits.
    static constexpr int defaultPatience = 2'000; // ms

    explicit DirectoryLock(const QString &path, int patience = defaultPatience);
    [[nodiscard]] bool isHeld() const { return held; }

private:
    const Descriptor directory;
    const bool held;
};

} // namespace tideloft::local_files
