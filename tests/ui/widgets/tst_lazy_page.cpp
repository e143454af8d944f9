// A page whose layout waits until it is shown for the first time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/lazy_page.h"

#include <QStackedWidget>
#include <QTest>
#include <QVBoxLayout>

using tideloft::ui::LazyPage;

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

class TestLazyPage : public QObject
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
    LazyPage *lazy = nullptr;
    Asked *content = nullptr;
};

void TestLazyPage::init()
{
    stack = std::make_unique<QStackedWidget>();
    first = new QWidget(stack.get());
    first->setMinimumSize(100, 50);
    lazy = new LazyPage(stack.get());
    auto *column = new QVBoxLayout(lazy);
    column->setContentsMargins({});
    content = new Asked(lazy);
    column->addWidget(content);
    stack->addWidget(first);
    stack->addWidget(lazy);
    stack->show();
    QVERIFY(QTest::qWaitForWindowExposed(stack.get()));
}

void TestLazyPage::hiddenPageIsNotMeasured()
{
    QCOMPARE(content->questions, 0);
    QCOMPARE(lazy->sizeHint(), QSize(0, 0));
    QCOMPARE(lazy->minimumSizeHint(), QSize(0, 0));
    QVERIFY(!lazy->hasHeightForWidth());
    QCOMPARE(stack->minimumSizeHint().width(), 100);
}

void TestLazyPage::shownPageHasItsSize()
{
    stack->setCurrentWidget(lazy);
    QVERIFY(content->questions > 0);
    QCOMPARE(lazy->sizeHint(), QSize(300, 200));
    QCOMPARE(stack->minimumSizeHint(), QSize(300, 200));
}

// The window must not shrink below a page to which its user will come back.
void TestLazyPage::pageKeepsItsSizeWhenItIsHiddenAgain()
{
    stack->setCurrentWidget(lazy);
    stack->setCurrentWidget(first);
    QCOMPARE(stack->minimumSizeHint(), QSize(300, 200));
}

TIDELOFT_GUI_TEST_MAIN(TestLazyPage)
#include "tst_lazy_page.moc"
