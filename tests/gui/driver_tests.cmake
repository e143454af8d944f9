# Use at random for hours, and what happens while boxes, menus and dialogs are open.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_random_driver STATIC
    tst_random_driver_service.cpp tst_random_driver_service.h
    tst_random_driver_hands.cpp tst_random_driver_hands.h
    tst_random_driver_watch.cpp tst_random_driver_watch.h
    ../support/hostile_texts.cpp ../support/hostile_texts.h)
tideloft_when_linked(tideloft_precompile_test tideloft_random_driver)
target_link_libraries(tideloft_random_driver PUBLIC tideloft_rail_probe tideloft_sealed_messages)

tideloft_test(tst_random_driver LIBRARIES tideloft_random_driver LABELS gui)

add_library(tideloft_modal_probe STATIC tst_modal_probe.cpp tst_modal_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_modal_probe)
target_link_libraries(tideloft_modal_probe PUBLIC tideloft_rail_probe tideloft_sealed_messages)
tideloft_test(tst_modal_replies LIBRARIES tideloft_modal_probe LABELS gui)
tideloft_test(tst_modal_closing LIBRARIES tideloft_modal_probe tideloft_picture_probe LABELS gui)
