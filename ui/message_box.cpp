// Showing a message.
#include "ui/message_box.h"

#include "ui/bounded_text.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void showMessage(QWidget *parent, Severity severity, const QString &text)
{
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(severity == Severity::Warning ? QMessageBox::Warning : QMessageBox::Information);
    box->setWindowTitle(u"TideLoft"_s);
    box->setStandardButtons(QMessageBox::Ok);
    box->setTextFormat(Qt::PlainText); // before the text: the box would guess its format
    box->setText(firstPart(text, errorLimits));
    box->open();
}

void showWarning(QWidget *parent, const QString &text)
{
    showMessage(parent, Severity::Warning, text);
}

} // namespace tideloft::ui
