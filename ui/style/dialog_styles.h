// Styles of the window's dialogs, in the dark palette whatever the theme.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

inline const QString dialogHeading =
    QStringLiteral("font-size: 16px; font-weight: 700; color: #e8f0f8; background: transparent;");
inline const QString dialogExplanation =
    QStringLiteral("font-size: 11px; color: #5a7a9a; background: transparent;");
inline const QString dialogFieldLabel =
    QStringLiteral("font-size: 11px; font-weight: 600; color: #7ab0f5; background: transparent;");

inline const QString createServerDialog = QStringLiteral(
    "QDialog { background: #0f1923; color: #e8f0f8; }"
    "QLabel { color: #e8f0f8; background: transparent; }"
    "QLineEdit { background: #0c151e; border: 1px solid #1a2d40; border-radius: 6px;   padding: 8px 12px; "
    "color: #e8f0f8; font-size: 13px; }"
    "QLineEdit:focus { border-color: #3b8beb; }"
    "QPushButton { background: #3b8beb; color: #fff; border: none; border-radius: 7px;   padding: 8px 20px; "
    "font-size: 12px; font-weight: 600; }"
    "QPushButton:hover { background: #5aa0f5; }"
    "QPushButton#cancelBtn { background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060; }"
    "QPushButton#cancelBtn:hover { background: #2a4060; }");

inline const QString privacyDialog = QStringLiteral(
    "QDialog { background: #0f1923; color: #e8f0f8; }"
    "QLabel { color: #e8f0f8; background: transparent; }"
    "QCheckBox { color: #e8f0f8; font-size: 13px; spacing: 8px; }"
    "QCheckBox::indicator { width: 20px; height: 20px; border-radius: 5px; border: 1px solid #2a4060; "
    "background: #0c151e; }"
    "QCheckBox::indicator:checked { background: #3b8beb; border-color: #3b8beb; }"
    "QPushButton { background: #3b8beb; color: #fff; border: none; border-radius: 7px; padding: 8px 20px; "
    "font-size: 12px; font-weight: 600; }"
    "QPushButton:hover { background: #5aa0f5; }");
inline const QString privacyCard = QStringLiteral("background: #111e2a; border-radius: 8px;");
inline const QString privacyHint =
    QStringLiteral("font-size: 10px; color: #5a7a9a; background: transparent;");

} // namespace tideloft::ui::style
