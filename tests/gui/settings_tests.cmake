# Tests of the settings view in its window, and of the theme and accent chosen there.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_settings_probe STATIC
    tst_pending_timers.cpp tst_pending_timers.h tst_settings_probe.cpp tst_settings_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_settings_probe)
target_link_libraries(tideloft_settings_probe PUBLIC tideloft_gui_probe Qt6::Test)

tideloft_tests(gui_settings_tests
    TESTS tst_appearance tst_settings_opening
    LIBRARIES tideloft_settings_probe LABELS gui)
