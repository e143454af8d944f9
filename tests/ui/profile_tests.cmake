# The rules behind servers and pictures: no window, no service.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
foreach(unit server_models picture_file round_picture)
    tideloft_test(tst_${unit} LIBRARIES tideloft_ui)
endforeach()
