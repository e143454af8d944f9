// What texts ask to be pictures with U+FE0F.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace tideloft::tests
{

/// Every character that Unicode 15 lets U+FE0F make a picture, each followed by it; digits, # and * as
/// keycaps.
QStringList requestedPictures();
/// Some of what is joined across U+FE0F to one picture.
QStringList joinedPictures();

} // namespace tideloft::tests
