# The rules behind the rows and texts: no window, no service.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
foreach(unit bounded_text initials text message_line message_time message_trouble own_devices sent_texts
        conversation_rows device_lists display_records opened_history history_groups history_rows log_line
        row_plan)
    tideloft_test(tst_${unit} LIBRARIES tideloft_ui)
endforeach()
tideloft_test(tst_toolkit_words LIBRARIES tideloft_ui tideloft_test_service)
