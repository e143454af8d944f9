// Why a command could not be done.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <stdexcept>

namespace tideloft::service
{

/// The text is for the person who gave the command.
class Problem : public std::runtime_error
{
public:
    explicit Problem(const QString &text) : std::runtime_error(text.toStdString()) {}
};

} // namespace tideloft::service
