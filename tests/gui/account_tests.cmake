# The sidebar's footer with its menu, and the keys of the sidebar's lists.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_tests(gui_account_tests
    TESTS tst_click_keys tst_current_row tst_side_footer tst_side_footer_keys tst_user_menu tst_user_menu_names
    LIBRARIES tideloft_rail_probe LABELS gui)
