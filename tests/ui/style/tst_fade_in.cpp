// The fade of a page: how it runs, how it ends, and what it does to fades around it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <QApplication>

#include "tests/support/test_main.h"
#include "ui/style/fade_in.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPropertyAnimation>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestFadeIn : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void runsAsDesigned();
    void endsOpaqueAndDisabled();
    void animationDeletesItself();
    void secondCallReplacesTheFirstEffect();
    void olderAnimationNeverTouchesANewerEffect();
    void foreignEffectIsReplaced();
    void widgetMayDieWhileItFades();
    void nestedFadesPaintWithoutWarning_data();
    void nestedFadesPaintWithoutWarning();
    void fadeOfADescendantLeavesThatOfItsAncestorAlone();
};

void TestFadeIn::init()
{
    QTest::failOnWarning(QRegularExpression(u"QPainter|QObject|QWidget"_s));
}

static QGraphicsOpacityEffect *effectOf(const QWidget &widget)
{
    return qobject_cast<QGraphicsOpacityEffect *>(widget.graphicsEffect());
}

static QPropertyAnimation *animationOf(const QWidget &widget)
{
    return widget.graphicsEffect()->findChild<QPropertyAnimation *>();
}

static void finish(const QWidget &widget)
{
    animationOf(widget)->setCurrentTime(180);
}

void TestFadeIn::runsAsDesigned()
{
    QWidget page;
    fadeIn(&page);
    const auto *animation = animationOf(page);
    QVERIFY(animation);
    QCOMPARE(animation->targetObject(), page.graphicsEffect());
    QCOMPARE(animation->propertyName(), "opacity");
    QCOMPARE(animation->duration(), 180);
    QCOMPARE(animation->startValue().toDouble(), 0.0);
    QCOMPARE(animation->endValue().toDouble(), 1.0);
    QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
    QCOMPARE(animation->state(), QAbstractAnimation::Running);
    QCOMPARE(effectOf(page)->opacity(), 0.0);
    QVERIFY(effectOf(page)->isEnabled());
}

void TestFadeIn::endsOpaqueAndDisabled()
{
    QWidget page;
    page.show();
    fadeIn(&page);
    const QPointer<QGraphicsEffect> effect = page.graphicsEffect();
    QTRY_VERIFY(!effect->isEnabled());
    QCOMPARE(page.graphicsEffect(), effect.data());
    QCOMPARE(effectOf(page)->opacity(), 1.0);
}

void TestFadeIn::animationDeletesItself()
{
    QWidget page;
    fadeIn(&page);
    const QPointer<QPropertyAnimation> animation = animationOf(page);
    finish(page);
    QTRY_VERIFY(!animation);
    QVERIFY(page.graphicsEffect());
}

void TestFadeIn::secondCallReplacesTheFirstEffect()
{
    QWidget page;
    fadeIn(&page);
    const QPointer<QGraphicsEffect> first = page.graphicsEffect();
    const QPointer<QPropertyAnimation> firstAnimation = animationOf(page);
    fadeIn(&page);
    QVERIFY(!first);
    QVERIFY(!firstAnimation);
    QCOMPARE(effectOf(page)->opacity(), 0.0);
    QVERIFY(effectOf(page)->isEnabled());
    QTRY_VERIFY(!effectOf(page)->isEnabled());
    QCOMPARE(effectOf(page)->opacity(), 1.0);
}

void TestFadeIn::olderAnimationNeverTouchesANewerEffect()
{
    QWidget page;
    fadeIn(&page);
    finish(page);
    fadeIn(&page); // while the deletion of the first animation is still waiting
    animationOf(page)->pause();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QVERIFY(effectOf(page)->isEnabled());
    QCOMPARE(effectOf(page)->opacity(), 0.0);
}

void TestFadeIn::foreignEffectIsReplaced()
{
    QWidget page;
    const QPointer<QGraphicsEffect> foreign = new QGraphicsOpacityEffect(&page);
    page.setGraphicsEffect(foreign);
    fadeIn(&page);
    QVERIFY(!foreign);
    QVERIFY(animationOf(page));
}

void TestFadeIn::widgetMayDieWhileItFades()
{
    auto page = std::make_unique<QWidget>();
    fadeIn(page.get());
    const QPointer<QGraphicsEffect> effect = page->graphicsEffect();
    const QPointer<QPropertyAnimation> animation = animationOf(*page);
    page.reset();
    QVERIFY(!effect);
    QVERIFY(!animation);
}

/// A window with a page, and a page in the page.
struct Nest {
    QWidget window;
    QWidget *outer = new QWidget(&window);
    QWidget *inner = new QWidget(outer);
    Nest()
    {
        window.resize(300, 200);
        outer->resize(300, 200);
        inner->resize(200, 100);
        (new QLabel(u"outer"_s, outer))->move(210, 10);
        (new QListWidget(inner))->addItems({u"first"_s, u"second"_s});
        window.show();
    }
};

void TestFadeIn::nestedFadesPaintWithoutWarning_data()
{
    QTest::addColumn<bool>("outerFirst");
    QTest::addColumn<bool>("firstHasEnded");
    QTest::newRow("outer runs, inner begins") << true << false;
    QTest::newRow("outer has ended, inner begins") << true << true;
    QTest::newRow("inner runs, outer begins") << false << false;
    QTest::newRow("inner has ended, outer begins") << false << true;
}

void TestFadeIn::nestedFadesPaintWithoutWarning()
{
    QFETCH(bool, outerFirst);
    QFETCH(bool, firstHasEnded);
    Nest nest;
    QVERIFY(QTest::qWaitForWindowExposed(&nest.window));
    QWidget *first = outerFirst ? nest.outer : nest.inner;
    QWidget *second = outerFirst ? nest.inner : nest.outer;
    fadeIn(first);
    animationOf(*first)->setCurrentTime(firstHasEnded ? 180 : 60); // at 0 it would not paint at all
    QVERIFY(!nest.window.grab().isNull());
    fadeIn(second);
    animationOf(*second)->setCurrentTime(60);
    QVERIFY(!nest.window.grab().isNull());
    QTRY_VERIFY(!second->graphicsEffect()->isEnabled());
    QVERIFY(!nest.window.grab().isNull());
}

void TestFadeIn::fadeOfADescendantLeavesThatOfItsAncestorAlone()
{
    Nest nest;
    fadeIn(nest.outer);
    animationOf(*nest.outer)->setCurrentTime(60);
    const double opacity = effectOf(*nest.outer)->opacity();
    fadeIn(nest.inner);
    QVERIFY(nest.outer->graphicsEffect()->isEnabled());
    QCOMPARE(effectOf(*nest.outer)->opacity(), opacity);
    QTRY_VERIFY(!nest.inner->graphicsEffect()->isEnabled());
    QTRY_VERIFY(!nest.outer->graphicsEffect()->isEnabled());
}

TIDELOFT_GUI_TEST_MAIN(TestFadeIn)
#include "tst_fade_in.moc"
