// Measuring every visible part of a window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_screen_faults.h"

#include "tests/gui/tst_screen_glyphs.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/error_label.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTextDocument>
#include <QTextLayout>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QString nameOf(const QWidget &widget, const QString &text = {})
{
    const QString name = QLatin1StringView(widget.metaObject()->className()) + u'#' + widget.objectName();
    return text.isEmpty() ? name : u"%1 '%2'"_s.arg(name, text.left(30));
}

/// The size of TEXT in one line, with whatever fonts its characters need.
QSizeF sizeOf(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    return {line.naturalTextWidth(), line.height()};
}

/// Half a pixel is lost when sizes become whole numbers.
QString tooSmall(const QWidget &widget, const QString &text, QSizeF room)
{
    const QSizeF needed = sizeOf(text, widget.font());
    if (needed.width() <= room.width() + 0.5)
        return {};
    return u"%1 has %2 px for %3 px of text"_s.arg(nameOf(widget, text))
        .arg(room.width())
        .arg(std::ceil(needed.width()));
}

/// Whether LABEL breaks words where its lines end: an error does, another shows it once it is drawn.
bool breaksWords(const QLabel &label)
{
    if (qobject_cast<const ui::ErrorLabel *>(&label))
        return true;
    const_cast<QLabel &>(label).grab();
    const auto *document = label.findChild<QTextDocument *>();
    return document && document->defaultTextOption().wrapMode() != QTextOption::WordWrap;
}

/// The width of the widest of the TEXT's parts that no line break may part, but for those so long that they
/// may be cut.
qreal widestWord(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    qreal widest = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(1); // wide enough for nothing: each line takes one word
        if (line.textLength() < lengthThatMayBeCut)
            widest = qMax(widest, line.naturalTextWidth());
    }
    layout.endLayout();
    return widest;
}

/// A paragraph: what is too long for a line goes on in the next.
QStringList paragraphFaults(const QLabel &label, QRect room)
{
    QStringList faults;
    const qreal needed = widestWord(label.text(), label.font());
    if (needed > room.width() + 0.5 && !breaksWords(label))
        faults.append(u"%1 has %2 px for a word of %3"_s.arg(nameOf(label, label.text()))
                          .arg(room.width())
                          .arg(std::ceil(needed)));
    // A low window has no room for a long error: its first lines are shown.
    const bool mayBeCut = qobject_cast<const ui::ErrorLabel *>(&label)
                          && label.text().size() >= lengthThatMayBeCut && label.window()->height() <= 600;
    if (!mayBeCut && label.heightForWidth(label.width()) > label.height())
        faults.append(u"%1 has %2 px of height for %3"_s.arg(nameOf(label, label.text()))
                          .arg(label.height())
                          .arg(label.heightForWidth(label.width())));
    return faults;
}

QStringList labelFaults(const QLabel &label)
{
    const QString text = label.text();
    if (text.isEmpty())
        return {};
    const QRect room =
        label.contentsRect().adjusted(label.margin(), label.margin(), -label.margin(), -label.margin());
    if (label.wordWrap())
        return paragraphFaults(label, room);
    const bool mayBeCut = qobject_cast<const ui::ElidedLabel *>(&label)
                          && (text.size() >= lengthThatMayBeCut || text.endsWith(u'…'));
    QStringList faults{mayBeCut ? QString() : tooSmall(label, text, room.size())};
    if (room.height() < label.fontMetrics().height())
        faults.append(u"%1 has %2 px of height for a line of %3"_s.arg(nameOf(label, text))
                          .arg(room.height())
                          .arg(label.fontMetrics().height()));
    return faults;
}

QStringList buttonFaults(const QAbstractButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    const bool isCheckBox = qobject_cast<const QCheckBox *>(&button) != nullptr;
    const QRect room = button.style()->subElementRect(
        isCheckBox ? QStyle::SE_CheckBoxContents : QStyle::SE_PushButtonContents, &option, &button);
    QString shown = button.text();
    shown.replace(u"&&"_s, u"&"_s);
    return {tooSmall(button, shown, room.size())};
}

QStringList fieldFaults(const QLineEdit &field)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    const QRect room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    const QString text = field.text().isEmpty() ? field.placeholderText() : QString();
    // A line edit keeps 2 px free at either end.
    QStringList faults{tooSmall(field, text, room.adjusted(2, 0, -2, 0).size())};
    if (room.height() < field.fontMetrics().height())
        faults.append(u"%1 has %2 px of height for a line of %3"_s.arg(nameOf(field, text))
                          .arg(room.height())
                          .arg(field.fontMetrics().height()));
    return faults;
}

QStringList choiceFaults(const QComboBox &choice)
{
    QStyleOptionComboBox option;
    option.initFrom(&choice);
    option.currentText = choice.currentText();
    const QRect room =
        choice.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &choice);
    return {tooSmall(choice, choice.currentText(), room.size())};
}

/// Entries that are texts of their own, and not widgets.
QStringList entryFaults(const QAbstractItemView &list)
{
    QStringList faults;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        const QString text = index.data().toString();
        faults += glyphFaults(text, list.font());
        const int needed = list.sizeHintForIndex(index).width();
        if (text.size() < lengthThatMayBeCut && needed > list.viewport()->width())
            faults.append(u"%1 has %2 px for an entry of %3"_s.arg(nameOf(list, text))
                              .arg(list.viewport()->width())
                              .arg(needed));
    }
    return faults;
}

QStringList menuFaults(const QMenu &menu)
{
    QStringList faults;
    for (const QAction *action : menu.actions()) {
        const QRect room = menu.actionGeometry(const_cast<QAction *>(action));
        if (!menu.rect().contains(room))
            faults.append(u"'%1' reaches out of its menu"_s.arg(action->text()));
        faults += tooSmall(menu, action->text(), room.size());
        faults += glyphFaults(action->text(), menu.font());
    }
    return faults;
}

QStringList textFaults(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return labelFaults(*label) + glyphFaults(label->text(), label->font());
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return buttonFaults(*button) + glyphFaults(button->text(), button->font());
    if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
        return fieldFaults(*field) + glyphFaults(field->text() + field->placeholderText(), field->font());
    if (const auto *choice = qobject_cast<const QComboBox *>(&widget))
        return choiceFaults(*choice) + glyphFaults(choice->currentText(), choice->font());
    if (const auto *list = qobject_cast<const QAbstractItemView *>(&widget))
        return entryFaults(*list);
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        return menuFaults(*menu);
    return {};
}

/// What scrolls may be higher than its view, and is seen bit by bit; wider than it nothing is.
QStringList placeFaults(const QWidget &widget)
{
    const QWidget *around = widget.parentWidget();
    if (widget.isWindow() || !around)
        return {};
    const auto *area = qobject_cast<const QAbstractScrollArea *>(around->parentWidget());
    const bool scrolls = area && area->viewport() == around;
    const QRect place = widget.geometry();
    const QRect room = around->rect();
    if (place.left() < room.left() || place.right() > room.right()
        || (!scrolls && (place.top() < room.top() || place.bottom() > room.bottom())))
        return {u"%1 at %2,%3 %4x%5 reaches out of %6 of %7x%8"_s.arg(nameOf(widget))
                    .arg(place.x())
                    .arg(place.y())
                    .arg(place.width())
                    .arg(place.height())
                    .arg(nameOf(*around))
                    .arg(room.width())
                    .arg(room.height())};
    return {};
}

QList<const QWidget *> visibleChildren(const QWidget &widget)
{
    QList<const QWidget *> children;
    for (const auto *child : widget.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->isWindow())
            children.append(child);
    }
    return children;
}

QStringList overlaps(const QList<const QWidget *> &children)
{
    QStringList faults;
    for (qsizetype i = 0; i < children.size(); ++i) {
        for (qsizetype j = i + 1; j < children.size(); ++j) {
            if (children[i]->geometry().intersects(children[j]->geometry()))
                faults.append(u"%1 and %2 overlap"_s.arg(nameOf(*children[i]), nameOf(*children[j])));
        }
    }
    return faults;
}

/// What the toolkit puts together by itself; its inside is its own.
bool isOneThing(const QWidget &widget)
{
    return qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QComboBox *>(&widget)
           || qobject_cast<const QLabel *>(&widget);
}

} // namespace

QStringList screenFaults(const QWidget &root)
{
    QStringList faults = textFaults(root) + placeFaults(root);
    if (!isOneThing(root)) {
        const QList<const QWidget *> children = visibleChildren(root);
        faults += overlaps(children);
        for (const QWidget *child : children)
            faults += screenFaults(*child);
    }
    faults.removeAll(QString());
    faults.removeDuplicates();
    return faults;
}

} // namespace tideloft::tests
