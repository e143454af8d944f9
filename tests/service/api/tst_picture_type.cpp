// Kinds of pictures, told from their first bytes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/picture_type.h"
#include "tests/support/test_main.h"

using tideloft::service::pictureType;

class TestPictureType : public QObject
{
    Q_OBJECT

private slots:
    void type_data();
    void type();
};

void TestPictureType::type_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("type");
    const auto row = [](const char *name, const QByteArray &content, const QByteArray &type) {
        QTest::newRow(name) << content << type;
    };
    row("PNG", "\x89PNG\r\n\x1a\nrest", "image/png");
    row("PNG without a byte of its signature", "\x89PNG\r\n\x1a", "");
    row("PNG with changed line ends", "\x89PNG\n\x1a\nrest", "");
    row("JPEG", "\xff\xd8\xff\xe0rest", "image/jpeg");
    row("two bytes of JPEG", "\xff\xd8", "");
    row("GIF of 1987", "GIF87arest", "image/gif");
    row("GIF of 1989", "GIF89arest", "image/gif");
    row("GIF of 1988", "GIF88arest", "");
    row("WebP", "RIFF\x10\x20\x30\x40WEBPVP8 ", "image/webp");
    row("WebP of size zero", QByteArray("RIFF\0\0\0\0WEBP", 12), "image/webp");
    row("sound in RIFF", "RIFF\x10\x20\x30\x40WAVEfmt ", "");
    row("short RIFF", "RIFF\x10\x20\x30\x40WEB", "");
    row("empty", "", "");
    row("SVG", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>", "");
    row("HTML", "<!DOCTYPE html><script>alert(1)</script>", "");
    row("signature not at the beginning", " \x89PNG\r\n\x1a\n", "");
    row("BMP", "BMrest", "");
    row("program",
        "\x7f"
        "ELF",
        "");
}

void TestPictureType::type()
{
    QFETCH(QByteArray, content);
    QTEST(pictureType(content), "type");
}

TIDELOFT_TEST_MAIN(TestPictureType)
#include "tst_picture_type.moc"
