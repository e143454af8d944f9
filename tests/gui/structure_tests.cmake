# The window's structure, the sign-in page and what follows a sign-in.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_gui_probe STATIC
    ${PROJECT_SOURCE_DIR}/tests/support/gui_probe.cpp ${PROJECT_SOURCE_DIR}/tests/support/gui_probe.h
    ${PROJECT_SOURCE_DIR}/tests/support/gui_layouts.cpp
    ${PROJECT_SOURCE_DIR}/tests/support/tab_order.cpp ${PROJECT_SOURCE_DIR}/tests/support/tab_order.h)
tideloft_when_linked(tideloft_precompile_test tideloft_gui_probe)
target_link_libraries(tideloft_gui_probe PUBLIC tideloft_ui tideloft_test_service)

tideloft_test(tst_window_slots LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_late_page LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_shell LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_layout LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_conversation LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_tab_order LIBRARIES tideloft_rail_probe LABELS gui)
tideloft_test(tst_window_keys LIBRARIES tideloft_rail_probe LABELS gui)
tideloft_test(tst_window_refresh LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_page LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_error_label LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_flow LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_register LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_log_out LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_focus SOURCES tst_sign_in_focus.cpp tst_popups.cpp tst_popups.h
    LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_retranslation LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_device_key_flow LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_remember_me LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_device_list LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_device_key_flow_files LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_history_signals LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_signals LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_window_plain_text LIBRARIES tideloft_gui_probe LABELS gui)
tideloft_test(tst_sign_in_trouble LIBRARIES tideloft_gui_probe LABELS gui)
