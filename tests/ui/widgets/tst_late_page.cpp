// A page that is not measured before it is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/late_page.h"

#include <QStackedWidget>
#include <QTest>
#include <QVBoxLayout>

using tideloft::ui::LatePage;

namespace
{

/// Counts how often it is asked for its size, and keeps to one.
class Asked : public QWidget
{
public:
    using QWidget::QWidget;
    QSize sizeHint() const override
    {
        ++questions;
        return {300, 200};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

    mutable int questions = 0;
};

} // namespace

class TestLatePage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void hiddenPageIsNotMeasured();
    void shownPageHasItsSize();
    void pageKeepsItsSizeWhenItIsHiddenAgain();

private:
    std::unique_ptr<QStackedWidget> stack;
    QWidget *first = nullptr;
    LatePage *late = nullptr;
    Asked *content = nullptr;
};

void TestLatePage::init()
{
    stack = std::make_unique<QStackedWidget>();
    first = new QWidget(stack.get());
    first->setMinimumSize(100, 50);
    late = new LatePage(stack.get());
    auto *column = new QVBoxLayout(late);
    column->setContentsMargins({});
    content = new Asked(late);
    column->addWidget(content);
    stack->addWidget(first);
    stack->addWidget(late);
    stack->show();
    QVERIFY(QTest::qWaitForWindowExposed(stack.get()));
}

void TestLatePage::hiddenPageIsNotMeasured()
{
    QCOMPARE(content->questions, 0);
    QCOMPARE(late->sizeHint(), QSize(0, 0));
    QCOMPARE(late->minimumSizeHint(), QSize(0, 0));
    QVERIFY(!late->hasHeightForWidth());
    QCOMPARE(stack->minimumSizeHint().width(), 100);
}

void TestLatePage::shownPageHasItsSize()
{
    stack->setCurrentWidget(late);
    QVERIFY(content->questions > 0);
    QCOMPARE(late->sizeHint(), QSize(300, 200));
    QCOMPARE(stack->minimumSizeHint(), QSize(300, 200));
}

// The window must not shrink below a page to which its user will come back.
void TestLatePage::pageKeepsItsSizeWhenItIsHiddenAgain()
{
    stack->setCurrentWidget(late);
    stack->setCurrentWidget(first);
    QCOMPARE(stack->minimumSizeHint(), QSize(300, 200));
}

TIDELOFT_GUI_TEST_MAIN(TestLatePage)
#include "tst_late_page.moc"
