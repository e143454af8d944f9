// Choosing a picture in the file dialog: every way to it, what it says, and every way out of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

namespace
{

const QByteArray iconKey = QByteArrayLiteral("POST /api/groups/g1/icon");

// Uses the control that a row of the table names. Returns once the file dialog that it opens is closed.
void take(SettingsProbe &probe, const QString &control)
{
    if (control == u"footer picture") {
        clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    } else if (control == u"settings picture") {
        clickOnScreen(*probe.the<QPushButton>(u"settingsAvatarBtn"_s));
    } else if (control == u"settings picture by key") {
        probe.the<QPushButton>(u"settingsAvatarBtn"_s)->setFocus();
        press(*probe.window, Qt::Key_Space);
    } else if (control == u"server menu") {
        QVERIFY(withServerMenu(probe, [](QMenu *menu) { clickEntry(menu, 0); }));
    } else if (control == u"server menu by key") {
        QVERIFY(withServerMenu(probe, [](const QMenu *menu) {
            press(*menu, Qt::Key_Down);
            press(*menu, Qt::Key_Return);
        }));
    } else {
        qFatal("No control is called %s", qPrintable(control));
    }
}

void addWays()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("upload");
    QTest::newRow("footer picture") << u"footer picture"_s << requests::uploadAvatar;
    QTest::newRow("settings picture") << u"settings picture"_s << requests::uploadAvatar;
    QTest::newRow("settings picture by key") << u"settings picture by key"_s << requests::uploadAvatar;
    QTest::newRow("server menu") << u"server menu"_s << iconKey;
    QTest::newRow("server menu by key") << u"server menu by key"_s << iconKey;
}

QPushButton *openButtonOf(const QFileDialog &dialog)
{
    return only<QDialogButtonBox>(dialog, u"buttonBox"_s)->button(QDialogButtonBox::Open);
}

} // namespace

class TestPictureChoice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void theDialogSays_data();
    void theDialogSays();
    void aTypedPathIsUploaded_data() { addWays(); }
    void aTypedPathIsUploaded();
    void offeredNamesGoBeforeTheDialog_data();
    void offeredNamesGoBeforeTheDialog();
    void leavingChangesNothing_data();
    void leavingChangesNothing();
    void aFileOfTheListIsUploaded_data();
    void aFileOfTheListIsUploaded();
    void onlyPicturesAreListed();

private:
    const PictureFolder files;
};

void TestPictureChoice::theDialogSays_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("filter");
    const QString english = u"Images (*.png *.jpg *.jpeg *.gif *.webp)"_s;
    const QString swedish = u"Bilder (*.png *.jpg *.jpeg *.gif *.webp)"_s;
    for (const QString &control : {u"footer picture"_s, u"settings picture"_s}) {
        QTest::addRow("%s, English", qPrintable(control))
            << Language::English << control << u"Choose profile picture"_s << english;
        QTest::addRow("%s, Swedish", qPrintable(control))
            << Language::Swedish << control << u"Välj profilbild"_s << swedish;
    }
    QTest::newRow("server menu, English")
        << Language::English << u"server menu"_s << u"Choose server icon"_s << english;
    QTest::newRow("server menu, Swedish")
        << Language::Swedish << u"server menu"_s << u"Välj server-ikon"_s << swedish;
}

void TestPictureChoice::theDialogSays()
{
    QFETCH(Language, language);
    QFETCH(QString, control);
    SettingsProbe probe(language);
    probe.openSettings();
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QString title;
    QStringList filters;
    const QObject *parent = nullptr;
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
    QStringList schemes;
    bool modal = false;
    const Person<QFileDialog> person([&](const QFileDialog &dialog) {
        title = dialog.windowTitle();
        filters = dialog.nameFilters();
        parent = dialog.parent();
        mode = dialog.fileMode();
        schemes = dialog.supportedSchemes();
        modal = dialog.isModal();
        press(dialog, Qt::Key_Escape);
    });
    take(probe, control);
    QVERIFY(person.hasAnswered());
    QTEST(title, "title");
    QFETCH(QString, filter);
    QCOMPARE(filters, QStringList{filter});
    QCOMPARE(parent, probe.window.get());
    QCOMPARE(mode, QFileDialog::ExistingFile);
    QCOMPARE(schemes, QStringList{u"file"_s});
    QVERIFY(modal);
}

void TestPictureChoice::aTypedPathIsUploaded()
{
    QFETCH(QString, control);
    QFETCH(QByteArray, upload);
    const QString path = files.writeWidePicture(u"wide picture.png"_s);
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const Person<QFileDialog> person([&](const QFileDialog &dialog) { choosePath(dialog, path); });
    take(probe, control);
    QVERIFY(person.hasAnswered());
    QVERIFY(probe.service.waitForRequests(upload, 1));
    QCOMPARE(probe.service.count(requests::uploadAvatar) + probe.service.count(iconKey), 1);
    QCOMPARE(messageCount(), 0);
}

void TestPictureChoice::offeredNamesGoBeforeTheDialog_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("upload");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("profile picture, Return")
        << u"footer picture"_s << requests::uploadAvatar << Qt::Key_Return;
    QTest::newRow("profile picture, Enter") << u"footer picture"_s << requests::uploadAvatar << Qt::Key_Enter;
    QTest::newRow("server icon, Return") << u"server menu"_s << iconKey << Qt::Key_Return;
}

void TestPictureChoice::offeredNamesGoBeforeTheDialog()
{
    QFETCH(QString, control);
    QFETCH(QByteArray, upload);
    QFETCH(Qt::Key, key);
    SettingsProbe probe;
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    files.writeWidePicture(u"wide.png"_s);
    bool wereOffered = false;
    bool stayed = true;
    const Person<QFileDialog> person([&](QFileDialog &dialog) {
        dialog.setDirectory(files.path());
        const auto *list = only<QListView>(dialog, u"listView"_s);
        QTRY_VERIFY(list->model()->rowCount(list->rootIndex()) > 0);
        auto *edit = only<QLineEdit>(dialog, u"fileNameEdit"_s);
        const QWidget *offered = edit->completer()->popup();
        connect(&dialog, &QDialog::accepted, offered, [&, offered] { stayed = offered->isVisible(); });
        edit->setText(u"wide.pn"_s); // one key brings up one popup, and none has gone before it
        typeInto(dialog, u"g"_s);
        wereOffered = waitFor([&] { return offered->isVisible(); }, patience());
        press(dialog, key);
    });
    take(probe, control);
    QVERIFY(person.hasAnswered());
    QVERIFY(wereOffered);
    QVERIFY(!stayed);
    QVERIFY(probe.service.waitForRequests(upload, 1));
}

void TestPictureChoice::leavingChangesNothing_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("way");
    for (const QString &control : {u"footer picture"_s, u"settings picture"_s, u"server menu"_s}) {
        for (const QString &way : {u"Escape"_s, u"Cancel"_s, u"the window's frame"_s})
            QTest::addRow("%s, %s", qPrintable(control), qPrintable(way)) << control << way;
    }
}

void TestPictureChoice::leavingChangesNothing()
{
    QFETCH(QString, control);
    QFETCH(QString, way);
    const QString path = files.writeWidePicture(u"wide.png"_s);
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    probe.service.clear();
    const Person<QFileDialog> person([&](QFileDialog &dialog) {
        dialog.selectFile(path); // chosen, but never confirmed
        if (way == u"Escape")
            press(dialog, Qt::Key_Escape);
        else if (way == u"Cancel")
            clickOnScreen(*only<QDialogButtonBox>(dialog, u"buttonBox"_s)->button(QDialogButtonBox::Cancel));
        else
            dialog.windowHandle()->close();
    });
    take(probe, control);
    QVERIFY(person.hasAnswered());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"AL"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

void TestPictureChoice::aFileOfTheListIsUploaded_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way : {u"click and Open"_s, u"click and Return"_s, u"double click"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestPictureChoice::aFileOfTheListIsUploaded()
{
    QFETCH(QString, way);
    const PictureFolder folder;
    folder.write(u"a first.png"_s, "first");
    folder.write(u"b second.jpg"_s, "second");
    SettingsProbe probe;
    const Person<QFileDialog> person([&](const QFileDialog &dialog) {
        choosePath(dialog, folder.path()); // a folder is entered, not chosen
        QVERIFY(dialog.isVisible());
        const auto *list = only<QListView>(dialog, u"listView"_s);
        const auto secondRow = [list] { return list->model()->index(1, 0, list->rootIndex()); };
        QTRY_COMPARE(secondRow().data().toString(), u"b second.jpg"_s); // and not before the rows are sorted
        const QRect second = list->visualRect(secondRow());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second.center());
        if (way == u"click and Open")
            clickOnScreen(*openButtonOf(dialog));
        else if (way == u"click and Return")
            press(dialog, Qt::Key_Return);
        else
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second.center());
    });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    QVERIFY(person.hasAnswered());
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QVERIFY(probe.service.lastRequest(requests::uploadAvatar).body.contains("filename=\"avatar.jpg\""));
    QVERIFY(probe.service.lastRequest(requests::uploadAvatar).body.contains("\r\n\r\nsecond\r\n"));
}

void TestPictureChoice::onlyPicturesAreListed()
{
    const PictureFolder folder;
    for (const QString &name : {u"a.png"_s, u"b.jpg"_s, u"c.jpeg"_s, u"d.gif"_s, u"e.webp"_s, u"f.txt"_s,
                                u"g.png.txt"_s, u"h.svg"_s, u"png"_s})
        folder.write(name, "x");
    SettingsProbe probe;
    QStringList listed;
    const Person<QFileDialog> person([&](const QFileDialog &dialog) {
        choosePath(dialog, folder.path());
        const auto *list = only<QListView>(dialog, u"listView"_s);
        QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 5);
        for (int row = 0; row < 5; ++row)
            listed.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
        press(dialog, Qt::Key_Escape);
    });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    QVERIFY(person.hasAnswered());
    listed.sort();
    QCOMPARE(listed, (QStringList{u"a.png"_s, u"b.jpg"_s, u"c.jpeg"_s, u"d.gif"_s, u"e.webp"_s}));
}

TIDELOFT_GUI_TEST_MAIN(TestPictureChoice)
#include "tst_picture_choice.moc"
