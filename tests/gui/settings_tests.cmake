# Tests of the settings view, the theme and accent chosen there, and the privacy dialog.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_settings_probe STATIC
    tst_pending_timers.cpp tst_pending_timers.h tst_person.h
    tst_popups.cpp tst_popups.h tst_settings_probe.cpp tst_settings_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_settings_probe)
target_link_libraries(tideloft_settings_probe PUBLIC tideloft_gui_probe Qt6::Test)

function(tideloft_settings_test name)
    tideloft_test(${name} LIBRARIES tideloft_settings_probe LABELS gui)
endfunction()

tideloft_settings_test(tst_settings_switches)
target_sources(tst_settings_switches PRIVATE
    tst_settings_switches_table.cpp tst_settings_switches_table.h)
tideloft_settings_test(tst_settings_navigation)
tideloft_settings_test(tst_settings_opening)
tideloft_settings_test(tst_settings_actions)
tideloft_settings_test(tst_settings_sections)
tideloft_settings_test(tst_settings_texts)
tideloft_settings_test(tst_settings_profile_card)
tideloft_settings_test(tst_appearance)
tideloft_settings_test(tst_settings_tab_order)
tideloft_settings_test(tst_privacy_dialog)
tideloft_settings_test(tst_appearance_sheet)
