// The create-server dialog as it stands there: its frame, its texts, its styles, its order.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/create_dialog.h"
#include "tests/support/popups.h"
#include "tests/support/rail_page_probe.h"
#include "tests/support/settings_parts.h"
#include "tests/support/tab_order.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestCreateServerDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void frame();
    void layoutAsDesigned();
    void fieldsAsDesigned();
    void stylesOfTheLabels();
    void texts_data();
    void texts();
    void textsFollowTheLanguageOfTheMoment();
    void startsInTheNameField();
    void tabOrderFollowsReadingOrder();
    void eachOpeningMakesItsOwn();
};

void TestCreateServerDialog::frame()
{
    const RailPageProbe probe;
    const bool came = withCreateDialog(probe.window, [&probe](const QDialog &dialog) {
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
        QCOMPARE(dialog.parentWidget(), static_cast<const QWidget *>(&probe.window));
        QCOMPARE(propertyOf(dialog, "fixedWidth"), QVariant(380));
        QCOMPARE(dialog.styleSheet(),
                 u"QDialog { background: #0f1923; color: #e8f0f8; }"
                 "QLabel { color: #e8f0f8; background: transparent; }"
                 "QLineEdit { background: #0c151e; border: 1px solid #1a2d40; border-radius: 6px;   "
                 "padding: 8px 12px; color: #e8f0f8; font-size: 13px; }"
                 "QLineEdit:focus { border-color: #3b8beb; }"
                 "QPushButton { background: #3b8beb; color: #fff; border: none; border-radius: 7px;   "
                 "padding: 8px 20px; font-size: 12px; font-weight: 600; }"
                 "QPushButton:hover { background: #5aa0f5; }"
                 "QPushButton#cancelBtn { background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060; }"
                 "QPushButton#cancelBtn:hover { background: #2a4060; }"_s);
    });
    QVERIFY(came);
}

void TestCreateServerDialog::layoutAsDesigned()
{
    const RailPageProbe probe;
    const bool came = withCreateDialog(probe.window, [](const QDialog &dialog) {
        QVERIFY(qobject_cast<QVBoxLayout *>(dialog.layout()));
        QCOMPARE(spacesOf(&dialog), u"24 24 24 24, spacing 14"_s);
        QCOMPARE(itemsOf(&dialog), u"QLabel QLabel QLabel QLineEdit QLabel QLineEdit "
                                   "[#cancelBtn(Cancel) QPushButton(Create server)]"_s);
        const QRect cancel = cancelOf(dialog)->geometry();
        const QRect create = createOf(dialog)->geometry();
        QCOMPARE(cancel.left(), 24);
        QCOMPARE(create.right() + 1, 380 - 24);
        QCOMPARE(cancel.center().y(), create.center().y()); // side by side
        QVERIFY(cancel.right() < create.left());
        QCOMPARE(nameOf(dialog)->width(), 380 - 48);
    });
    QVERIFY(came);
}

void TestCreateServerDialog::fieldsAsDesigned()
{
    const RailPageProbe probe;
    const bool came = withCreateDialog(probe.window, [](const QDialog &dialog) {
        QCOMPARE(dialog.findChildren<QLineEdit *>().size(), 2);
        QCOMPARE(nameOf(dialog)->maxLength(), 32);
        QCOMPARE(descriptionOf(dialog)->maxLength(), 200);
        for (const QLineEdit *field : dialog.findChildren<QLineEdit *>()) {
            QCOMPARE(field->text(), QString());
            QCOMPARE(field->echoMode(), QLineEdit::Normal);
            QCOMPARE(field->styleSheet(), QString()); // the dialog's own sheet dresses it
        }
        QCOMPARE(nameOf(dialog)->accessibleName(), u"Server name"_s);
        QCOMPARE(descriptionOf(dialog)->accessibleName(), u"Description (optional)"_s);
        QCOMPARE(dialog.findChildren<QPushButton *>().size(), 2);
    });
    QVERIFY(came);
}

void TestCreateServerDialog::stylesOfTheLabels()
{
    const QString field = u"font-size: 11px; font-weight: 600; color: #7ab0f5; background: transparent;"_s;
    const QStringList expected{
        u"font-size: 16px; font-weight: 700; color: #e8f0f8; background: transparent;"_s,
        u"font-size: 11px; color: #5a7a9a; background: transparent;"_s, field, field};
    const RailPageProbe probe;
    const bool came = withCreateDialog(probe.window, [&expected](const QDialog &dialog) {
        QStringList styles;
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            styles.append(label->styleSheet());
        QCOMPARE(styles, expected);
        QVERIFY(dialog.findChildren<QLabel *>().at(1)->wordWrap());
    });
    QVERIFY(came);
}

void TestCreateServerDialog::texts_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QStringList>("placeholders");
    QTest::addColumn<QStringList>("buttons");
    QTest::newRow("English") << Language::English << u"Create server"_s
                             << QStringList{u"Create a new server"_s,
                                            u"Give your server a name and description."_s, u"Server name"_s,
                                            u"Description (optional)"_s}
                             << QStringList{u"e.g. My Community"_s, u"Describe your server..."_s}
                             << QStringList{u"Cancel"_s, u"Create server"_s};
    QTest::newRow("Swedish") << Language::Swedish << u"Skapa server"_s
                             << QStringList{u"Skapa en ny server"_s,
                                            u"Ge din server ett namn och en beskrivning."_s, u"Servernamn"_s,
                                            u"Beskrivning (valfritt)"_s}
                             << QStringList{u"t.ex. Mitt Community"_s, u"Beskriv din server..."_s}
                             << QStringList{u"Avbryt"_s, u"Skapa server"_s};
}

void TestCreateServerDialog::texts()
{
    QFETCH(Language, language);
    const RailPageProbe probe(language);
    const bool came = withCreateDialog(probe.window, [](const QDialog &dialog) {
        QTEST(dialog.windowTitle(), "title");
        QTEST(labelTexts(&dialog), "labels");
        QTEST((QStringList{nameOf(dialog)->placeholderText(), descriptionOf(dialog)->placeholderText()}),
              "placeholders");
        QTEST((QStringList{cancelOf(dialog)->text(), createOf(dialog)->text()}), "buttons");
    });
    QVERIFY(came);
}

void TestCreateServerDialog::textsFollowTheLanguageOfTheMoment()
{
    const RailPageProbe probe(Language::English);
    probe.rail->retranslate(Language::Swedish);
    const bool came = withCreateDialog(
        probe.window, [](const QDialog &dialog) { QCOMPARE(dialog.windowTitle(), u"Skapa server"_s); });
    QVERIFY(came);
}

void TestCreateServerDialog::startsInTheNameField()
{
    const RailPageProbe probe;
    const bool came = withCreateDialog(probe.window, [](const QDialog &dialog) {
        QCOMPARE(QApplication::focusWidget(), nameOf(dialog));
        typeText(u"Club"_s);
        QCOMPARE(nameOf(dialog)->text(), u"Club"_s);
    });
    QVERIFY(came);
}

void TestCreateServerDialog::tabOrderFollowsReadingOrder()
{
    const RailPageProbe probe;
    QStringList order;
    QVERIFY(withCreateDialog(probe.window,
                             [&order](const QDialog &dialog) { order = tabOrder(&dialog, nameOf(dialog)); }));
    QCOMPARE(order,
             (QStringList{u"Server name"_s, u"Description (optional)"_s, u"Cancel"_s, u"Create server"_s}));
}

// A dialog stays with the window when it is closed, and the next one knows nothing of it.
void TestCreateServerDialog::eachOpeningMakesItsOwn()
{
    const RailPageProbe probe;
    QVERIFY(withCreateDialog(probe.window, [](QDialog &dialog) {
        typeText(u"Club"_s);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    }));
    const bool cameAgain = withCreateDialog(
        probe.window, [](const QDialog &dialog) { QCOMPARE(nameOf(dialog)->text(), QString()); });
    QVERIFY(cameAgain);
    QCOMPARE(probe.window.findChildren<QDialog *>().size(), 2);
}

TIDELOFT_GUI_TEST_MAIN(TestCreateServerDialog)
#include "tst_create_server_dialog.moc"
