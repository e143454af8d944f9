// A server's icon, from its menu in the rail to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray iconUpload = QByteArrayLiteral("POST /api/groups/g2/icon");

QJsonArray twoServers(const QString &secondName = u"Two"_s)
{
    return {server(u"g1"_s, u"One"_s), server(u"g2"_s, secondName)};
}

// Takes "Upload server icon" in the menu of the second server, and lets CHOOSE work with the file dialog.
bool uploadIcon(const GuiProbe &probe, const std::function<void(QFileDialog &)> &choose)
{
    const Person<QFileDialog> person(choose);
    const bool opened = withServerMenu(
        probe,
        [](const QMenu *menu) {
            press(*menu, Qt::Key_Down);
            press(*menu, Qt::Key_Return);
        },
        1);
    return opened && person.hasAnswered();
}

bool uploadIcon(const GuiProbe &probe, const QString &path)
{
    return uploadIcon(probe, [&](const QFileDialog &dialog) { choosePath(dialog, path); });
}

} // namespace

class TestServerIcon : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void bytesOnTheWire_data();
    void bytesOnTheWire();
    void aSuffixWithControlCharacters();
    void neitherSizeNorKindIsChecked();
    void successAsksForTheList();
    void theOpenServerStaysOpen();
    void failuresAreSilent_data();
    void failuresAreSilent();
    void whatCannotBeReadIsSilent_data();
    void whatCannotBeReadIsSilent();
    void listArrivesWhileTheDialogIsOpen();

private:
    const PictureFolder files;
};

void TestServerIcon::bytesOnTheWire_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("suffix");
    QTest::newRow("PNG in capitals") << u"Icon.PNG"_s << QByteArray("png");
    QTest::newRow("JPG is not made jpeg") << u"icon.JPG"_s << QByteArray("jpg");
    QTest::newRow("no suffix") << u"icon"_s << QByteArray();
}

void TestServerIcon::bytesOnTheWire()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, suffix);
    const QString path = files.write(name, contentOf(files.writeWidePicture(u"wide.png"_s)));
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    QVERIFY(uploadIcon(probe, path));
    QVERIFY(probe.service.waitForRequests(iconUpload, 1));
    const RecordedRequest request = probe.service.lastRequest(iconUpload);
    QCOMPARE(sentUpload(request),
             wantedUpload(request, "/api/groups/g2/icon", "icon", suffix, contentOf(path)));
    QVERIFY(!request.hasHeader("X-Device-Token"));
    QVERIFY(!request.hasHeader("X-Device-Name"));
}

// No key types such a name, but the clipboard holds it.
void TestServerIcon::aSuffixWithControlCharacters()
{
    const QString path = files.write(u"icon.p\u0001n\u0085g"_s, "icon");
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    QVERIFY(uploadIcon(probe, [&](const QFileDialog &dialog) {
        auto *edit = only<QLineEdit>(dialog, u"fileNameEdit"_s);
        edit->setCompleter(nullptr);
        edit->setFocus();
        QGuiApplication::clipboard()->setText(path);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(edit->text(), path);
        press(dialog, Qt::Key_Return);
    }));
    QVERIFY(probe.service.waitForRequests(iconUpload, 1));
    const RecordedRequest request = probe.service.lastRequest(iconUpload);
    QCOMPARE(sentUpload(request), wantedUpload(request, "/api/groups/g2/icon", "icon", "png", "icon"));
}

void TestServerIcon::neitherSizeNorKindIsChecked()
{
    const qint64 size = 5242881;
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    QVERIFY(uploadIcon(probe, files.writeOfSize(u"large.txt"_s, size)));
    QTRY_COMPARE_WITH_TIMEOUT(probe.service.count(iconUpload), 1, 60000); // 5 MB on a busy machine
    QCOMPARE(messageCount(), 0);
    const RecordedRequest request = probe.service.lastRequest(iconUpload);
    QVERIFY(sentUpload(request)
            == wantedUpload(request, "/api/groups/g2/icon", "icon", "txt", QByteArray(size, '\0')));
}

void TestServerIcon::successAsksForTheList()
{
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    probe.service.answer(requests::listServers, 200, QJsonDocument(twoServers(u"Renamed"_s)).toJson());
    probe.service.answer(iconUpload, 200, R"({"iconUrl":"/icons/2"})");
    probe.service.hold(iconUpload);
    const qsizetype before = probe.service.count(requests::listServers);
    QVERIFY(uploadIcon(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(iconUpload, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::listServers), before); // not before the answer
    probe.service.release(iconUpload);
    QTRY_COMPARE(serverButtons(probe).at(1)->toolTip(), u"Renamed"_s);
    QCOMPARE(probe.service.count(requests::listServers), before + 1);
    QVERIFY(serverButtons(probe).at(1)->icon().isNull()); // the rail keeps to initials
    QCOMPARE(serverButtons(probe).at(1)->text(), u"R"_s);
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.service.count("GET /icons/2"), 0);
}

void TestServerIcon::theOpenServerStaysOpen()
{
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    probe.service.answer(iconUpload, 200, R"({"iconUrl":"/icons/2"})");
    clickOnScreen(*serverButtons(probe).constFirst());
    const qsizetype before = probe.service.count(requests::listServers);
    QVERIFY(uploadIcon(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(requests::listServers, before + 1));
    QVERIFY(probe.settle());
    QVERIFY(serverButtons(probe).at(0)->isChecked());
    QVERIFY(!serverButtons(probe).at(1)->isChecked());
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
}

void TestServerIcon::failuresAreSilent_data()
{
    QTest::addColumn<int>("status"); // 0: no answer
    for (const int status : {400, 403, 413, 500, 0})
        QTest::addRow("%d", status) << status;
}

void TestServerIcon::failuresAreSilent()
{
    QFETCH(int, status);
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    if (status)
        probe.service.answer(iconUpload, status, R"({"iconUrl":"/icons/2","message":"No"})");
    else
        probe.service.drop(iconUpload);
    const qsizetype before = probe.service.count(requests::listServers);
    const QString path = files.writeWidePicture(u"wide.png"_s);
    QVERIFY(uploadIcon(probe, path));
    QVERIFY(probe.service.waitForRequests(iconUpload, 1));
    QVERIFY(uploadIsOver(path));
    QVERIFY(probe.settle()); // a list asked for after the failure would have been seen by now
    QCOMPARE(probe.service.count(requests::listServers), before);
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
    QCOMPARE(serverButtons(probe).size(), 2);
}

void TestServerIcon::whatCannotBeReadIsSilent_data()
{
    QTest::addColumn<bool>("pipe");
    QTest::newRow("gone since it was chosen") << false;
    QTest::newRow("a pipe by now") << true;
}

void TestServerIcon::whatCannotBeReadIsSilent()
{
    QFETCH(bool, pipe);
    const QString path = files.write(u"passing.png"_s, "x");
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    probe.service.clear();
    QVERIFY(uploadIcon(probe, [&](const QFileDialog &dialog) {
        connect(&dialog, &QFileDialog::fileSelected, &dialog, [&] {
            QVERIFY(QFile::remove(path));
            if (pipe)
                QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        });
        choosePath(dialog, path);
    }));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
    QCOMPARE(messageCount(), 0);
    QFile::remove(path);
}

// The rebuild deletes the button whose menu led here; the choice still counts for its server.
void TestServerIcon::listArrivesWhileTheDialogIsOpen()
{
    SettingsProbe probe;
    QVERIFY(listServers(probe, twoServers()));
    const QPointer<QAbstractButton> old = serverButtons(probe).at(1);
    const QString path = files.writeWidePicture(u"wide.png"_s);
    QVERIFY(uploadIcon(probe, [&](const QFileDialog &dialog) {
        QVERIFY(callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, {})));
        QVERIFY(!old);
        choosePath(dialog, path);
    }));
    QVERIFY(probe.service.waitForRequests(iconUpload, 1));
}

TIDELOFT_GUI_TEST_MAIN(TestServerIcon)
#include "tst_server_icon.moc"
