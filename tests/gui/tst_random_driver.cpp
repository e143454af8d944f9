// The window before a service that answers at random, used at random: nothing breaks, and both recover.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_random_driver_hands.h"
#include "tests/gui/tst_random_driver_watch.h"
#include "tests/support/long_form.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

/// Steps, from whatever event loop runs at the moment: menus and dialogs have their own.
class Driver
{
public:
    Driver(GuiProbe &used, const KeyStorage &storage, RandomChoice &random)
        : probe(used),
          keys(storage),
          choose(random),
          service(used.service, random),
          hands(used, service, random)
    {
    }

    void run(int steps); ///< until they are done or there is a fault, and every dialog is closed again
    [[nodiscard]] QString report() const { return fault + u" after "_s + recent.join(u" | "_s); }
    [[nodiscard]] bool isFaultless() const { return fault.isEmpty(); }
    RandomService &answers() { return service; }

private:
    void tick();
    void step();
    bool end();

    GuiProbe &probe;
    const KeyStorage &keys;
    RandomChoice &choose;
    RandomService service;
    RandomHands hands;
    QEventLoop *outermost = nullptr;
    int left = 0;
    int busyLevel = 0; ///< the event loop in which a step is under way
    QString fault;
    QStringList recent;
};

void Driver::run(int steps)
{
    QEventLoop loop;
    outermost = &loop;
    left = steps;
    busyLevel = 0;
    QTimer::singleShot(0, &loop, [this] { tick(); });
    loop.exec();
    outermost = nullptr;
}

// An action may let events through before it has ended. The next step waits for it, but not for an action
// that has opened a dialog or a menu and stays inside its loop.
void Driver::tick()
{
    if (end())
        return;
    QTimer::singleShot(choose.below(3), outermost, [this] { tick(); });
    const int level = QThread::currentThread()->loopLevel();
    if (left <= 0 || level <= busyLevel)
        return;
    const int before = std::exchange(busyLevel, level);
    step();
    busyLevel = before;
}

void Driver::step()
{
    --left;
    recent.append(hands.act());
    if (recent.size() > 12)
        recent.removeFirst();
    if (fault.isEmpty())
        fault = faultOf(probe, keys);
    if (!fault.isEmpty())
        left = 0;
}

bool Driver::end()
{
    if (left > 0 || RandomHands::closeFront() || busyLevel > 0)
        return false;
    outermost->quit();
    return true;
}

} // namespace

class TestRandomDriver : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingBreaksAndAllRecovers_data();
    void nothingBreaksAndAllRecovers();

private:
    static void quieten(GuiProbe &probe, RandomService &answers);
    static void signInProperly(GuiProbe &probe);
    static void writeProperly(GuiProbe &probe);
    static QList<QJsonObject> someSealedMessages(const GuiProbe &probe);
};

void TestRandomDriver::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    placeKeyPair();
}

QList<QJsonObject> TestRandomDriver::someSealedMessages(const GuiProbe &probe)
{
    const QString device =
        QString::fromUtf8(probe.service.lastRequest("GET /api/me").header("X-Device-Token"));
    QList<QJsonObject> sealed;
    for (int i = 0; i < 20; ++i)
        sealed.append(
            sealedMessage(RandomService::peers().at(i % 2), u"sealed %1"_s.arg(i), ownKeyPair(), device));
    return sealed;
}

// Late replies have come, and the boxes that they opened are closed.
void TestRandomDriver::quieten(GuiProbe &probe, RandomService &answers)
{
    QTimer closer; // a click that was on its way may still open something
    QObject::connect(&closer, &QTimer::timeout, &closer, [] { RandomHands::closeFront(); });
    closer.start(20);
    answers.answerWell();
    for (int i = 0; i < 6; ++i) // a registration leads to three more requests, one after the other
        QVERIFY(probe.settle());
    QTRY_VERIFY(!QApplication::activePopupWidget() && !QApplication::activeModalWidget());
    QTRY_COMPARE(leftOverRows(probe), QString());
    answers.answerWell(); // settling has changed the conversations
    probe.service.clear();
}

// As the person would who is tired of this: log out, and begin again before a service that is well.
void TestRandomDriver::signInProperly(GuiProbe &probe)
{
    probe.window->logOut();
    probe.username()->clear();
    probe.password()->clear();
    QVERIFY2(probe.signIn(), qPrintable(probe.errorText()));
    QVERIFY(probe.waitForPeers({u"bob"_s, u"carol"_s}));
}

void TestRandomDriver::writeProperly(GuiProbe &probe)
{
    const KeyPair pair = ownKeyPair();
    probe.service.answer("GET /api/chat/public-key/bob", 200,
                         R"({"keys":[{"deviceId":"d","publicKeyBase64":")" + pair.publicKey.toUtf8()
                             + R"("}]})");
    probe.clickPeer(u"bob"_s);
    auto *input = probe.the<QLineEdit>(u"msgInput"_s);
    QTRY_VERIFY(input->isVisible());
    input->setText(u"still here"_s);
    probe.service.clear();
    QTest::keyClick(input, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests("GET /api/chat/public-key/bob", 1));
    const bool sent = probe.service.waitForRequests("POST /api/chat/send", 1);
    const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    QVERIFY2(sent, qPrintable(box ? box->text() : u"(no box)"_s));
    QTRY_COMPARE(input->text(), QString());
}

void TestRandomDriver::nothingBreaksAndAllRecovers_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::newRow("seed 1") << 1U;
    QTest::newRow("seed 2") << 2U;
}

void TestRandomDriver::nothingBreaksAndAllRecovers()
{
    QFETCH(const quint32, seed);
    constexpr int atOnce = 100;
    KeyStorage keys;
    const WarningWatch warnings;
    GuiProbe probe;
    RandomChoice random(seed);
    Driver driver(probe, keys, random);
    for (int done = 0; done < rounds(300, 10'000); done += atOnce) {
        signInProperly(probe);
        driver.answers().setSealed(someSealedMessages(probe));
        driver.answers().answerAtLength("GET /api/chat/history/bob");
        writeProperly(probe);
        if (QTest::currentTestFailed())
            return;
        driver.run(atOnce);
        QVERIFY2(driver.isFaultless(),
                 qPrintable(u"seed %1, steps from %2: %3"_s.arg(seed).arg(done).arg(driver.report())));
        quieten(probe, driver.answers());
        if (QTest::currentTestFailed())
            return;
    }
}

TIDELOFT_GUI_TEST_MAIN(TestRandomDriver)

#include "tst_random_driver.moc"
