# The menu of the sidebar's footer, and the current row of the conversations.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_tests(gui_account_tests
    TESTS tst_current_row tst_user_menu tst_user_menu_names
    LIBRARIES tideloft_rail_probe LABELS gui)
