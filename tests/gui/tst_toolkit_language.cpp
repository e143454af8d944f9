// The toolkit's own words follow the language of the window, and its errors do not.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

namespace
{

QString withoutKeys(const QString &entry)
{
    return entry.section(u'\t', 0, 0);
}

// The entries of the menu that a right click on the field brings up.
QStringList textMenuOf(QLineEdit &field)
{
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, field.rect().center(),
                                 field.mapToGlobal(field.rect().center()));
    QApplication::sendEvent(&field, &rightClick);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return {u"no menu"_s};
    QStringList entries;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            entries.append(withoutKeys(action->text()));
    }
    menu->close();
    return entries;
}

// Everything that the dialog says and that nobody typed or named, by where it stands.
QMap<QString, QString> wordsOf(const QFileDialog &dialog)
{
    QMap<QString, QString> words;
    const auto add = [&](const QObject &part, const QString &kind, const QString &text) {
        if (!text.isEmpty() && !part.objectName().isEmpty())
            words.insert(part.objectName() + u' ' + kind, text);
    };
    for (const auto *button : dialog.findChildren<QAbstractButton *>()) {
        add(*button, u"tool tip"_s, button->toolTip());
        add(*button, u"name"_s, button->accessibleName());
        add(*button, u"description"_s, button->accessibleDescription());
    }
    for (const auto *label : dialog.findChildren<QLabel *>())
        add(*label, u"text"_s, label->text());
    for (const auto *action : dialog.findChildren<QAction *>())
        add(*action, u"text"_s, action->text());
    for (const auto *button : only<QDialogButtonBox>(dialog, u"buttonBox"_s)->buttons())
        words.insert(u"button %1"_s.arg(words.size()), button->text());
    const QAbstractItemModel *files = only<QTreeView>(dialog, u"treeView"_s)->model();
    for (int column = 0; column < files->columnCount(); ++column)
        words.insert(u"column %1"_s.arg(column), files->headerData(column, Qt::Horizontal).toString());
    return words;
}

QMap<QString, QString> wordsOfFileDialog(Language language, const PictureFolder &files)
{
    const SettingsProbe probe(language);
    QMap<QString, QString> words;
    const Person<QFileDialog> person([&](QFileDialog &dialog) {
        dialog.setDirectory(files.path());
        words = wordsOf(dialog);
        press(dialog, Qt::Key_Escape);
    });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    return words;
}

} // namespace

class TestToolkitLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void textMenusFollowTheSelector();
    void everyWordOfTheFileDialogIsTranslated();
    void boxesSayOkInBothLanguages_data();
    void boxesSayOkInBothLanguages();
    void networkErrorsKeepTheToolkitsWording();

private:
    const PictureFolder files;
};

void TestToolkitLanguage::textMenusFollowTheSelector()
{
    const QStringList swedish{u"&Ångra"_s,      u"&Gör om"_s, u"Klipp &ut"_s,   u"&Kopiera"_s,
                              u"Klistra &in"_s, u"Ta bort"_s, u"Markera allt"_s};
    const QStringList english{u"&Undo"_s,  u"&Redo"_s,  u"Cu&t"_s,      u"&Copy"_s,
                              u"&Paste"_s, u"Delete"_s, u"Select All"_s};
    const GuiProbe probe;
    auto *selector = probe.the<QComboBox>(u"langCombo"_s);
    QCOMPARE(textMenuOf(*probe.username()), swedish);
    QTest::keyClick(selector, Qt::Key_Down);
    QCOMPARE(textMenuOf(*probe.username()), english);
    QTest::keyClick(selector, Qt::Key_Up);
    QCOMPARE(textMenuOf(*probe.username()), swedish);
}

void TestToolkitLanguage::everyWordOfTheFileDialogIsTranslated()
{
    const auto english = wordsOfFileDialog(Language::English, files);
    const auto swedish = wordsOfFileDialog(Language::Swedish, files);
    QVERIFY(!english.key(u"Cancel"_s).isEmpty()); // the dialog's words are seen at all
    QVERIFY(!english.key(u"Date Modified"_s).isEmpty());
    QCOMPARE(swedish.keys(), english.keys());
    QStringList same;
    for (auto word = english.begin(); word != english.end(); ++word) {
        if (swedish.value(word.key()) == word.value())
            same.append(word.key() + u": "_s + word.value());
    }
    QCOMPARE(same, QStringList());
}

void TestToolkitLanguage::boxesSayOkInBothLanguages_data()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("Swedish") << Language::Swedish;
    QTest::newRow("English") << Language::English;
}

void TestToolkitLanguage::boxesSayOkInBothLanguages()
{
    QFETCH(const Language, language);
    GuiProbe probe;
    probe.window->setLanguageIndex(static_cast<int>(language));
    const QMessageBox box(QMessageBox::Information, u"TideLoft"_s, u"text"_s, QMessageBox::Ok,
                          probe.window.get());
    QCOMPARE(box.button(QMessageBox::Ok)->text(), u"OK"_s);
}

// An error is shown in the toolkit's own words; the list of them in the user guide quotes these.
void TestToolkitLanguage::networkErrorsKeepTheToolkitsWording()
{
    const GuiProbe probe;
    setServiceBaseUrl(u"http://127.0.0.1:1"_s);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Connection refused"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestToolkitLanguage)
#include "tst_toolkit_language.moc"
