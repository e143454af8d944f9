// What is wrong with a picture file, and in which order it is found.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/picture_file.h"

#include <QFile>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestPictureFile : public QObject
{
    Q_OBJECT

private slots:
    void filter();
    void files_data();
    void files();
    void whatIsNoFileCannotBeOpened_data();
    void whatIsNoFileCannotBeOpened();

private:
    QString make(const QString &name, qint64 size) const
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
            qFatal("%s cannot be made", qPrintable(name));
        return file.fileName();
    }

    const QTemporaryDir folder;
};

void TestPictureFile::filter()
{
    QCOMPARE(pictureFilter(Language::English), u"Images (*.png *.jpg *.jpeg *.gif *.webp)"_s);
    QCOMPARE(pictureFilter(Language::Swedish), u"Bilder (*.png *.jpg *.jpeg *.gif *.webp)"_s);
}

void TestPictureFile::files_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("problem");
    const QString format = u"Invalid format."_s;
    for (const QString &suffix : {u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"webp"_s, u"WebP"_s})
        QTest::addRow("%s", qPrintable(suffix)) << u"photo."_s + suffix << qint64(3) << QString();
    QTest::newRow("exactly 5242880 bytes named photo.PNG pass")
        << u"photo.PNG"_s << qint64(5242880) << QString();
    QTest::newRow("one byte more is too large")
        << u"photo.png"_s << qint64(5242881) << u"File too large (max 5 MB)."_s;
    QTest::newRow("too large comes before a wrong suffix")
        << u"photo.txt"_s << qint64(5242881) << u"File too large (max 5 MB)."_s;
    QTest::newRow("archive.png.txt is refused") << u"archive.png.txt"_s << qint64(3) << format;
    QTest::newRow("no suffix") << u"png"_s << qint64(3) << format;
    QTest::newRow("another kind of picture") << u"photo.bmp"_s << qint64(3) << format;
    QTest::newRow("an empty picture is not looked into") << u"empty.png"_s << qint64(0) << QString();
}

void TestPictureFile::files()
{
    QFETCH(QString, name);
    QFETCH(qint64, size);
    QFETCH(QString, problem);
    const auto found = problemWithPicture(make(name, size));
    QCOMPARE(found ? found->english : QString(), problem);
}

void TestPictureFile::whatIsNoFileCannotBeOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << folder.filePath(u"missing.png"_s);
    QTest::newRow("directory") << folder.path();
    QTest::newRow("device") << u"/dev/zero"_s;
    const QString pipe = folder.filePath(u"pipe.png"_s);
    QVERIFY(QFile::exists(pipe) || mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    QTest::newRow("pipe") << pipe;
}

void TestPictureFile::whatIsNoFileCannotBeOpened()
{
    QFETCH(QString, path);
    const auto found = problemWithPicture(path);
    QVERIFY(found);
    QCOMPARE(found->english, u"Could not open file."_s);
    QCOMPARE(found->swedish, u"Kunde inte öppna filen."_s);
}

TIDELOFT_TEST_MAIN(TestPictureFile)
#include "tst_picture_file.moc"
