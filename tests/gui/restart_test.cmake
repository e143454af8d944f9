# Its program starts itself again, as the client does.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_test(tst_restart LIBRARIES tideloft_ui tideloft_page_window tideloft_test_service)
