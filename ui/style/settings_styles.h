// Styles of the settings view's widgets. They are written in the dark palette on purpose and follow neither
// theme nor accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

// The page and its navigation

inline const QString settingsPage = QStringLiteral("background: #0f1923;");
inline const QString settingsNav = QStringLiteral("background: #0c151e; border-right: 1px solid #141f2b;");
inline const QString settingsNavCaption = QStringLiteral(
    "color: #5a7a9a; font-size: 11px; font-weight: 700; letter-spacing: 1px; padding: 0 8px 8px; "
    "background: transparent;");
inline const QString settingsNavCaptionBox = QStringLiteral("background: transparent; border: none;");
inline const QString settingsNavList = QStringLiteral(
    "QListWidget { background: transparent; border: none; }"
    "QListWidget::item { padding: 10px 12px; border-radius: 6px; color: #7a9ab8; font-size: 13px; }"
    "QListWidget::item:hover { background: #151f2a; color: #e8f0f8; }"
    "QListWidget::item:selected { background: #1a2e40; color: #fff; font-weight: 600; }");
inline const QString settingsBackButton = QStringLiteral(
    "background: transparent; color: #5a7a9a; border: none; font-size: 12px; text-align: left; "
    "padding: 8px 12px;");

// Sections and rows

inline const QString sectionTitle =
    QStringLiteral("color: #e8f0f8; font-size: 20px; font-weight: 700; background: transparent;");
inline const QString sectionHeader = QStringLiteral(
    "color: #7ab0f5; font-size: 11px; font-weight: 700; letter-spacing: 1px; background: transparent;");
inline const QString sectionRule = QStringLiteral("background: #1a2d40; max-height: 1px; border: none;");
inline const QString rowLabel =
    QStringLiteral("color: #e8f0f8; font-size: 13px; font-weight: 600; background: transparent;");
inline const QString rowHint = QStringLiteral("color: #5a7a9a; font-size: 11px; background: transparent;");
inline const QString actionLabel =
    QStringLiteral("color: #e8f0f8; font-size: 13px; background: transparent;");
inline const QString fieldLabel =
    QStringLiteral("color: #5a7a9a; font-size: 11px; font-weight: 600; background: transparent;");
inline const QString field =
    QStringLiteral("background: #0c151e; border: 1px solid #1a2d40; border-radius: 6px;"
                   "padding: 8px 12px; color: #e8f0f8; font-size: 13px;");
inline const QString actionButton =
    QStringLiteral("background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060; border-radius: 6px; "
                   "font-size: 12px; padding: 0 16px;");
inline const QString dangerButton =
    QStringLiteral("background: #2a1a1a; color: #ef4444; border: 1px solid #4a2020; border-radius: 6px; "
                   "font-size: 12px; padding: 0 16px;");

inline QString switchButton(bool on)
{
    return QStringLiteral("QPushButton { background: %1; border-radius: 12px; border: none; }"
                          "QPushButton::indicator { width: 0; height: 0; }")
        .arg(on ? QStringLiteral("#3b8beb") : QStringLiteral("#2a3a4a"));
}

// Appearance

inline const QString themeSelected = QStringLiteral(
    "background: #3b8beb; color: #fff; border-radius: 6px; font-size: 12px; padding: 6px 16px; "
    "border: none;");
inline const QString themeUnselected = QStringLiteral(
    "background: #0c151e; color: #5a7a9a; border-radius: 6px; font-size: 12px; padding: 6px 16px; "
    "border: 1px solid #1a2d40;");

inline QString swatch(const QString &colour, bool marked)
{
    return QStringLiteral("background: %1; border-radius: 14px; border: %2;")
        .arg(colour, marked ? QStringLiteral("3px solid #fff") : QStringLiteral("2px solid transparent"));
}

// Security

inline const QString shieldIcon = QStringLiteral("font-size: 28px; background: transparent;");
inline const QString shieldCaption =
    QStringLiteral("color: #e8f0f8; font-size: 14px; font-weight: 700; background: transparent;");
inline const QString shieldLine = QStringLiteral("color: #3ba55d; font-size: 12px; background: transparent;");
inline const QString shieldMark =
    QStringLiteral("color: #3ba55d; font-size: 13px; font-weight: 700; background: transparent;");
inline const QString quietLine = QStringLiteral("color: #5a7a9a; font-size: 12px; background: transparent;");

// About

inline const QString aboutBadge =
    QStringLiteral("background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);"
                   "border-radius: 18px; color: #fff; font-size: 26px; font-weight: 800;");
inline const QString aboutName =
    QStringLiteral("color: #e8f0f8; font-size: 22px; font-weight: 800; background: transparent;");
inline const QString aboutVersion =
    QStringLiteral("color: #5a7a9a; font-size: 13px; background: transparent;");
inline const QString aboutMotto = QStringLiteral("color: #7ab0f5; font-size: 12px; background: transparent;");
inline const QString aboutLabel = QStringLiteral("color: #5a7a9a; font-size: 12px; background: transparent;");
inline const QString aboutValue = QStringLiteral("color: #e8f0f8; font-size: 12px; background: transparent;");

// The profile card

inline const QString profileName =
    QStringLiteral("color: #e8f0f8; font-size: 16px; font-weight: 700; background: transparent;");
inline const QString profileSaveButton =
    QStringLiteral("background: #3b8beb; color: #fff; border: none; border-radius: 6px;font-size: 12px; "
                   "font-weight: 600; padding: 8px 20px;");
inline const QString profileInitials = QStringLiteral(
    "QPushButton { background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
    "border-radius: 36px; color: #7ab0f5; font-size: 22px; font-weight: 700; border: 3px solid #3b8beb; }"
    "QPushButton:hover { border-color: #7ab0f5; }");
inline const QString profilePicture = QStringLiteral(
    "QPushButton { border-radius: 36px; border: 3px solid #3b8beb; background: transparent; padding: 0; }"
    "QPushButton:hover { border-color: #7ab0f5; }");

} // namespace tideloft::ui::style
