// A one-line label for texts of any length.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tideloft::ui
{

/// Shows as much of its text as fits, with "…" at the end where it is cut, and never asks for room: a long
/// name makes no list and no window wider, and one with line breaks none higher. text() stays the whole text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    ElidedLabel(const QString &text, QWidget *parent, const QString &objectName = {});

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintEmoji(const QString &line);
};

} // namespace tideloft::ui
