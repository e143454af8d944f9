// Showing a message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/message_box.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_highlighter.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/text_height.h"
#include "ui/widgets/toolkit_parts.h"

#include <QApplication>
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
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.cbegin(), windows.cend(), [&](const QWidget *window) {
        const auto *box = qobject_cast<const QMessageBox *>(window);
        return box && box->parent() == parent && box->isVisible() && box->icon() == icon
               && box->text() == text;
    });
}

/// The most room that a box takes: half of the screen on either side.
QSize roomForBox(const QMessageBox &box)
{
    return box.screen()->availableSize() / 2;
}

/// How wide a text may become that does not break by itself: the toolkit leaves a box the screen's width less
/// 480 px.
int widestBox(const QMessageBox &box)
{
    return qMin(roomForBox(box).width(), qBound(320, box.screen()->availableSize().width() - 480, 600));
}

/// Whether LABEL shows all of its text in WIDTH px, and the box around it keeps to its room. The flags are
/// those with which the label draws. A text with the separator never fits: the label draws one part of it.
bool fitsAsItIsDrawn(const QMessageBox &box, QLabel *label, int width)
{
    const QSize most = roomForBox(box);
    const QRect room(QPoint(), QSize(width, most.height()));
    constexpr int flags = Qt::TextWordWrap | Qt::TextExpandTabs;
    if (box.text().contains(variantSeparator) || hasEmojiFormats(box.text())
        || !room.contains(label->fontMetrics().boundingRect(room, flags, box.text())))
        return false;
    label->setWordWrap(true); // the toolkit decides anew when it shows the box
    const int usual = qMin(box.screen()->availableSize().width() / 2, 500);
    const int needed = qMax(usual, box.layout()->totalMinimumSize().width());
    return needed <= most.width() && box.layout()->totalHeightForWidth(needed) <= most.height();
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
    new EmojiHighlighter(view->document()); // owned by the document
    view->setPlainText(text);
    return view;
}

/// The box's label neither breaks a word nor scrolls: what does not fit into the room it gets would be cut
/// off or push the button off the screen. Such a text gets a place that does both. The label keeps the text,
/// hidden, for whoever asks the box.
void keepOnScreen(QMessageBox *box)
{
    auto *grid = qobject_cast<QGridLayout *>(box->layout());
    auto *label = textLabelOf(box);
    if (!grid || !label)
        return;
    box->ensurePolished();
    const int wide = widestBox(*box) - (grid->totalMinimumSize().width() - label->minimumSizeHint().width());
    if (fitsAsItIsDrawn(*box, label, wide))
        return;
    const int highest = roomForBox(*box).height();
    const int needed =
        textHeight(box->text(), label->font(), wide - 16, QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPlainTextEdit *view = makeScrollingText(box->text(), qMin(needed + 16, highest), box);
    view->setMinimumWidth(wide);
    view->setAccessibleName(box->windowTitle());
    delete grid->replaceWidget(label, view);
    label->hide();
    box->setAccessibleDescription(box->text()); // said with the box; of a hidden label nothing is
    const int beyond = grid->totalMinimumSize().height() - highest;
    if (beyond > 0)
        view->setFixedHeight(view->height() - beyond);
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
