// Interfaces for assistive programs that the toolkit does not bring.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/accessible_role.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/elided_label.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr char roleProperty[] = "accessibleRole";

/// An assistive program's press acts as if Space had been pressed. The key is posted, not sent: what opens
/// then may run an event loop of its own, while the assistive program waits for an answer.
class PressableWidget : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &action) override
    {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (widget()->isEnabled())
            QCoreApplication::postEvent(
                widget(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, u" "_s));
    }
};

class NamedCombo : public QAccessibleWidget
{
public:
    explicit NamedCombo(QComboBox *combo) : QAccessibleWidget(combo, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return widget()->accessibleName() + u": "_s + combo()->currentText();
        case QAccessible::Value:
            return combo()->currentText();
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.hasPopup = true;
        state.expanded = combo()->view()->isVisible();
        return state;
    }

    int childCount() const override { return 1; }
    QAccessibleInterface *child(int index) const override { return index == 0 ? list() : nullptr; }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        return combo()->view()->isVisible() && list()->rect().contains(x, y) ? list() : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child && child->object() == combo()->view() ? 0 : -1;
    }

    QStringList actionNames() const override
    {
        return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &action) override
    {
        if (action != showMenuAction() && action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (combo()->view()->isVisible())
            combo()->hidePopup();
        else
            combo()->showPopup();
    }

private:
    QComboBox *combo() const { return static_cast<QComboBox *>(widget()); }
    QAccessibleInterface *list() const { return QAccessible::queryAccessibleInterface(combo()->view()); }
};

/// Says no more than the label would draw in one line: the whole text may be endlessly long.
class BoundedLabel : public QAccessibleWidget
{
public:
    explicit BoundedLabel(ElidedLabel *label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? inOneLine(static_cast<ElidedLabel *>(widget())->text())
                                         : QAccessibleWidget::text(kind);
    }
};

/// Its accessible name is its text.
class Notification : public QAccessibleWidget
{
public:
    explicit Notification(QLabel *label) : QAccessibleWidget(label, QAccessible::Notification) {}

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<QLabel *>(widget())->text()
                                         : QAccessibleWidget::text(kind);
    }
};

// Null for widgets without a role of ours: the toolkit has its own interfaces for them.
QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    const QVariant value = object ? object->property(roleProperty) : QVariant();
    auto *widget = qobject_cast<QWidget *>(object);
    auto *elided = dynamic_cast<ElidedLabel *>(object);
    if (elided && !value.isValid())
        return new BoundedLabel(elided);
    if (!value.isValid() || !widget)
        return nullptr;
    const auto role = static_cast<QAccessible::Role>(value.toInt());
    if (auto *combo = qobject_cast<QComboBox *>(widget))
        return new NamedCombo(combo); // the toolkit's cache owns what a factory makes
    auto *label = qobject_cast<QLabel *>(widget);
    if (label && role == QAccessible::Notification)
        return new Notification(label);
    if (role == QAccessible::ButtonMenu)
        return new PressableWidget(widget, role);
    return new QAccessibleWidget(widget, role);
}

} // namespace

void installAccessibleInterfaces()
{
    QAccessible::installFactory(makeInterface); // only once, however often it is asked to
}

void setAccessibleRole(QWidget *widget, QAccessible::Role role)
{
    widget->setProperty(roleProperty, static_cast<int>(role));
}

void makeNotification(QLabel *label)
{
    setAccessibleRole(label, QAccessible::Notification);
}

// The toolkit has no event for news on this desktop. Screen readers read a notification out when it is shown:
// a label that is shown already needs the event by hand.
void notify(QLabel *label, const QString &text)
{
    const bool wasShown = !label->isHidden();
    label->setText(text);
    label->show();
    if (!wasShown)
        return;
    QAccessibleEvent comesUp(label, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&comesUp);
}

void nameCombo(QComboBox *combo, const QString &name)
{
    combo->setAccessibleName(name);
    combo->view()->setAccessibleName(name);
}

} // namespace tideloft::ui
