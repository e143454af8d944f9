// What kind of picture some bytes are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::service
{

/// The media type of a PNG, JPEG, GIF or WebP, found by its first bytes alone; empty for everything else.
/// What a sender calls a file says nothing about it.
QByteArray pictureType(QByteArrayView content);

} // namespace tideloft::service
