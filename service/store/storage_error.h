// Something the storage cannot do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace tideloft::service
{

/// What a failure means for whoever tries again.
enum class Trouble {
    Lasting,  ///< the same fails again
    Passing,  ///< may pass by itself: the disk is full or read-only, or another process holds the database
    Conflict, ///< others changed the same at the same moment: the whole transaction may be tried again at
              ///< once
    Gone,     ///< nobody knows whether the last statement was done, because the server went away
};

/// The text is for the log: it holds no values.
class StorageError : public std::runtime_error
{
public:
    explicit StorageError(const std::string &what, Trouble kind = Trouble::Lasting)
        : std::runtime_error(what),
          trouble(kind)
    {
    }

    Trouble kind() const { return trouble; }
    bool isTemporary() const { return trouble != Trouble::Lasting; }

private:
    Trouble trouble;
};

} // namespace tideloft::service
