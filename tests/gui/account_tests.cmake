# The sidebar's footer with its menu, and the keys of the sidebar's lists.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
foreach(unit user_menu user_menu_names side_footer side_footer_keys click_keys current_row)
    tideloft_test(tst_${unit} LIBRARIES tideloft_rail_probe LABELS gui)
endforeach()
