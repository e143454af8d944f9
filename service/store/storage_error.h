// Something the storage cannot do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace tideloft::service
{

/// The text is for the log: it holds no values.
class StorageError : public std::runtime_error
{
public:
    explicit StorageError(const std::string &what, bool forNow = false)
        : std::runtime_error(what),
          temporary(forNow)
    {
    }

    /// True for what may pass by itself: the disk is full or read-only, or another process holds the file.
    bool isTemporary() const { return temporary; }

private:
    bool temporary;
};

} // namespace tideloft::service
