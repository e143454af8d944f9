# What a screen reader is told, the keyboard alone, and input methods.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_accessible_probe STATIC tst_accessible_probe.cpp tst_accessible_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_accessible_probe)
target_link_libraries(tideloft_accessible_probe PUBLIC tideloft_rail_probe)

tideloft_tests(gui_accessible_tests
    TESTS tst_accessible_controls tst_accessible_texts tst_composition_keys tst_focus_contrast tst_keyboard_journey
        tst_notifications tst_visible_focus
    SOURCES tst_accessible_table.cpp tst_accessible_table.h
    LIBRARIES tideloft_accessible_probe tideloft_picture_probe tideloft_sealed_messages tideloft_start_up LABELS gui)

# The same from outside.
add_subdirectory("${PROJECT_SOURCE_DIR}/tests/accessibility" accessibility)
