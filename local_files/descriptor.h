// An open file of the system, closed when nobody holds it any more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "local_files/system.h"

namespace tideloft::local_files
{

class Descriptor
{
public:
    explicit Descriptor(int opened) : number(opened) {}
    Q_DISABLE_COPY_MOVE(Descriptor)
    ~Descriptor()
    {
        if (isOpen())
            system::close(number);
    }
    [[nodiscard]] bool isOpen() const { return number >= 0; }
    [[nodiscard]] int get() const { return number; }

private:
    const int number;
};

} // namespace tideloft::local_files
