// The form of an upload: which suffix stands in its headers, and what cannot be uploaded.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/image_upload.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tideloft::net;

class TestImageUpload : public QObject
{
    Q_OBJECT

private slots:
    void suffixes_data();
    void suffixes();
    void regularFilesAreOpened();
    void nothingElseIsOpened_data();
    void nothingElseIsOpened();

private:
    const QTemporaryDir directory;
};

void TestImageUpload::suffixes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lower-cased") << u"/a/Me.PNG"_s << u"png"_s;
    QTest::newRow("JPG is not made jpeg") << u"Me.JPG"_s << u"jpg"_s;
    QTest::newRow("after the last dot") << u"/a.b/my.old.GIF"_s << u"gif"_s;
    QTest::newRow("none") << u"/a.b/picture"_s << QString();
    QTest::newRow("ends with a dot") << u"picture."_s << QString();
    QTest::newRow("quote") << u"a.p\"; x=\"ng"_s << u"p; x=ng"_s;
    QTest::newRow("backslash") << u"a.p\\n\\\\g\\"_s << u"png"_s;
    QTest::newRow("line break") << u"a.png\r\nX-Injected: yes"_s << u"pngx-injected: yes"_s;
    QTest::newRow("control characters") << u"a.p\u0001n\u007fg\u0085"_s << u"png"_s;
}

void TestImageUpload::suffixes()
{
    QFETCH(const QString, path);
    QFETCH(const QString, expected);
    QCOMPARE(headerSuffix(path), expected);
}

void TestImageUpload::regularFilesAreOpened()
{
    const QString path = directory.filePath(u"Me.PNG"_s);
    QVERIFY(tideloft::tests::writeFile(path, "picture"));
    const auto body = makeImageBody(u"avatar"_s, path);
    QVERIFY(body);
    const auto *file = body->findChild<QFile *>(); // the body owns it
    QVERIFY(file && file->isOpen());
    QCOMPARE(file->fileName(), path);
}

void TestImageUpload::nothingElseIsOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing there") << directory.filePath(u"missing.png"_s);
    QTest::newRow("no path") << QString();
    QTest::newRow("directory") << directory.path();
    QTest::newRow("device without an end") << u"/dev/zero"_s;
    const QString pipe = directory.filePath(u"pipe.png"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QTest::newRow("pipe that nobody writes to") << pipe;
}

// Where it would wait for ever, a hang of this test is its failure.
void TestImageUpload::nothingElseIsOpened()
{
    QFETCH(const QString, path);
    QVERIFY(!makeImageBody(u"avatar"_s, path));
}

TIDELOFT_TEST_MAIN(TestImageUpload)
#include "tst_image_upload.moc"
