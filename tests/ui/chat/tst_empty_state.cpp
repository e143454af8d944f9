// What stands there while no conversation is open: its texts in both languages, and its button.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/page_window.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/chat/empty_state.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestEmptyState : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void textsFollowTheLanguage_data();
    void textsFollowTheLanguage();
    void hintsKeepTheLanguageOfTheirMaking();
    void aLabelThatIsGoneIsSkipped();
    void theButtonBeginsAConversation();
    void cardStandsInTheMiddle();
};

namespace
{

struct EmptyProbe {
    EmptyProbe() : page(new EmptyState(&window))
    {
        page->build(Language::English);
        page->retranslate(Language::English);
        window.showPage(page);
    }
    template <typename Widget> Widget *the(const QString &name) const { return only<Widget>(*page, name); }
    QStringList hints() const
    {
        QStringList texts;
        for (const auto *label : page->findChildren<QLabel *>(u"hintText"_s))
            texts.append(label->text());
        return texts;
    }

    PageWindow window{QSize(784, 720)};
    EmptyState *page;
};

const QStringList englishHints{u"End-to-end encrypted messages"_s, u"Fast and secure communication"_s,
                               u"Works everywhere"_s};

} // namespace

void TestEmptyState::textsFollowTheLanguage_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English
                             << QStringList{u"Welcome to TideLoft"_s,
                                            u"Select a conversation or start a new one to chat securely."_s,
                                            u"➕  Start new conversation"_s};
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{
                                    u"Välkommen till TideLoft"_s,
                                    u"Välj en konversation eller starta en ny för att chatta säkert."_s,
                                    u"➕  Starta ny konversation"_s};
}

void TestEmptyState::textsFollowTheLanguage()
{
    QFETCH(const Language, language);
    const EmptyProbe probe;
    probe.page->retranslate(language);
    QTEST((QStringList{probe.the<QLabel>(u"emptyTitle"_s)->text(),
                       probe.the<QLabel>(u"emptySubtitle"_s)->text(),
                       probe.the<QPushButton>(u"emptyActionBtn"_s)->text()}),
          "expected");
}

void TestEmptyState::hintsKeepTheLanguageOfTheirMaking()
{
    const EmptyProbe probe;
    probe.page->retranslate(Language::Swedish);
    QCOMPARE(probe.hints(), englishHints);
}

void TestEmptyState::aLabelThatIsGoneIsSkipped()
{
    const EmptyProbe probe;
    delete probe.the<QLabel>(u"emptyTitle"_s);
    delete probe.the<QLabel>(u"emptySubtitle"_s);
    probe.page->retranslate(Language::Swedish);
    QCOMPARE(probe.the<QPushButton>(u"emptyActionBtn"_s)->text(), u"➕  Starta ny konversation"_s);
}

void TestEmptyState::theButtonBeginsAConversation()
{
    const EmptyProbe probe;
    QTest::mouseClick(probe.the<QPushButton>(u"emptyActionBtn"_s), Qt::LeftButton);
    QCOMPARE(probe.window.sentSignals(), 1);
}

void TestEmptyState::cardStandsInTheMiddle()
{
    EmptyProbe probe;
    const auto *card = probe.the<QWidget>(u"emptyInner"_s);
    for (const QSize size : {QSize(784, 720), QSize(484, 560), QSize(1284, 1000)}) {
        probe.window.resize(size);
        QTRY_VERIFY(qAbs(2 * card->x() + card->width() - size.width()) <= 2);
        QTRY_VERIFY(qAbs(2 * card->y() + card->height() - size.height()) <= 2);
        QVERIFY(card->width() <= 440);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestEmptyState)
#include "tst_empty_state.moc"
