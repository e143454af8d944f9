# The servers rail and its dialogs.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_rail_probe STATIC
    tst_create_dialog_probe.h tst_rail_probe.cpp tst_rail_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_rail_probe)
target_link_libraries(tideloft_rail_probe PUBLIC tideloft_settings_probe)

tideloft_tests(gui_servers_tests
    TESTS tst_create_dialog_answers tst_created_server tst_late_replies tst_server_buttons
        tst_server_menu tst_server_names tst_server_opening
    LIBRARIES tideloft_rail_probe LABELS gui)
