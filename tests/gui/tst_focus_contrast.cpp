// A button that has the keyboard stands out from what is beside it, in both themes and every accent colour.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/language_select_dialog.h"
#include "tests/gui/tst_accessible_probe.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/test_main.h"
#include "ui/style/accent.h"
#include "ui/widgets/message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::swatchColours;

class TestFocusContrast : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void ofTheWindow_data();
    void ofTheWindow();
    void ofTheSettings_data();
    void ofTheSettings();
    void ofDialogs_data();
    void ofDialogs();
    void ofTheLanguageDialog();
    void ofBoxes();
};

namespace
{

enum Page { SignIn, Empty, Conversation };

double luminanceOf(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * luminanceOf(colour.redF()) + 0.7152 * luminanceOf(colour.greenF())
           + 0.0722 * luminanceOf(colour.blueF());
}

/// As the guidelines for accessible content count it: from 1 to 21.
double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

/// BUTTON in the window, with what is around it.
QImage surroundings(const QAbstractButton *button)
{
    const QRect place(button->mapTo(button->window(), QPoint()), button->size());
    return button->window()->grab(place.adjusted(-3, -3, 3, 3)).toImage();
}

/// The best contrast on the way from START in steps of STEP: of a changed pixel to itself unchanged, and to
/// the pixel before. The smaller one counts.
double contrastOnWay(const QImage &with, const QImage &without, QPoint start, QPoint step, int length)
{
    double toBefore = 1;
    double toBeside = 1;
    for (int i = 1; i < length; ++i) {
        const QPoint here = start + i * step;
        if (with.pixel(here) == without.pixel(here))
            continue;
        toBefore = qMax(toBefore, contrast(with.pixelColor(here), without.pixelColor(here)));
        toBeside = qMax(toBeside, contrast(with.pixelColor(here), with.pixelColor(here - step)));
    }
    return qMin(toBefore, toBeside);
}

/// The least contrast of all ways from the four sides to the middle, without those along the lines.
double leastContrast(const QImage &with, const QImage &without)
{
    const QPoint last(with.width() - 1, with.height() - 1);
    constexpr int lines = 8; // and what lies around the button
    double least = 21;
    for (int y = lines; y < with.height() - lines; ++y) {
        for (const auto &[start, step] : {std::pair(QPoint(0, y), QPoint(1, 0)), {{last.x(), y}, {-1, 0}}})
            least = qMin(least, contrastOnWay(with, without, start, step, with.width() / 2));
    }
    for (int x = lines; x < with.width() - lines; ++x) {
        for (const auto &[start, step] : {std::pair(QPoint(x, 0), QPoint(0, 1)), {{x, last.y()}, {0, -1}}})
            least = qMin(least, contrastOnWay(with, without, start, step, with.height() / 2));
    }
    return least;
}

/// Whether no page of WINDOW is still appearing, faint.
bool isWholeInSight(const QWidget &window)
{
    const auto effects = window.findChildren<QGraphicsOpacityEffect *>();
    return std::none_of(effects.begin(), effects.end(),
                        [](const QGraphicsEffect *effect) { return effect->isEnabled(); });
}

struct ButtonMarks {
    int buttons = 0;
    QStringList faint; ///< those whose mark has less than 3:1 somewhere
};

void lookAt(QAbstractButton *button, ButtonMarks &marks)
{
    ++marks.buttons;
    const QImage with = surroundings(button);
    button->clearFocus();
    const double least = leastContrast(with, surroundings(button));
    button->setFocus(Qt::TabFocusReason);
    if (least < 3)
        marks.faint.append(u"%1 %2"_s.arg(spokenName(button)).arg(least));
}

/// With the Tab key through WINDOW, until it comes back to the beginning.
ButtonMarks buttonMarks(QWidget *window)
{
    ButtonMarks marks;
    QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    const QWidget *first = window->focusWidget();
    for (int stops = 0; stops < 60; ++stops) {
        if (auto *button = qobject_cast<QAbstractButton *>(window->focusWidget()))
            lookAt(button, marks);
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        if (window->focusWidget() == first)
            return marks;
    }
    qFatal("The Tab key does not come back.");
}

} // namespace

void TestFocusContrast::ofTheWindow_data()
{
    QTest::addColumn<Page>("page");
    QTest::addColumn<bool>("isLight");
    QTest::addColumn<QString>("accent");
    QTest::addColumn<int>("buttons");
    for (const bool isLight : {false, true}) {
        for (const QStringView accent : swatchColours) {
            const QByteArray look = (isLight ? "light " : "dark ") + accent.toUtf8();
            QTest::addRow("sign-in page, %s", look.constData())
                << SignIn << isLight << accent.toString() << 3;
            QTest::addRow("no conversation, %s", look.constData())
                << Empty << isLight << accent.toString() << 7;
            QTest::addRow("conversation, %s", look.constData())
                << Conversation << isLight << accent.toString() << 7;
        }
    }
}

void TestFocusContrast::ofTheWindow()
{
    QFETCH(const Page, page);
    QFETCH(const bool, isLight);
    QFETCH(const QString, accent);
    SettingsProbe probe;
    probe.openSettings();
    buttonWith(probe.content(Appearance), isLight ? u"Light"_s : u"Dark"_s)->click();
    for (QPushButton *button : probe.content(Appearance)->findChildren<QPushButton *>()) {
        if (button->property("accentColor").toString() == accent)
            button->click();
    }
    QVERIFY(listServers(probe, {server(u"g"_s, u"Reef"_s)}));
    QTest::mouseClick(probe.messagesButton(), Qt::LeftButton);
    QVERIFY(page != Conversation || probe.open(u"bob"_s));
    if (page == SignIn)
        probe.window->logOut();
    QTRY_VERIFY(isWholeInSight(*probe.window));
    const ButtonMarks marks = buttonMarks(probe.window.get());
    QTEST(marks.buttons, "buttons");
    QCOMPARE(marks.faint.join(u'|'), QString());
}

void TestFocusContrast::ofTheSettings_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<bool>("isLight");
    for (int section = Account; section <= About; ++section) // they are dark in both themes
        QTest::addRow("section %d, dark", section) << section << false;
    QTest::newRow("appearance, light") << int(Appearance) << true;
}

void TestFocusContrast::ofTheSettings()
{
    QFETCH(const int, section);
    QFETCH(const bool, isLight);
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(probe.fadedIn());
    buttonWith(probe.content(Appearance), isLight ? u"Light"_s : u"Dark"_s)->click();
    probe.clickRow(section);
    const ButtonMarks marks = buttonMarks(probe.window.get());
    QVERIFY(marks.buttons >= 6);
    QCOMPARE(marks.faint.join(u'|'), QString());
}

void TestFocusContrast::ofDialogs_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("buttons");
    QTest::newRow("create server") << u"railBtn=+"_s << 2;
    QTest::newRow("privacy") << u"quilloryBtn"_s << 5;
}

void TestFocusContrast::ofDialogs()
{
    QFETCH(const QString, button);
    const SettingsProbe probe;
    ButtonMarks marks;
    QVERIFY(withDialog([&] { probe.click(button); }, [&](QDialog &dialog) { marks = buttonMarks(&dialog); }));
    QTEST(marks.buttons, "buttons");
    QCOMPARE(marks.faint.join(u'|'), QString());
}

void TestFocusContrast::ofTheLanguageDialog()
{
    tideloft::app::LanguageSelectDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const ButtonMarks marks = buttonMarks(&dialog);
    QCOMPARE(marks.buttons, 2);
    QCOMPARE(marks.faint.join(u'|'), QString());
}

void TestFocusContrast::ofBoxes()
{
    const SettingsProbe probe;
    QTest::keyClick(probe.window->windowHandle(), Qt::Key_Tab);
    tideloft::ui::showWarning(probe.window.get(), u"No."_s);
    auto *box = probe.window->findChild<QMessageBox *>();
    QVERIFY(QTest::qWaitForWindowActive(box));
    const ButtonMarks marks = buttonMarks(box);
    QCOMPARE(marks.buttons, 1);
    QCOMPARE(marks.faint.join(u'|'), QString());
    box->close();
}

TIDELOFT_GUI_TEST_MAIN(TestFocusContrast)
#include "tst_focus_contrast.moc"
