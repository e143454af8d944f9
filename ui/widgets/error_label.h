// The place of an error on a page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tideloft::ui
{

/// A wrapped, centred label that takes the room that its text needs if there is any, but never makes its
/// window higher: of a text with too many lines it shows the first. Words that are wider than the label, such
/// as the address of a request, go on in the next line.
class ErrorLabel : public QLabel
{
    Q_OBJECT

public:
    ErrorLabel(QWidget *parent, const QString &objectName);

    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool hasWordBeyond(int room) const;
};

} // namespace tideloft::ui
