// Finding the parts of a window or of a page, and reading how each is made.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>
#include <QWidget>

class QBoxLayout;

namespace tideloft::tests
{

/// From here to its end a test fails at a warning about painting, objects, layouts or style sheets.
void failOnToolkitWarnings();

/// The only widget of that type and name below ROOT; the test program ends where there is none or another.
template <typename Widget> Widget *only(const QWidget &root, const QString &name)
{
    const QList<Widget *> found = root.findChildren<Widget *>(name);
    if (found.size() != 1)
        qFatal("%lld widgets are called %s", qlonglong(found.size()), qPrintable(name));
    return found.first();
}

/// The widget that a table calls WHAT: an object name, "name=text" for the one of that name with that text,
/// or "username" and "password" for the fields of the sign-in page. None: the test program ends.
QWidget *named(const QWidget &root, const QString &what);

/// Waits until the client's WINDOW, which is shown, has made its main page; the test program ends if it does
/// not.
void waitForMainPage(const QWidget &window);

/// A property of WIDGET, enumerations and the cursor as numbers. "fixedWidth" and "fixedHeight" are the size
/// on which minimum and maximum agree, invalid where they do not.
QVariant propertyOf(const QWidget &widget, const QByteArray &property);

/// The items of LAYOUT in order: "#name" or a class, buttons with their text, a spacing's pixels, "stretch",
/// "[...]" for a layout inside; "*n" behind an item with stretch factor n.
QString itemsOf(const QBoxLayout *layout);
QString itemsOf(const QWidget *owner); ///< of its layout
/// "left top right bottom, spacing n" of the layout of OWNER.
QString spacesOf(const QWidget *owner);

} // namespace tideloft::tests
