// For whom "Remember me" is ticked: for the user who ticked it, and for nobody who signs in later.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QCheckBox>
#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray loginKey = QByteArrayLiteral("POST /api/auth/login");

} // namespace

class TestRememberMe : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void isNotTakenOver_data();
    void isNotTakenOver();
};

void TestRememberMe::isNotTakenOver_data()
{
    QTest::addColumn<QString>("next");
    QTest::addColumn<bool>("tickedAgain");
    QTest::addColumn<bool>("remembered");
    QTest::newRow("the same person") << u"alice"_s << false << true;
    QTest::newRow("in other letters") << u"ALICE"_s << false << true;
    QTest::newRow("another") << u"bob"_s << false << false;
    QTest::newRow("another whose name begins like it") << u"ali"_s << false << false;
    QTest::newRow("another whose name goes on") << u"alicent"_s << false << false;
    QTest::newRow("another who ticks it") << u"bob"_s << true << true;
}

void TestRememberMe::isNotTakenOver()
{
    QFETCH(QString, next);
    QFETCH(bool, tickedAgain);
    QFETCH(bool, remembered);
    GuiProbe probe;
    auto *check = probe.the<QCheckBox>(u"rememberCheck"_s);
    check->click();
    QVERIFY(probe.signIn());
    probe.window->logOut();
    if (tickedAgain) {
        check->click();
        check->click();
    }
    probe.service.answer("GET /api/me", 200, QJsonDocument(QJsonObject{{u"username"_s, next}}).toJson());
    QVERIFY(probe.signIn(next));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest(loginKey).body);
    QCOMPARE(sent[u"rememberMe"], QJsonValue(remembered));
    QCOMPARE(check->isChecked(), remembered);
}

TIDELOFT_GUI_TEST_MAIN(TestRememberMe)
#include "tst_remember_me.moc"
