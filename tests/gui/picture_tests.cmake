# Choosing pictures in the file dialog, their uploads, the round results, and saving the profile.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_picture_probe STATIC
    tst_picture_probe.cpp tst_picture_probe.h tst_profile_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_picture_probe)
target_link_libraries(tideloft_picture_probe
    PUBLIC tideloft_rail_probe tideloft_net_test_wire Qt6::Test)

foreach(unit another_user picture_choice picture_checks avatar_upload avatar_picture
        profile_save profile_confirmation server_icon toolkit_language)
    tideloft_test(tst_${unit} LIBRARIES tideloft_picture_probe LABELS gui)
endforeach()
