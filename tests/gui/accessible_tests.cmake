# What a screen reader is told, the keyboard alone, and input methods.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
tideloft_test(tst_composition LIBRARIES tideloft_rail_probe LABELS gui)
