// A writer that is kept busy until it is let go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "tests/service/semaphore.h"

#include <functional>

namespace tideloft::tests
{

/// Keeps the writer busy until it is let go, so that what comes meanwhile waits together.
class Gate
{
public:
    std::function<void(service::Database &)> change()
    {
        return [this](service::Database &) {
            closed.release();
            opened.acquire();
        };
    }
    void awaitWriter() { closed.acquire(); }
    void open() { opened.release(); }

private:
    Semaphore closed;
    Semaphore opened;
};

} // namespace tideloft::tests
