// Parts of the toolkit's own widgets: they are still where the toolkit has always had them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/toolkit_parts.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestToolkitParts : public QObject
{
    Q_OBJECT

private slots:
    void aBoxShowsItsTextInTheLabel();
    void whatIsTypedIntoTheFieldNamesTheFile();
    void aSelectableTextIsDrawnFromTheDocument();
    void aTextThatIsNotSelectableHasNone();
};

void TestToolkitParts::aBoxShowsItsTextInTheLabel()
{
    QMessageBox box(QMessageBox::Warning, u"TideLoft"_s, u"No space left"_s, QMessageBox::Ok);
    box.setInformativeText(u"Another label"_s);
    const QLabel *label = textLabelOf(&box);
    QVERIFY(label);
    QCOMPARE(label->text(), u"No space left"_s);
    box.setText(u"Now there is"_s);
    QCOMPARE(label->text(), u"Now there is"_s);
}

void TestToolkitParts::whatIsTypedIntoTheFieldNamesTheFile()
{
    QFileDialog dialog(nullptr, u"Choose"_s, QDir::tempPath());
    dialog.setFileMode(QFileDialog::AnyFile);
    QLineEdit *field = nameFieldOf(&dialog);
    QVERIFY(field);
    field->setText(u"picture.png"_s);
    QCOMPARE(dialog.selectedFiles(), QStringList{QDir(QDir::tempPath()).filePath(u"picture.png"_s)});
}

void TestToolkitParts::aSelectableTextIsDrawnFromTheDocument()
{
    QLabel label(u"See you at eight"_s);
    label.setTextFormat(Qt::PlainText);
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    label.setSelection(0, 3); // fills the document
    const QTextDocument *document = documentOf(&label);
    QVERIFY(document);
    QCOMPARE(document->toPlainText(), label.text());
}

void TestToolkitParts::aTextThatIsNotSelectableHasNone()
{
    const QLabel label(u"See you at eight"_s);
    QVERIFY(!documentOf(&label));
}

TIDELOFT_GUI_TEST_MAIN(TestToolkitParts)
#include "tst_toolkit_parts.moc"
