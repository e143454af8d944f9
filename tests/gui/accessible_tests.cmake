# What a screen reader is told, the keyboard alone, and input methods.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_test(tst_composition LIBRARIES tideloft_rail_probe LABELS gui)

add_library(tideloft_accessible_probe STATIC tst_accessible_probe.cpp tst_accessible_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_accessible_probe)
target_link_libraries(tideloft_accessible_probe PUBLIC tideloft_rail_probe)

tideloft_test(tst_accessible_controls
    SOURCES tst_accessible_controls.cpp tst_accessible_table.cpp tst_accessible_table.h
            tst_settings_switches_table.cpp tst_settings_switches_table.h
    LIBRARIES tideloft_accessible_probe tideloft_start_up LABELS gui)
tideloft_test(tst_accessible_texts LIBRARIES tideloft_accessible_probe LABELS gui)
tideloft_test(tst_notifications LIBRARIES tideloft_accessible_probe LABELS gui)
tideloft_test(tst_visible_focus LIBRARIES tideloft_accessible_probe LABELS gui)
tideloft_test(tst_focus_contrast LIBRARIES tideloft_accessible_probe tideloft_start_up LABELS gui)
tideloft_test(tst_keyboard_journey
    LIBRARIES tideloft_accessible_probe tideloft_picture_probe tideloft_sealed_messages LABELS gui)

# The same from outside.
add_subdirectory("${PROJECT_SOURCE_DIR}/tests/accessibility" accessibility)
