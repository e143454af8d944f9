// Entry point of the client.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/start_up.h"
#include "app/this_system.h"

int main(int argc, char **argv)
{
    tideloft::app::refuseCoreDumps();
    return tideloft::app::run(argc, argv);
}
