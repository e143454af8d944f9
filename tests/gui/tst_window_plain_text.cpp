// Words from outside are shown as they stand: no label, box or entry takes them for markup.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowPlainText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void everyLabelWithOutsideText();
    void everyLabelOfAFreshWindow();
    void errorOfTheSignInPage();
    void warningBox_data();
    void warningBox();

private:
    static QStringList outsideTexts(const QWidget &root);
};

namespace
{

const QString markup = u"<b>eve<b>"_s; // no slash: names stand in a path as they are

QByteArray items(const QString &nameKey)
{
    const QJsonObject item{{nameKey, markup}, {u"text"_s, u"<img src=x>"_s}};
    return QJsonDocument(QJsonArray{item}).toJson();
}

} // namespace

// The texts of all labels below ROOT that hold a "<"; "(!)" in front of one that is not plain.
QStringList TestWindowPlainText::outsideTexts(const QWidget &root)
{
    QStringList texts;
    for (const auto *label : root.findChildren<QLabel *>()) {
        if (label->text().contains(u'<'))
            texts.append((label->textFormat() == Qt::PlainText ? QString() : u"(!)"_s) + label->text());
    }
    texts.sort();
    return texts;
}

void TestWindowPlainText::everyLabelWithOutsideText()
{
    GuiProbe probe;
    probe.service.answer("GET /api/me", 200, QJsonDocument(QJsonObject{{u"username"_s, markup}}).toJson());
    QVERIFY(probe.signIn());
    QVERIFY(callSlot(*probe.window, "onConversationsLoaded",
                     Q_ARG(QJsonArray, QJsonDocument::fromJson(items(u"peer"_s)).array())));
    probe.clickPeer(markup);
    const QJsonArray history{QJsonObject{{u"from"_s, u"<i>frank"_s}, {u"text"_s, u"<img src=y>"_s}}};
    QVERIFY(callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, markup), Q_ARG(QJsonArray, history)));
    QStringList expected{markup,          u"<B"_s,                   // the footer
                         markup,          u"<B"_s, u"<img src=x>"_s, // the conversation's row
                         markup,          u"<B"_s,                   // the chat's header
                         u"<i>frank"_s,   u"<I"_s,                   // the message's sender
                         u"<img src=y>"_s};
    expected.sort();
    QCOMPARE(outsideTexts(*probe.window), expected);
}

// Texts that are set later find a label that takes them as they are.
void TestWindowPlainText::everyLabelOfAFreshWindow()
{
    const GuiProbe probe;
    const auto labels = probe.window->findChildren<QLabel *>();
    QVERIFY(labels.size() > 20);
    for (const QLabel *label : labels)
        QVERIFY2(label->textFormat() == Qt::PlainText, qPrintable(label->objectName() + label->text()));
}

void TestWindowPlainText::errorOfTheSignInPage()
{
    GuiProbe probe;
    probe.service.answer("POST /api/auth/login", 401, R"({"message":"<img src='/dev/zero'>"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(outsideTexts(*probe.window), QStringList{u"<img src='/dev/zero'>"_s});
}

void TestWindowPlainText::warningBox_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("keys of a user") << QByteArray("onUserPublicKeysFailed");
    QTest::newRow("sending") << QByteArray("onMessageSendFailed");
}

void TestWindowPlainText::warningBox()
{
    QFETCH(QByteArray, slot);
    GuiProbe probe;
    const QString message = u"<a href='x'>Click</a>"_s;
    if (slot == "onMessageSendFailed")
        QVERIFY(callSlot(*probe.window, slot, Q_ARG(QString, message)));
    else
        QVERIFY(callSlot(*probe.window, slot, Q_ARG(QString, u"bob"_s), Q_ARG(QString, message)));
    QPointer<QMessageBox> box = probe.window->findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QCOMPARE(outsideTexts(*box), QStringList{message});
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    QTRY_VERIFY(!box);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowPlainText)
#include "tst_window_plain_text.moc"
