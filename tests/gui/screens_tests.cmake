# Every page as it stands on a screen, at each scale. tests/screens/run adds real screens and other fonts.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_screen_probe STATIC
    tst_screen_faults.cpp tst_screen_faults.h
    tst_screen_glyphs.cpp tst_screen_glyphs.h
    tst_screen_pages.cpp tst_screen_pages.h)
tideloft_when_linked(tideloft_precompile_test tideloft_screen_probe)
target_link_libraries(tideloft_screen_probe PUBLIC tideloft_rail_probe tideloft_start_up)

tideloft_tests(gui_screens_tests
    TESTS tst_emoji tst_emoji_places tst_emoji_without_font tst_screens
    SOURCES tst_emoji_drawing.cpp tst_emoji_drawing.h tst_emoji_table.cpp tst_emoji_table.h
    LIBRARIES tideloft_screen_probe LABELS gui)
set_property(TEST tst_emoji_without_font
    APPEND PROPERTY ENVIRONMENT "FONTCONFIG_FILE=${CMAKE_CURRENT_SOURCE_DIR}/fonts_without_emoji.conf")
foreach(scale 1.5 2)
    add_test(NAME tst_screens_at_${scale} COMMAND gui_screens_tests tst_screens)
    set_tests_properties(tst_screens_at_${scale} PROPERTIES TIMEOUT ${TIDELOFT_TEST_TIMEOUT} LABELS gui
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;QT_SCALE_FACTOR=${scale}"
        ENVIRONMENT_MODIFICATION "${TIDELOFT_OWN_LOOKS}")
endforeach()

# Other fonts of letters than the client's first choices: whatever else is there.
set(other_fonts "${CMAKE_CURRENT_BINARY_DIR}/other_fonts.conf")
configure_file(other_fonts.conf "${other_fonts}" COPYONLY)
add_test(NAME tst_screens_in_other_fonts
    COMMAND gui_screens_tests tst_screens digitsAreLetters emojiAreColoured)
set_tests_properties(tst_screens_in_other_fonts PROPERTIES TIMEOUT ${TIDELOFT_TEST_TIMEOUT} LABELS gui
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;FONTCONFIG_FILE=${other_fonts}"
    ENVIRONMENT_MODIFICATION "${TIDELOFT_OWN_LOOKS};QT_SCALE_FACTOR=unset:")
