// Which text has arrived, when several are on their way.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/chat/message_field.h"
#include "ui/messages/sent_texts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestSentTexts : public QObject
{
    Q_OBJECT

private slots:
    void inTheirOrder();
    void nothingUnderWay();
    void textsThatGoOnLoseWhatArrived();
    void aFailedTextChangesNoOther();
};

namespace
{

ui::SentTexts under(const QStringList &texts)
{
    ui::SentTexts sent;
    for (const QString &text : texts)
        sent.append(text);
    return sent;
}

} // namespace

void TestSentTexts::inTheirOrder()
{
    ui::SentTexts sent = under({u"one"_s, u"two"_s});
    QCOMPARE(sent.takeArrived(), u"one"_s);
    QCOMPARE(sent.takeArrived(), u"two"_s);
}

void TestSentTexts::nothingUnderWay()
{
    ui::SentTexts sent = under({u"one"_s});
    sent.clear();
    sent.dropFailed();
    QCOMPARE(sent.takeArrived(), QString());
}

void TestSentTexts::textsThatGoOnLoseWhatArrived()
{
    ui::SentTexts sent = under({u"one"_s, u"one two"_s, u"other"_s});
    QString written = ui::textBehindSent(u"one two three"_s, sent.takeArrived());
    QCOMPARE(written, u" two three"_s);
    written = ui::textBehindSent(written, sent.takeArrived());
    QCOMPARE(written, u" three"_s);
    QCOMPARE(sent.takeArrived(), u"other"_s);
}

void TestSentTexts::aFailedTextChangesNoOther()
{
    ui::SentTexts sent = under({u"one"_s, u"one two"_s});
    sent.dropFailed();
    QCOMPARE(ui::textBehindSent(u"one two three"_s, sent.takeArrived()), u" three"_s);
}

TIDELOFT_TEST_MAIN(TestSentTexts)
#include "tst_sent_texts.moc"
