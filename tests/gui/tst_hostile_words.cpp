// Menus, dialogs, tips and titles beside hostile names; and files with hostile names that somebody chooses.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/gui/tst_hostile_probe.h"
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestHostileWords : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void probeSeesWhatIsWrong_data();
    void probeSeesWhatIsWrong();
    void besideHostileNames_data();
    void besideHostileNames();
    void fileNames_data();
    void fileNames();

private:
    const PictureFolder files;
};

namespace
{

using Maker = QWidget *(*)(const QString &text, QWidget *parent);

QWidget *makeCombo(const QString &text, QWidget *parent)
{
    auto *combo = new QComboBox(parent);
    combo->addItem(text);
    return combo;
}

QWidget *makeMenu(const QString &text, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->addAction(text);
    return menu;
}

QWidget *makeTip(const QString &text, QWidget *parent)
{
    auto *widget = new QPushButton(parent);
    widget->setToolTip(text);
    return widget;
}

QWidget *makeTitle(const QString &text, QWidget *parent)
{
    auto *widget = new QDialog(parent);
    widget->setWindowTitle(text);
    return widget;
}

QWidget *makePlaceholder(const QString &text, QWidget *parent)
{
    auto *field = new QLineEdit(parent);
    field->setPlaceholderText(text);
    return field;
}

QWidget *makeBox(const QString &text, QWidget *parent)
{
    auto *box = new QMessageBox(parent);
    box->setText(text);
    return box;
}

template <typename Widget> QWidget *make(const QString &text, QWidget *parent)
{
    return new Widget(text, parent);
}

} // namespace

Q_DECLARE_METATYPE(Maker)

void TestHostileWords::probeSeesWhatIsWrong_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("label") << Maker(make<QLabel>) << u"<b>x</b>"_s << u"markup in QLabel"_s;
    QTest::newRow("box") << Maker(makeBox) << u"<b>x</b>"_s << u"markup in QLabel"_s;
    QTest::newRow("button") << Maker(make<QPushButton>) << u"Q&A"_s << u"mnemonic in QPushButton"_s;
    QTest::newRow("menu's title") << Maker(makeMenu) << u"Q&A"_s << u"mnemonic in QMenu"_s;
    QTest::newRow("menu") << Maker(makeMenu) << u"<script>x()</script>"_s
                          << u"a text from outside in QMenu"_s;
    QTest::newRow("tip") << Maker(makeTip) << u"<b>x</b>"_s << u"markup in the tip of QPushButton"_s;
    QTest::newRow("choice") << Maker(makeCombo) << u"a <br>"_s << u"a text from outside in QComboBox"_s;
    QTest::newRow("title") << Maker(makeTitle) << u"a <br>"_s << u"a text from outside in QDialog"_s;
    QTest::newRow("placeholder") << Maker(makePlaceholder) << u"<br>"_s
                                 << u"a text from outside in QLineEdit"_s;
}

void TestHostileWords::probeSeesWhatIsWrong()
{
    QFETCH(const Maker, make);
    QFETCH(const QString, text);
    QFETCH(const QString, complaint);
    HostileProbe probe(Language::English);
    QCOMPARE(probe.trouble(), QString());
    const QScopedPointer<QWidget> wrong(make(text, probe.window.get()));
    const QString trouble = probe.trouble();
    QVERIFY2(trouble.startsWith(complaint), qPrintable(trouble));
}

void TestHostileWords::besideHostileNames_data()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("English") << Language::English;
    QTest::newRow("Swedish") << Language::Swedish;
}

// With the text as everybody's name, every menu, dialog and page is opened once and looked at while it
// stands.
void TestHostileWords::besideHostileNames()
{
    QFETCH(const Language, language);
    HostileProbe probe(language);
    const qsizetype step = rounds(5, 1);
    for (qsizetype i = language == Language::English ? 0 : 1; i < probe.texts().size(); i += step) {
        const QByteArray &name = probe.texts().at(i).name;
        const QString &text = probe.texts().at(i).text;
        QStringList found;
        const auto look = [&] { found.append(probe.trouble()); };
        QVERIFY(listServers(probe, {server(u"1"_s, text)}));
        serverButtons(probe).constFirst()->click();
        QVERIFY(probe.settle()); // the rail's new buttons are laid out
        QVERIFY2(withServerMenu(probe, [&](const QMenu *) { look(); }), name);
        QVERIFY(withUserMenu(probe, [&](const QMenu *) { look(); }));
        QVERIFY(withCreateDialog(probe, [&](QDialog &dialog) {
            nameOf(dialog)->setText(text.left(1'000));
            look();
        }));
        probe.openSettings();
        for (int section = Account; section <= About; ++section) {
            probe.clickRow(section);
            look();
        }
        QVERIFY(found.size() == 11);
        found.removeAll({});
        QVERIFY2(found.isEmpty(), name + ": " + found.join(u" | "_s).left(300).toUtf8());
    }
}

void TestHostileWords::fileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("suffix");
    QTest::newRow("markup") << u"<b>a<img src=x>.png"_s << QByteArray("png");
    QTest::newRow("ampersand") << u"Q&A &amp;.png"_s << QByteArray("png");
    QTest::newRow("line break") << u"a\nb.png"_s << QByteArray("png");
    QTest::newRow("right-to-left override") << u"a\u202egnp.png"_s << QByteArray("png");
    QTest::newRow("200 characters") << QString(196, u'W') + u".png"_s << QByteArray("png");
    QTest::newRow("place markers") << u"%1 %2 %n.png"_s << QByteArray("png");
    QTest::newRow("backslash at the end") << u"a.png\\"_s << QByteArray("png");
    QTest::newRow("backslash alone") << u"a.\\"_s << QByteArray();
    QTest::newRow("markup for a suffix") << u"a.<b>"_s << QByteArray("<b>");
}

void TestHostileWords::fileNames()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, suffix);
    const QByteArray icon = "POST /api/groups/g/icon";
    const QByteArray avatar = "POST /api/profile/avatar/upload";
    const QString path = files.write(name, "no picture");
    HostileProbe probe(Language::English);
    probe.service.answer(icon, 200, "{}");
    probe.service.answer(avatar, 200, "{}");
    QVERIFY(listServers(probe, {server(u"g"_s, u"Server"_s)}));
    const auto choose = [&](QFileDialog &dialog) {
        auto *edit = only<QLineEdit>(dialog, u"fileNameEdit"_s);
        edit->setCompleter(nullptr);
        edit->setFocus();
        edit->setText(path); // no key types such names, but programs that hand over a name do
        press(dialog, Qt::Key_Return);
    };
    {
        const Person<QFileDialog> person(choose);
        QVERIFY(withServerMenu(probe, [](const QMenu *menu) {
            press(*menu, Qt::Key_Down);
            press(*menu, Qt::Key_Return);
        }));
        QVERIFY(person.hasAnswered());
    }
    QVERIFY(probe.service.waitForRequests(icon, 1));
    const RecordedRequest request = probe.service.lastRequest(icon);
    QCOMPARE(sentUpload(request), wantedUpload(request, "/api/groups/g/icon", "icon", suffix, "no picture"));
    const Person<QFileDialog> person(choose);
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    QVERIFY(person.hasAnswered());
    if (name.endsWith(u".png"))
        QVERIFY(probe.service.waitForRequests(avatar, 1));
    else
        QCOMPARE(probe.boxText(), u"Invalid format."_s);
}

TIDELOFT_GUI_TEST_MAIN(TestHostileWords)
#include "tst_hostile_words.moc"
