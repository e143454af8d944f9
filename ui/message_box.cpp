// Showing a message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/message_box.h"

#include "ui/bounded_text.h"
#include "ui/focus_ring.h"
#include "ui/text_height.h"

#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

bool isShown(const QWidget *parent, QMessageBox::Icon icon, const QString &text)
{
    if (!parent)
        return false;
    const auto boxes = parent->findChildren<QMessageBox *>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(boxes.begin(), boxes.end(), [icon, &text](const QMessageBox *box) {
        return box->isVisible() && box->icon() == icon && box->text() == text;
    });
}

/// How wide the box may become: the toolkit leaves it the screen's width less 480 px.
int roomForBox(const QMessageBox &box)
{
    return qBound(320, box.screen()->availableGeometry().width() - 480, 600);
}

/// A place for TEXT that breaks every word too wide for it, and scrolls.
QPlainTextEdit *makeScrollingText(const QString &text, int height, QMessageBox *box)
{
    auto *view = new QPlainTextEdit(box);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->viewport()->setAutoFillBackground(false);
    view->setFixedHeight(height);
    view->setPlainText(text);
    return view;
}

/// The box's label neither breaks a word nor scrolls: what does not fit into the room it gets would be cut
/// off or push the button off the screen. Such a text gets a place that does both. The label keeps the text,
/// hidden, for whoever asks the box.
void keepOnScreen(QMessageBox *box)
{
    auto *grid = qobject_cast<QGridLayout *>(box->layout());
    auto *label = box->findChild<QLabel *>(u"qt_msgbox_label"_s);
    if (!grid || !label)
        return;
    box->ensurePolished();
    const int highest = box->screen()->availableGeometry().height() / 2;
    const int wide = roomForBox(*box) - (grid->totalMinimumSize().width() - label->minimumSizeHint().width());
    const QRect room(0, 0, wide, highest);
    if (room.contains(label->fontMetrics().boundingRect(room, Qt::TextWordWrap, box->text())))
        return;
    const int needed =
        textHeight(box->text(), label->font(), wide - 16, QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPlainTextEdit *view = makeScrollingText(box->text(), qMin(needed + 16, highest), box);
    view->setMinimumWidth(wide);
    view->setAccessibleName(box->windowTitle());
    delete grid->replaceWidget(label, view);
    label->hide();
    box->setDefaultButton(QMessageBox::Ok);
    box->button(QMessageBox::Ok)->setFocus();
}

} // namespace

// Somebody who holds Return down before a service that refuses would have fifty boxes to close that all say
// the same: one says it.
void showMessage(QWidget *parent, Severity severity, const QString &text)
{
    const auto icon = severity == Severity::Warning ? QMessageBox::Warning : QMessageBox::Information;
    const QString shown = firstPart(text, errorLimits);
    if (isShown(parent, icon, shown))
        return;
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(icon);
    box->setWindowTitle(u"TideLoft"_s);
    box->setStandardButtons(QMessageBox::Ok);
    ringFocus(box->button(QMessageBox::Ok));
    box->setTextFormat(Qt::PlainText); // before the text: the box would guess its format
    box->setText(shown);
    keepOnScreen(box);
    box->open();
}

void showWarning(QWidget *parent, const QString &text)
{
    showMessage(parent, Severity::Warning, text);
}

} // namespace tideloft::ui
