# Services that answer nonsense, hang, or are not who they say.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_test(tst_hostile_replies
    LIBRARIES tideloft_gui_probe tideloft_test_tls tideloft_net_test_endpoints LABELS gui)
