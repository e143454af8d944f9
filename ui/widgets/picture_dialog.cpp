// Choosing a picture file by mouse or by name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/picture_dialog.h"

#include "ui/widgets/message_box.h"
#include "ui/widgets/picture_file.h"
#include "ui/widgets/toolkit_parts.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// The names that are offered below the dialog's field stand in a window of their own, which holds the
// keyboard. If this window is still open when Return closes the dialog, no window gets the keyboard back.
class OfferedNames : public QObject
{
public:
    OfferedNames(QLineEdit *asking, QAbstractItemView *offered)
        : QObject(offered),
          field(asking),
          list(offered)
    {
        list->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !isReturn(static_cast<QKeyEvent *>(event)->key()))
            return QObject::eventFilter(watched, event);
        list->hide();
        QCoreApplication::sendEvent(field, event);
        return true;
    }

private:
    static bool isReturn(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

    QLineEdit *field;
    QAbstractItemView *list;
};

} // namespace

QString choosePicture(QWidget *parent, const QString &title, Language language)
{
    QFileDialog dialog(parent, title, {}, pictureFilter(language));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setSupportedSchemes({u"file"_s}); // a desktop's own dialog knows other places, too
    if (auto *field = nameFieldOf(&dialog); field && field->completer())
        new OfferedNames(field, field->completer()->popup());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString chooseProfilePicture(QWidget *parent, Language language)
{
    const QString path = choosePicture(
        parent, chooseText(language, u"Välj profilbild"_s, u"Choose profile picture"_s), language);
    const auto problem = path.isEmpty() ? std::nullopt : problemWithPicture(path);
    if (problem)
        showWarning(parent, problem->in(language));
    return problem ? QString() : path;
}

} // namespace tideloft::ui
