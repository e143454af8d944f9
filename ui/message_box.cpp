// Showing a message.
#include "ui/message_box.h"

#include "ui/bounded_text.h"

#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

bool isShown(const QWidget *parent, QMessageBox::Icon icon, const QString &text)
{
    const auto boxes = parent->findChildren<QMessageBox *>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(boxes.begin(), boxes.end(), [icon, &text](const QMessageBox *box) {
        return box->isVisible() && box->icon() == icon && box->text() == text;
    });
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
    box->setTextFormat(Qt::PlainText); // before the text: the box would guess its format
    box->setText(shown);
    box->open();
}

void showWarning(QWidget *parent, const QString &text)
{
    showMessage(parent, Severity::Warning, text);
}

} // namespace tideloft::ui
