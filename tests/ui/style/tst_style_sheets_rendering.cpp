// What the toolkit makes of the style sheets: no complaint, and the colours on screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <QApplication>

#include "tests/support/test_main.h"
#include "ui/style/chat_styles.h"
#include "ui/style/grid_widget.h"
#include "ui/style/rail_styles.h"
#include "ui/style/sidebar_styles.h"
#include "ui/style/sign_in_styles.h"
#include "ui/style/style_sheets.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestStyleSheetsRendering : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void toolkitTakesTheSheet_data();
    void toolkitTakesTheSheet();
    void toolkitTakesInlineStyles_data();
    void toolkitTakesInlineStyles();
    void plainWidgetsPaintTheirBackground();
    void childrenDoNotPaintOverTheirParent();
    void badgeIsAPill();
};

// Everything counts but the offscreen platform's remarks about what it cannot do.
void TestStyleSheetsRendering::init()
{
    QTest::failOnWarning(QRegularExpression(u"^(?!This plugin)"_s));
}

static QMainWindow *makeWindow(const QString &sheet, QWidget *content)
{
    auto *window = new QMainWindow;
    window->setStyleSheet(sheet);
    window->setCentralWidget(content);
    window->resize(400, 300);
    window->show();
    return window;
}

template <typename Widget> static Widget *makeNamed(const QString &name, QWidget *parent)
{
    auto *widget = new Widget(parent);
    widget->setObjectName(name);
    return widget;
}

static QWidget *makeOneOfEachKind()
{
    auto *content = new GridWidget;
    auto *layout = new QVBoxLayout(content);
    layout->addWidget(makeNamed<QComboBox>(u"langCombo"_s, content));
    layout->addWidget(makeNamed<QLineEdit>(u"authInput"_s, content));
    layout->addWidget(makeNamed<QPushButton>(u"primaryButton"_s, content));
    auto *list = makeNamed<QListWidget>(u"dmList"_s, content);
    for (int i = 0; i < 30; ++i)
        list->addItem(u"entry"_s);
    layout->addWidget(list);
    layout->addWidget(new QScrollArea(content));
    return content;
}

void TestStyleSheetsRendering::toolkitTakesTheSheet_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("dark") << darkStyleSheet();
    QTest::newRow("light") << lightStyleSheet();
}

void TestStyleSheetsRendering::toolkitTakesTheSheet()
{
    QFETCH(QString, sheet);
    const std::unique_ptr<QMainWindow> window(makeWindow(sheet, makeOneOfEachKind()));
    QMenu menu(window.get());
    menu.addAction(u"Log out"_s);
    QVERIFY(!menu.grab().isNull());
    const QColor corner = sheet == darkStyleSheet() ? QColor(0x07, 0x07, 0x0c) : QColor(0xf0, 0xf2, 0xf5);
    window->setCentralWidget(new QWidget);
    QCOMPARE(window->grab().toImage().pixelColor(5, 5), corner);
}

void TestStyleSheetsRendering::toolkitTakesInlineStyles_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QColor>("background");
    const QColor window(0x07, 0x07, 0x0c);
    QTest::newRow("row of the history") << style::historyRow << window;
    QTest::newRow("conversation") << style::conversationRow << window;
    QTest::newRow("rail separator") << style::railSeparator << QColor(0x1a, 0x2d, 0x40);
    QTest::newRow("footer picture") << style::footerPicture << window;
    QTest::newRow("footer button") << style::quilloryButton << QColor(0x1a, 0x2e, 0x40);
    QTest::newRow("remember me") << style::rememberCheck << window;
    QTest::newRow("conversation name") << style::conversationName << window;
    QTest::newRow("preview") << style::conversationPreview << window;
    QTest::newRow("conversation time") << style::conversationTime << window;
    QTest::newRow("own bubble") << style::ownBubble << QColor(0x2a, 0x5a, 0x8a);
    QTest::newRow("peer's bubble") << style::peerBubble << QColor(0x1e, 0x2d, 0x3d);
    QTest::newRow("sender name") << style::senderName << window;
    QTest::newRow("message text") << style::messageText << window;
    QTest::newRow("message time") << style::messageTime << window;
    QTest::newRow("day line") << style::dayLine << QColor(0x1a, 0x2d, 0x40);
    QTest::newRow("day label") << style::dayLabel << window;
    QTest::newRow("footer initials") << style::footerInitials << QColor();
    QTest::newRow("conversation avatar") << style::conversationAvatar << QColor();
    QTest::newRow("message avatar") << style::messageAvatar << QColor();
}

// A gradient has no one colour: there, that the window's colour is painted over is all that is asked.
void TestStyleSheetsRendering::toolkitTakesInlineStyles()
{
    QFETCH(QString, style);
    QFETCH(QColor, background);
    auto *content = new QWidget;
    auto *label = new QLabel(content);
    label->setFixedWidth(40);
    label->resize(40, 40);
    label->setStyleSheet(style);
    const std::unique_ptr<QMainWindow> window(makeWindow(darkStyleSheet(), content));
    const QColor painted = window->grab().toImage().pixelColor(20, label->height() / 2);
    if (background.isValid())
        QCOMPARE(painted, background);
    else
        QVERIFY(painted != QColor(0x07, 0x07, 0x0c));
}

void TestStyleSheetsRendering::plainWidgetsPaintTheirBackground()
{
    const std::unique_ptr<QMainWindow> window(
        makeWindow(darkStyleSheet(), makeNamed<QWidget>(u"inputArea"_s, nullptr)));
    const QImage image = window->centralWidget()->grab().toImage();
    QCOMPARE(image.pixelColor(100, 100), QColor(0x0a, 0x10, 0x18));
    QCOMPARE(image.pixelColor(100, 0), QColor(0x1a, 0x2d, 0x40));
}

void TestStyleSheetsRendering::childrenDoNotPaintOverTheirParent()
{
    auto *card = makeNamed<QWidget>(u"emptyInner"_s, nullptr);
    auto *layout = new QVBoxLayout(card);
    layout->addWidget(new QWidget(card));
    const std::unique_ptr<QMainWindow> window(makeWindow(lightStyleSheet(), card));
    QCOMPARE(card->grab().toImage().pixelColor(100, 100), QColor(0xf0, 0xf4, 0xfa));
}

void TestStyleSheetsRendering::badgeIsAPill()
{
    auto *content = new QWidget;
    auto *badge = makeNamed<QWidget>(u"secBadge"_s, content);
    badge->setGeometry(0, 0, 100, 20);
    const std::unique_ptr<QMainWindow> window(makeWindow(darkStyleSheet(), content));
    const QImage image = window->grab().toImage();
    QCOMPARE(image.pixelColor(0, 0), QColor(0x07, 0x07, 0x0c));
    QVERIFY(image.pixelColor(50, 10) != QColor(0x07, 0x07, 0x0c));
}

TIDELOFT_GUI_TEST_MAIN(TestStyleSheetsRendering)
#include "tst_style_sheets_rendering.moc"
