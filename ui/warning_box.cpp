// Showing a warning.
#include "ui/warning_box.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void showWarning(QWidget *parent, const QString &text)
{
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(u"TideLoft"_s);
    box->setStandardButtons(QMessageBox::Ok);
    box->setTextFormat(Qt::PlainText); // before the text: the box would guess its format
    box->setText(text);
    box->open();
}

} // namespace tideloft::ui
