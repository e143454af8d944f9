// What is wrong with a chosen picture: the four checks in their order, and the boxes that say so.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

namespace
{

// What stands at PATH when the dialog has closed is no longer the file that was chosen in it.
void replaceFile(const QString &path, const QString &kind)
{
    if (!QFile::remove(path))
        qFatal("%s cannot be removed", qPrintable(path));
    bool made = kind == u"nothing";
    if (kind == u"directory")
        made = QDir().mkdir(path);
    else if (kind == u"pipe")
        made = mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
    else if (kind == u"dangling link")
        made = QFile::link(path + u".gone"_s, path);
    else if (kind.startsWith(u"link to "))
        made = QFile::link(kind.mid(8), path);
    if (!made)
        qFatal("%s does not become a %s", qPrintable(path), qPrintable(kind));
}

// Looks at the warning and closes it with its button.
void compareWarning(const SettingsProbe &probe, const QString &text)
{
    QMessageBox *box = waitForMessage();
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), u"TideLoft"_s);
    QCOMPARE(box->text(), text);
    QCOMPARE(box->informativeText(), QString());
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    QCOMPARE(box->buttons().size(), 1);
    QVERIFY(box->isModal());
    QCOMPARE(box->parent(), probe.window.get());
    press(*box, Qt::Key_Return);
    QTRY_COMPARE(messageCount(), 0);
}

void compareNothingSent(SettingsProbe &probe)
{
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::uploadAvatar), 0);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"AL"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

} // namespace

class TestPictureChecks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void refusedFiles_data();
    void refusedFiles();
    void acceptedFiles_data();
    void acceptedFiles();
    void whatIsNoRegularFileIsNotOpened_data();
    void whatIsNoRegularFileIsNotOpened();
    void aDeviceThatIsTypedIsNotOpened();
    void aDanglingLinkIsNotEvenChosen();
    void aRefusedFileCanBeFollowedByAnother();

private:
    const PictureFolder files;
};

void TestPictureChecks::refusedFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("warning");
    const auto row = [](const char *behaviour, const QString &name, qint64 size, const QString &english,
                        const QString &swedish) {
        QTest::addRow("%s, English", behaviour) << name << size << Language::English << english;
        QTest::addRow("%s, Swedish", behaviour) << name << size << Language::Swedish << swedish;
    };
    const QString large = u"File too large (max 5 MB)."_s;
    const QString stor = u"Filen är för stor (max 5 MB)."_s;
    const QString invalid = u"Invalid format."_s;
    const QString ogiltigt = u"Ogiltigt format."_s;
    row("one byte too large", u"photo.png"_s, 5242881, large, stor);
    row("one byte too large comes before a wrong suffix", u"photo.txt"_s, 5242881, large, stor);
    row("archive.png.txt is refused", u"archive.png.txt"_s, 3, invalid, ogiltigt);
    row("largest size, wrong suffix", u"photo.bmp"_s, 5242880, invalid, ogiltigt);
    row("no suffix", u"png"_s, 3, invalid, ogiltigt);
    row("a suffix that only begins well", u"photo.pngx"_s, 3, invalid, ogiltigt);
}

void TestPictureChecks::refusedFiles()
{
    QFETCH(QString, name);
    QFETCH(qint64, size);
    QFETCH(Language, language);
    QFETCH(QString, warning);
    SettingsProbe probe(language);
    QVERIFY(chooseAvatar(probe, files.writeOfSize(name, size)));
    compareWarning(probe, warning);
    compareNothingSent(probe);
}

void TestPictureChecks::acceptedFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("size");
    QTest::newRow("exactly 5242880 bytes named photo.PNG") << u"photo.PNG"_s << qint64(5242880);
    QTest::newRow("empty") << u"empty.gif"_s << qint64(0);
    for (const QString &suffix : {u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"webp"_s, u"JpEg"_s})
        QTest::addRow("%s", qPrintable(suffix)) << u"my.photo."_s + suffix << qint64(3);
}

void TestPictureChecks::acceptedFiles()
{
    QFETCH(QString, name);
    QFETCH(qint64, size);
    SettingsProbe probe;
    QVERIFY(chooseAvatar(probe, files.writeOfSize(name, size)));
    // 5 MB on a busy machine.
    QTRY_COMPARE_WITH_TIMEOUT(probe.service.count(requests::uploadAvatar), 1, 60000);
    QCOMPARE(messageCount(), 0);
    const QByteArray suffix = name.mid(name.lastIndexOf(u'.') + 1).toLower().toLatin1();
    const RecordedRequest request = probe.service.lastRequest(requests::uploadAvatar);
    QVERIFY(sentUpload(request)
            == wantedUpload(request, "/api/profile/avatar/upload", "avatar", suffix, QByteArray(size, '\0')));
}

void TestPictureChecks::whatIsNoRegularFileIsNotOpened_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("warning");
    for (const QString &kind : {u"nothing"_s, u"directory"_s, u"pipe"_s, u"link to /dev/zero"_s,
                                u"link to /proc"_s, u"dangling link"_s}) {
        QTest::addRow("%s, English", qPrintable(kind))
            << kind << Language::English << u"Could not open file."_s;
        QTest::addRow("%s, Swedish", qPrintable(kind))
            << kind << Language::Swedish << u"Kunde inte öppna filen."_s;
    }
}

// Named like a text: what cannot be opened is said before anything about its name.
void TestPictureChecks::whatIsNoRegularFileIsNotOpened()
{
    QFETCH(QString, kind);
    QFETCH(Language, language);
    QFETCH(QString, warning);
    const PictureFolder folder;
    const QString path = folder.write(u"photo.txt"_s, "x");
    SettingsProbe probe(language);
    const Person<QFileDialog> person([&](const QFileDialog &dialog) {
        connect(&dialog, &QFileDialog::fileSelected, &dialog, [&] { replaceFile(path, kind); });
        choosePath(dialog, path);
    });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    QVERIFY(person.hasAnswered());
    compareWarning(probe, warning);
    compareNothingSent(probe);
}

void TestPictureChecks::aDeviceThatIsTypedIsNotOpened()
{
    SettingsProbe probe;
    QVERIFY(chooseAvatar(probe, u"/dev/zero"_s));
    compareWarning(probe, u"Could not open file."_s);
    compareNothingSent(probe);
}

void TestPictureChecks::aDanglingLinkIsNotEvenChosen()
{
    const PictureFolder folder;
    QVERIFY(QFile::link(folder.path(u"gone.png"_s), folder.path(u"link.png"_s)));
    SettingsProbe probe;
    const Person<QFileDialog> person([&](const QFileDialog &dialog) {
        QVERIFY(!choosePath(dialog, folder.path(u"link.png"_s)));
        QVERIFY(dialog.isVisible());
        press(dialog, Qt::Key_Escape);
    });
    clickOnScreen(*probe.the<QLabel>(u"footerAvatar"_s));
    QVERIFY(person.hasAnswered());
    QCOMPARE(messageCount(), 0);
    compareNothingSent(probe);
}

void TestPictureChecks::aRefusedFileCanBeFollowedByAnother()
{
    SettingsProbe probe;
    QVERIFY(chooseAvatar(probe, files.writeOfSize(u"photo.txt"_s, 3)));
    compareWarning(probe, u"Invalid format."_s);
    QVERIFY(chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QCOMPARE(messageCount(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestPictureChecks)
#include "tst_picture_checks.moc"
