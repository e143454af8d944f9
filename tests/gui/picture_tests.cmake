# Choosing pictures in the file dialog, their uploads, the round results, and saving the profile.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_picture_probe STATIC
    tst_picture_probe.cpp tst_picture_probe.h tst_profile_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_picture_probe)
target_link_libraries(tideloft_picture_probe
    PUBLIC tideloft_rail_probe tideloft_net_test_wire Qt6::Test)

tideloft_tests(gui_picture_tests
    TESTS tst_another_user tst_avatar_picture tst_avatar_upload tst_picture_checks tst_picture_choice
        tst_profile_confirmation tst_profile_save tst_server_icon tst_toolkit_language
    LIBRARIES tideloft_picture_probe LABELS gui)
