// Transactions that meet others on the same rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/storage_error.h"

namespace tideloft::service
{

/// Does WORK, a whole transaction, and does it again, at most ten times, when that of another was in its way.
/// Throws what WORK throws.
template <typename Work> auto againAfterConflicts(const Work &work)
{
    for (int left = 10;; --left) {
        try {
            return work();
        } catch (const StorageError &error) {
            if (error.kind() != Trouble::Conflict || left == 0)
                throw;
        }
    }
}

} // namespace tideloft::service
