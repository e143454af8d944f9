// A page whose layout waits until it is shown for the first time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/lazy_page.h"

#include <QApplication>
#include <QLabel>
#include <QStackedWidget>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
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

/// A page with a frame and a text in the frame; LATE: it leaves them without a style.
class Texts : public LazyPage
{
public:
    Texts(bool late, QWidget *parent) : LazyPage(parent)
    {
        const auto makeParts = [this] {
            frame = new QFrame(this);
            text = new QLabel(u"words"_s, frame);
            (new QVBoxLayout(frame))->addWidget(text);
            (new QVBoxLayout(this))->addWidget(frame);
        };
        if (late)
            fillUnstyled(makeParts);
        else
            makeParts();
    }

    [[nodiscard]] bool isStyled() const
    {
        return frame->testAttribute(Qt::WA_WState_Polished) && text->testAttribute(Qt::WA_WState_Polished);
    }
    [[nodiscard]] bool isPartlyStyled() const
    {
        return frame->testAttribute(Qt::WA_WState_Polished) || text->testAttribute(Qt::WA_WState_Polished);
    }

    QFrame *frame = nullptr;
    QLabel *text = nullptr;
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
    void partsAreStyledWhenThePageIsShown();
    void pageStyledLateLooksTheSame();

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

void TestLazyPage::partsAreStyledWhenThePageIsShown()
{
    auto *late = new Texts(true, stack.get());
    auto *usual = new Texts(false, stack.get());
    stack->addWidget(late);
    stack->addWidget(usual);
    stack->setStyleSheet(u"QLabel { font-size: 30px; }"_s);
    QApplication::processEvents();
    QVERIFY(usual->isStyled());
    QVERIFY(!late->isPartlyStyled());
    stack->setCurrentWidget(late);
    QVERIFY(late->isStyled());
    QCOMPARE(late->text->font().pixelSize(), 30);
}

void TestLazyPage::pageStyledLateLooksTheSame()
{
    stack->setStyleSheet(u"QFrame { background: red; border: 3px solid blue; padding: 5px; }"
                         "QLabel { background: white; font-size: 30px; color: green; }"_s);
    const QList<Texts *> pages{new Texts(true, stack.get()), new Texts(false, stack.get())};
    QList<QImage> pictures;
    for (Texts *page : pages) {
        stack->addWidget(page);
        stack->setCurrentWidget(page);
        QApplication::processEvents();
        pictures.append(stack->grab().toImage());
    }
    QVERIFY(pictures.first() == pictures.last());
    QCOMPARE(pages.first()->text->geometry(), pages.last()->text->geometry());
}

TIDELOFT_GUI_TEST_MAIN(TestLazyPage)
#include "tst_lazy_page.moc"
