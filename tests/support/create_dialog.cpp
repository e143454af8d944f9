// Finding and using the parts of the create-server dialog.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/create_dialog.h"

#include "tests/support/popups.h"
#include "tests/support/widget_parts.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

bool withCreateDialog(const QWidget &window, const std::function<void(QDialog &)> &use)
{
    return withDialog([&window] { clickAt(named(window, u"railBtn=+"_s), {18, 18}); }, use);
}

QLineEdit *nameOf(const QDialog &dialog)
{
    return dialog.findChildren<QLineEdit *>().value(0);
}

QLineEdit *descriptionOf(const QDialog &dialog)
{
    return dialog.findChildren<QLineEdit *>().value(1);
}

QPushButton *cancelOf(const QDialog &dialog)
{
    return only<QPushButton>(dialog, u"cancelBtn"_s);
}

QPushButton *createOf(const QDialog &dialog)
{
    for (auto *button : dialog.findChildren<QPushButton *>()) {
        if (button->objectName().isEmpty())
            return button;
    }
    qFatal("The dialog has no button that creates");
}

void fillIn(const QDialog &dialog, const QString &name, const QString &description)
{
    clickOnScreen(*nameOf(dialog));
    typeText(name);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
    typeText(description);
}

} // namespace tideloft::tests
