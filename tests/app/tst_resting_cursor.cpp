// The text cursor of a program that nobody touches.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/resting_cursor.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "tests/support/test_main.h"

using tideloft::app::RestingCursor;
using namespace std::chrono_literals;

namespace
{

constexpr int systemFlashTime = 1000;

using Input = void (*)(QLineEdit &);

} // namespace

class TestRestingCursor : public QObject
{
    Q_OBJECT

private slots:
    void init() { QApplication::setCursorFlashTime(systemFlashTime); }
    void itBlinksUntilItsPatienceEnds();
    void inputWakesIt_data();
    void inputWakesIt();
    void theEndGivesTheSystemsTimeBack();
    void aCursorThatNeverBlinksIsLeftAlone();
};

void TestRestingCursor::itBlinksUntilItsPatienceEnds()
{
    const RestingCursor patient(1h);
    QCoreApplication::processEvents();
    QCOMPARE(QApplication::cursorFlashTime(), systemFlashTime);
    const RestingCursor impatient(0ms);
    QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
}

void TestRestingCursor::inputWakesIt_data()
{
    QTest::addColumn<Input>("input");
    QTest::newRow("key") << Input([](QLineEdit &field) { QTest::keyPress(&field, Qt::Key_A); });
    QTest::newRow("click") << Input([](QLineEdit &field) { QTest::mousePress(&field, Qt::LeftButton); });
    QTest::newRow("focus") << Input([](QLineEdit &field) {
        QFocusEvent event(QEvent::FocusIn);
        QCoreApplication::sendEvent(&field, &event);
    });
    QTest::newRow("input method") << Input([](QLineEdit &field) {
        QInputMethodEvent event;
        QCoreApplication::sendEvent(&field, &event);
    });
}

void TestRestingCursor::inputWakesIt()
{
    QFETCH(const Input, input);
    QLineEdit field;
    field.show();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    const RestingCursor cursor(0ms);
    QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
    input(field);
    QCOMPARE(QApplication::cursorFlashTime(), systemFlashTime);
    QTRY_COMPARE(QApplication::cursorFlashTime(), 0); // and it rests again
}

void TestRestingCursor::theEndGivesTheSystemsTimeBack()
{
    {
        const RestingCursor cursor(0ms);
        QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
    }
    QCOMPARE(QApplication::cursorFlashTime(), systemFlashTime);
}

void TestRestingCursor::aCursorThatNeverBlinksIsLeftAlone()
{
    QApplication::setCursorFlashTime(0);
    QLineEdit field;
    const RestingCursor cursor(1h);
    QTest::keyPress(&field, Qt::Key_A);
    QCOMPARE(QApplication::cursorFlashTime(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestRestingCursor)
#include "tst_resting_cursor.moc"
