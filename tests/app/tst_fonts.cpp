// "Segoe UI" is stood in for by fonts that a Debian has.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QFont>

using namespace Qt::StringLiterals;

class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    void textThenColourEmoji();
};

void TestFonts::textThenColourEmoji()
{
    QCOMPARE(QFont::substitutes(u"Segoe UI"_s), QStringList());
    tideloft::app::substituteFonts();
    // The toolkit keeps these names in lower case.
    QCOMPARE(QFont::substitutes(u"Segoe UI"_s), (QStringList{u"dejavu sans"_s, u"noto color emoji"_s}));
}

TIDELOFT_GUI_TEST_MAIN(TestFonts)
#include "tst_fonts.moc"
