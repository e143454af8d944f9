// The window icon: there when nothing is installed, and the desktop's own where it has one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/identity.h"
#include "app/window_icon.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QImage>

using namespace Qt::StringLiterals;

namespace
{

/// A folder of icons that holds one theme, whose icon for the program is RED and 32 pixels wide.
void fillTheme(const QDir &folder)
{
    const QDir pictures(folder.filePath(u"hicolor/32x32/apps"_s));
    QVERIFY(pictures.mkpath(u"."_s));
    QFile index(folder.filePath(u"hicolor/index.theme"_s));
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=Hicolor\nDirectories=32x32/apps\n\n[32x32/apps]\nSize=32\nType=Fixed\n");
    QImage picture(32, 32, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(pictures.filePath(tideloft::app::desktopFileName + u".png"_s)));
}

} // namespace

class TestWindowIcon : public QObject
{
    Q_OBJECT

private slots:
    void carriedPictures_data();
    void carriedPictures();
    void themeComesFirst();
};

void TestWindowIcon::carriedPictures_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        QTest::addRow("%d pixels", size) << size;
}

void TestWindowIcon::carriedPictures()
{
    QFETCH(const int, size);
    const QTemporaryDir empty;
    QIcon::setThemeSearchPaths({empty.path()});
    const QIcon icon = tideloft::app::windowIcon();
    QVERIFY(icon.availableSizes().contains(QSize(size, size)));
    QCOMPARE(icon.actualSize({size, size}), QSize(size, size));
    const QImage picture = icon.pixmap(size).toImage();
    QCOMPARE(picture, QImage(u":/icons/%1.png"_s.arg(size)).convertToFormat(picture.format()));
    QCOMPARE(QIcon(icon).pixmap(size).toImage(), picture);
    QCOMPARE(picture.size(), QSize(size, size));
    QCOMPARE(picture.pixelColor(0, 0).alpha(), 0); // the corners are round
    const QColor bubble = picture.pixelColor(size / 2, size * 3 / 8);
    QVERIFY2(bubble.blue() > 200 && bubble.green() < 150, qPrintable(bubble.name()));
}

void TestWindowIcon::themeComesFirst()
{
    const QTemporaryDir folder;
    fillTheme(QDir(folder.path()));
    QIcon::setThemeSearchPaths({folder.path()});
    QIcon::setThemeName(u"hicolor"_s); // without a desktop there is none
    const QImage picture = tideloft::app::windowIcon().pixmap(32).toImage();
    QCOMPARE(picture.pixelColor(16, 16), QColor(Qt::red));
}

TIDELOFT_GUI_TEST_MAIN(TestWindowIcon)
#include "tst_window_icon.moc"
