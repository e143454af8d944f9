# The servers rail and its dialogs.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_rail_probe STATIC
    tst_create_dialog_probe.cpp tst_create_dialog_probe.h tst_rail_probe.cpp tst_rail_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_rail_probe)
target_link_libraries(tideloft_rail_probe PUBLIC tideloft_settings_probe)

foreach(unit server_buttons server_opening server_menu server_names server_scroll
             create_dialog create_dialog_answers created_server late_replies)
    tideloft_test(tst_${unit} LIBRARIES tideloft_rail_probe LABELS gui)
endforeach()
