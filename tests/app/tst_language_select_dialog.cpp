// The first start's question: its looks to the pixel, and what each answer does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/language_select_dialog.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QWindow>

using namespace Qt::StringLiterals;
using tideloft::app::LanguageSelectDialog;

namespace
{

using Rules = QMap<QString, QString>; // property to value

const QString uiFont = u"\"Segoe UI\", system-ui, sans-serif"_s;

Rules rulesOf(const QString &block)
{
    Rules rules;
    for (const QString &rule : block.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype colon = rule.indexOf(u':');
        if (colon > 0)
            rules.insert(rule.left(colon).simplified(), rule.mid(colon + 1).simplified());
    }
    return rules;
}

QMap<QString, Rules> parsed(const QString &sheet)
{
    static const QRegularExpression block(u"([^{}]+)\\{([^{}]*)\\}"_s);
    QMap<QString, Rules> blocks;
    for (const QRegularExpressionMatch &match : block.globalMatch(sheet))
        blocks.insert(match.captured(1).simplified(), rulesOf(match.captured(2)));
    return blocks;
}

QList<QPushButton *> languageButtons(const QWidget &dialog)
{
    return dialog.findChildren<QPushButton *>(u"langBtn"_s);
}

} // namespace

class TestLanguageSelectDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings().clear(); }
    void window();
    void card();
    void brandLine();
    void buttons();
    void contentsFromTopToBottom();
    void styleSheet_data();
    void styleSheet();
    void styleSheetHasNoOtherSelector();
    void fontsThatResult();
    void onlyTheRoundedCardIsVisible();
    void buttonColours();
    void answers_data();
    void answers();
    void escapeRejectsAndStoresNothing();
    void standsAtSwedishUntilAnswered();
};

void TestLanguageSelectDialog::window()
{
    const LanguageSelectDialog dialog;
    QCOMPARE(dialog.windowFlags(), Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(dialog.minimumSize(), QSize(420, 300));
    QCOMPARE(dialog.maximumSize(), QSize(420, 300));
    QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(dialog.parentWidget(), nullptr);
}

void TestLanguageSelectDialog::card()
{
    const LanguageSelectDialog dialog;
    const auto *outer = qobject_cast<QVBoxLayout *>(dialog.layout());
    QVERIFY(outer);
    QCOMPARE(outer->contentsMargins(), QMargins());
    QCOMPARE(outer->count(), 1);
    const QWidget *found = outer->itemAt(0)->widget();
    QCOMPARE(found->objectName(), u"card"_s);
    const auto *column = qobject_cast<QVBoxLayout *>(found->layout());
    QVERIFY(column);
    QCOMPARE(column->contentsMargins(), QMargins(36, 32, 36, 32));
    QCOMPARE(column->spacing(), 0);
}

void TestLanguageSelectDialog::contentsFromTopToBottom()
{
    const LanguageSelectDialog dialog;
    const QLayout *column = dialog.findChild<QWidget *>(u"card"_s)->layout();
    QStringList contents;
    for (int i = 0; i < column->count(); ++i) {
        QLayoutItem *item = column->itemAt(i);
        if (QSpacerItem *gap = item->spacerItem())
            contents.append(QString::number(gap->sizeHint().height()));
        else
            contents.append(item->widget() ? item->widget()->objectName() : u"line"_s);
    }
    QCOMPARE(contents,
             (QStringList{u"line"_s, u"6"_s, u"subtitle"_s, u"24"_s, u"langBtn"_s, u"8"_s, u"langBtn"_s}));
    const auto *subtitle = dialog.findChild<QLabel *>(u"subtitle"_s);
    QCOMPARE(subtitle->text(), u"Choose your language / Välj ditt språk"_s);
}

void TestLanguageSelectDialog::brandLine()
{
    const LanguageSelectDialog dialog;
    const auto *line =
        qobject_cast<QHBoxLayout *>(dialog.findChild<QWidget *>(u"card"_s)->layout()->itemAt(0)->layout());
    QVERIFY(line);
    QCOMPARE(line->spacing(), 10);
    QCOMPARE(line->count(), 3);
    const auto *logo = qobject_cast<QLabel *>(line->itemAt(0)->widget());
    QCOMPARE(logo->objectName(), u"logo"_s);
    QCOMPARE(logo->text(), u"TL"_s);
    QCOMPARE(logo->minimumSize(), QSize(36, 36));
    QCOMPARE(logo->maximumSize(), QSize(36, 36));
    QCOMPARE(logo->alignment(), Qt::AlignCenter);
    const auto *name = qobject_cast<QLabel *>(line->itemAt(1)->widget());
    QCOMPARE(name->objectName(), u"brandName"_s);
    QCOMPARE(name->text(), u"TideLoft"_s);
    QVERIFY(line->itemAt(2)->spacerItem());
    QVERIFY(line->itemAt(2)->expandingDirections().testFlag(Qt::Horizontal));
}

void TestLanguageSelectDialog::buttons()
{
    const LanguageSelectDialog dialog;
    const auto both = languageButtons(dialog);
    QCOMPARE(both.size(), 2);
    QCOMPARE(both.at(0)->text(), u"🇸🇪   Svenska"_s);
    QCOMPARE(both.at(1)->text(), u"🇬🇧   English"_s);
    for (const QPushButton *button : both) {
        QCOMPARE(button->minimumHeight(), 50);
        QCOMPARE(button->maximumHeight(), 50);
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    }
}

void TestLanguageSelectDialog::styleSheet_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<Rules>("rules");
    const auto row = [](const char *selector, const Rules &rules) {
        QTest::newRow(selector) << QString::fromUtf8(selector) << rules;
    };
    row("QDialog", {{u"background"_s, u"transparent"_s}});
    row("#card", {{u"background"_s, u"#111e2a"_s},
                  {u"border"_s, u"1px solid #1a2d40"_s},
                  {u"border-radius"_s, u"16px"_s}});
    row("#logo", {{u"background"_s, u"#2e82e6"_s},
                  {u"border-radius"_s, u"10px"_s},
                  {u"color"_s, u"#ffffff"_s},
                  {u"font-size"_s, u"13px"_s},
                  {u"font-weight"_s, u"800"_s}});
    row("#brandName", {{u"font-size"_s, u"20px"_s},
                       {u"font-weight"_s, u"800"_s},
                       {u"color"_s, u"#dce9f5"_s},
                       {u"font-family"_s, uiFont},
                       {u"letter-spacing"_s, u"0.5px"_s}});
    row("#subtitle", {{u"font-size"_s, u"12px"_s}, {u"color"_s, u"#4a6e8a"_s}, {u"font-family"_s, uiFont}});
    row("QPushButton#langBtn", {{u"background"_s, u"#0f1923"_s},
                                {u"border"_s, u"1px solid #1a2d40"_s},
                                {u"border-radius"_s, u"10px"_s},
                                {u"color"_s, u"#c8d8e8"_s},
                                {u"font-size"_s, u"14px"_s},
                                {u"font-family"_s, uiFont},
                                {u"text-align"_s, u"left"_s},
                                {u"padding-left"_s, u"16px"_s}});
    row("QPushButton#langBtn:hover",
        {{u"background"_s, u"#162230"_s}, {u"border-color"_s, u"#2e82e6"_s}, {u"color"_s, u"#ffffff"_s}});
    row("QPushButton#langBtn:pressed", {{u"background"_s, u"#2e82e6"_s}, {u"color"_s, u"#ffffff"_s}});
}

void TestLanguageSelectDialog::styleSheet()
{
    QFETCH(const QString, selector);
    QFETCH(const Rules, rules);
    const LanguageSelectDialog dialog;
    QCOMPARE(parsed(dialog.styleSheet()).value(selector), rules);
}

void TestLanguageSelectDialog::styleSheetHasNoOtherSelector()
{
    const LanguageSelectDialog dialog;
    QCOMPARE(parsed(dialog.styleSheet()).size(), 8);
    for (const QWidget *widget : dialog.findChildren<QWidget *>())
        QCOMPARE(widget->styleSheet(), QString());
}

// That the toolkit understood the sheet, and that nothing overrides it.
void TestLanguageSelectDialog::fontsThatResult()
{
    LanguageSelectDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QFont logo = dialog.findChild<QLabel *>(u"logo"_s)->font();
    QCOMPARE(logo.pixelSize(), 13);
    QCOMPARE(logo.weight(), QFont::ExtraBold);
    const QFont name = dialog.findChild<QLabel *>(u"brandName"_s)->font();
    QCOMPARE(name.pixelSize(), 20);
    QCOMPARE(name.weight(), QFont::ExtraBold);
    QCOMPARE(name.families().value(0), u"Segoe UI"_s);
    QCOMPARE(name.letterSpacing(), 0.5);
    QCOMPARE(dialog.findChild<QLabel *>(u"subtitle"_s)->font().pixelSize(), 12);
    QCOMPARE(languageButtons(dialog).at(0)->font().pixelSize(), 14);
}

void TestLanguageSelectDialog::onlyTheRoundedCardIsVisible()
{
    LanguageSelectDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(dialog.windowHandle()->requestedFormat().hasAlpha());
    const QImage image = dialog.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(image.size(), QSize(420, 300));
    for (const QPoint corner : {QPoint(0, 0), QPoint(419, 0), QPoint(0, 299), QPoint(419, 299)})
        QCOMPARE(qAlpha(image.pixel(corner)), 0);
    QCOMPARE(image.pixelColor(210, 20), QColor(u"#111e2a"_s)); // the card, above its contents
    for (const QPoint edge : {QPoint(210, 0), QPoint(210, 299), QPoint(0, 150), QPoint(419, 150)})
        QCOMPARE(image.pixelColor(edge), QColor(u"#1a2d40"_s));
}

void TestLanguageSelectDialog::buttonColours()
{
    LanguageSelectDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QPushButton *button = languageButtons(dialog).at(0);
    const QPoint bare(button->width() - 20, 25); // right of the text
    const auto colour = [&] { return button->grab().toImage().pixelColor(bare); };
    QCOMPARE(colour(), QColor(u"#0f1923"_s));
    button->setDown(true);
    QCOMPARE(colour(), QColor(u"#2e82e6"_s));
}

void TestLanguageSelectDialog::answers_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("stored");
    QTest::newRow("Svenska stores sv") << 0 << 0 << u"sv"_s;
    QTest::newRow("English stores en") << 1 << 1 << u"en"_s;
}

void TestLanguageSelectDialog::answers()
{
    QFETCH(const int, button);
    QFETCH(const int, index);
    QFETCH(const QString, stored);
    LanguageSelectDialog dialog;
    QByteArray whenAccepted;
    // The file itself, by a name known before: another store of this process would write it first.
    connect(&dialog, &QDialog::accepted, &dialog, [&whenAccepted, name = QSettings().fileName()] {
        QFile file(name);
        if (file.open(QIODevice::ReadOnly))
            whenAccepted = file.readAll();
    });
    dialog.show();
    QTest::mouseClick(languageButtons(dialog).at(button), Qt::LeftButton);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.chosenLanguageIndex(), index);
    QCOMPARE(QString::fromUtf8(whenAccepted), u"[General]\nlanguage=%1\n"_s.arg(stored));
    QCOMPARE(QSettings().allKeys(), QStringList{u"language"_s});
}

void TestLanguageSelectDialog::escapeRejectsAndStoresNothing()
{
    LanguageSelectDialog dialog;
    const QSignalSpy rejected(&dialog, &QDialog::rejected);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(QSettings().allKeys(), QStringList());
}

void TestLanguageSelectDialog::standsAtSwedishUntilAnswered()
{
    QCOMPARE(LanguageSelectDialog().chosenLanguageIndex(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestLanguageSelectDialog)
#include "tst_language_select_dialog.moc"
