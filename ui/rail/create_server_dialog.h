// The dialog that asks for a new server's name and description.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QDialog>

class QLineEdit;

namespace tideloft::ui
{

/// Accepted only with a name; both texts come trimmed.
class CreateServerDialog : public QDialog
{
    Q_OBJECT

public:
    CreateServerDialog(Language language, QWidget *parent);

    QString name() const;
    QString description() const;

private:
    void addFields(Language language);
    void addField(const QString &caption, QLineEdit *field);
    void addButtons(Language language);
    void acceptNamed();

    QLineEdit *nameField = nullptr;
    QLineEdit *descriptionField = nullptr;
};

} // namespace tideloft::ui
