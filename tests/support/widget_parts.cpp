// Finding parts, and what lies in a layout as a text that a test can expect.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/widget_parts.h"

#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QLineEdit>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QLineEdit *authField(const QWidget &root, QLineEdit::EchoMode mode)
{
    for (auto *field : root.findChildren<QLineEdit *>(u"authInput"_s)) {
        if (field->echoMode() == mode)
            return field;
    }
    qFatal("A field of the sign-in page is missing");
}

QString describe(QLayoutItem *item)
{
    if (const auto *inner = qobject_cast<const QBoxLayout *>(item->layout()))
        return u"[%1]"_s.arg(itemsOf(inner));
    if (const QSpacerItem *spacer = item->spacerItem()) {
        if (spacer->expandingDirections() != Qt::Orientations())
            return u"stretch"_s;
        return QString::number(std::max(spacer->sizeHint().width(), spacer->sizeHint().height()));
    }
    const QWidget *widget = item->widget();
    const QString name = widget->objectName();
    const QString shown =
        name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className()) : u'#' + name;
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    return button ? u"%1(%2)"_s.arg(shown, button->text()) : shown;
}

const QBoxLayout *boxOf(const QWidget *owner)
{
    const auto *layout = qobject_cast<const QBoxLayout *>(owner->layout());
    if (!layout)
        qFatal("%s has no box layout", qPrintable(owner->objectName()));
    return layout;
}

} // namespace

void failOnToolkitWarnings()
{
    static const QRegularExpression unwanted(u"QPainter|QObject|QWidget|QLayout|QCss|Could not parse"_s);
    QTest::failOnWarning(unwanted);
}

void waitForMainPage(const QWidget &window)
{
    if (!waitFor([&window] { return window.findChild<QWidget *>(u"centerPanel"_s) != nullptr; }, patience()))
        qFatal("The main page is not made");
}

QWidget *named(const QWidget &root, const QString &what)
{
    if (what == u"username")
        return authField(root, QLineEdit::Normal);
    if (what == u"password")
        return authField(root, QLineEdit::Password);
    const qsizetype sign = what.indexOf(u'=');
    if (sign < 0)
        return only<QWidget>(root, what);
    for (auto *widget : root.findChildren<QWidget *>(what.left(sign))) {
        if (widget->property("text").toString() == what.mid(sign + 1))
            return widget;
    }
    qFatal("There is no %s", qPrintable(what));
}

QVariant propertyOf(const QWidget &widget, const QByteArray &property)
{
    if (property == "fixedWidth")
        return widget.minimumWidth() == widget.maximumWidth() ? widget.minimumWidth() : QVariant();
    if (property == "fixedHeight")
        return widget.minimumHeight() == widget.maximumHeight() ? widget.minimumHeight() : QVariant();
    if (property == "cursor")
        return static_cast<int>(widget.cursor().shape());
    const QVariant value = widget.property(property);
    const int index = widget.metaObject()->indexOfProperty(property);
    const bool counts = index >= 0 && widget.metaObject()->property(index).isEnumType();
    return counts ? value.toInt() : value;
}

QString itemsOf(const QBoxLayout *layout)
{
    QStringList items;
    for (int i = 0; i < layout->count(); ++i) {
        const int factor = layout->stretch(i);
        items.append(describe(layout->itemAt(i)) + (factor ? u"*%1"_s.arg(factor) : QString()));
    }
    return items.join(u' ');
}

QString itemsOf(const QWidget *owner)
{
    return itemsOf(boxOf(owner));
}

QString spacesOf(const QWidget *owner)
{
    const QBoxLayout *layout = boxOf(owner);
    const QMargins margins = layout->contentsMargins();
    return u"%1 %2 %3 %4, spacing %5"_s.arg(margins.left())
        .arg(margins.top())
        .arg(margins.right())
        .arg(margins.bottom())
        .arg(layout->spacing());
}

} // namespace tideloft::tests
