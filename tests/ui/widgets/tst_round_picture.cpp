// A picture as a circle: stretched, not cropped, and clear outside.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/round_picture.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestRoundPicture : public QObject
{
    Q_OBJECT

private slots:
    void aWidePictureIsStretched_data();
    void aWidePictureIsStretched();
    void outsideTheCircleIsClear();
};

namespace
{

// 200 x 100, its outer quarters red and blue: a crop to the middle square would lose both.
QPixmap widePicture()
{
    QPixmap picture(200, 100);
    picture.fill(Qt::green);
    QPainter painter(&picture);
    painter.fillRect(0, 0, 50, 100, Qt::red);
    painter.fillRect(150, 0, 50, 100, Qt::blue);
    return picture;
}

} // namespace

void TestRoundPicture::aWidePictureIsStretched_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {34, 64, 72})
        QTest::addRow("%d", size) << size;
}

void TestRoundPicture::aWidePictureIsStretched()
{
    QFETCH(int, size);
    const QPixmap round = roundPicture(widePicture(), size);
    QCOMPARE(round.size(), QSize(size, size));
    const QImage image = round.toImage();
    QCOMPARE(image.pixelColor(3, size / 2), QColor(Qt::red));
    QCOMPARE(image.pixelColor(size / 2, size / 2), QColor(Qt::green));
    QCOMPARE(image.pixelColor(size / 2, 2), QColor(Qt::green));
    QCOMPARE(image.pixelColor(size - 4, size / 2), QColor(Qt::blue));
}

void TestRoundPicture::outsideTheCircleIsClear()
{
    const QImage image = roundPicture(widePicture(), 64).toImage();
    for (const QPoint corner : {QPoint(0, 0), QPoint(63, 0), QPoint(0, 63), QPoint(63, 63), QPoint(7, 7)})
        QCOMPARE(image.pixelColor(corner).alpha(), 0);
    QCOMPARE(image.pixelColor(12, 12).alpha(), 255);
}

TIDELOFT_GUI_TEST_MAIN(TestRoundPicture)
#include "tst_round_picture.moc"
