// Who the program says it is. Where its settings and its keys are kept follows from these names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::app
{

inline const QString applicationName = QStringLiteral("TideLoft");
inline const QString organisationName = QStringLiteral("TideLoft");
/// Under this name the desktop knows the program: its launcher, its icon, and which windows are its own.
inline const QString desktopFileName = QStringLiteral("im.tideloft.TideLoft");
/// As "1.0.0".
QString applicationVersion();

} // namespace tideloft::app
