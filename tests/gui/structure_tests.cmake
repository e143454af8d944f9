# The window's structure, the sign-in page and what follows a sign-in.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_gui_probe STATIC
    ${PROJECT_SOURCE_DIR}/tests/support/gui_probe.cpp ${PROJECT_SOURCE_DIR}/tests/support/gui_probe.h)
tideloft_when_linked(tideloft_precompile_test tideloft_gui_probe)
target_link_libraries(tideloft_gui_probe PUBLIC tideloft_ui tideloft_test_service tideloft_page_window)

tideloft_tests(gui_structure_tests
    TESTS tst_device_key_flow tst_device_key_flow_files tst_device_list tst_history_signals
        tst_remember_me tst_retranslation tst_sign_in_flow tst_sign_in_focus tst_sign_in_log_out
        tst_sign_in_register tst_sign_in_trouble tst_window_conversation tst_window_keys
        tst_window_layout tst_window_plain_text tst_window_refresh tst_window_shell tst_window_signals
        tst_window_slots tst_window_tab_order
    LIBRARIES tideloft_rail_probe LABELS gui)
