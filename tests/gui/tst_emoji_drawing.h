// The places where texts of people stand, as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QString>

#include <functional>
#include <vector>

namespace tideloft::tests
{

class GuiProbe;

/// Where a text of a person stands, and a way to draw any text there: in the colour PEN, 24 px high, on
/// black.
struct TextPlace {
    QByteArray name;
    std::function<QImage(const QString &text, const QColor &pen)> draw;
};

/// All of them, in the window of PROBE and in what it opens.
std::vector<TextPlace> textPlaces(const GuiProbe &probe);

/// The columns of PICTURE that are not all black.
QList<int> inkColumns(const QImage &picture);
/// How many columns lie from the first of them to the last.
int inkWidth(const QImage &picture);

} // namespace tideloft::tests
