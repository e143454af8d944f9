// Finding parts of the toolkit's own widgets. Our own widgets are held by members instead.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/toolkit_parts.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QLabel *textLabelOf(const QMessageBox *box)
{
    return box->findChild<QLabel *>(u"qt_msgbox_label"_s);
}

QLineEdit *nameFieldOf(const QFileDialog *dialog)
{
    return dialog->findChild<QLineEdit *>();
}

QTextDocument *documentOf(const QLabel *label)
{
    return label->findChild<QTextDocument *>();
}

} // namespace tideloft::ui
