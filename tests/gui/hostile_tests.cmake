# What others write and services answer, watched for what the program does with it.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_open_watch SHARED ../faults/open_watch.cpp ../faults/open_watch.h)
target_include_directories(tideloft_open_watch PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(tideloft_open_watch PRIVATE ${CMAKE_DL_LIBS})
# The toolkit's own calls go through it because the program names it before the C library.
add_library(tideloft_hostile_probe STATIC tst_hostile_probe.cpp tst_hostile_probe.h
    ../support/hostile_texts.cpp ../support/hostile_texts.h)
tideloft_when_linked(tideloft_precompile_test tideloft_hostile_probe)
target_link_libraries(tideloft_hostile_probe PUBLIC tideloft_picture_probe tideloft_open_watch)

tideloft_tests(gui_hostile_tests
    TESTS tst_hostile_boxes tst_hostile_effort tst_hostile_errors tst_hostile_texts tst_hostile_words
    LIBRARIES tideloft_hostile_probe LABELS gui)
