// The footer's word that the profile was saved, alone and beside the picture's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_profile_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestProfileConfirmation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init()
    {
        failOnToolkitWarnings();
        forgetTimers();
    }
    void confirmationRunsOut_data();
    void confirmationRunsOut();
    void confirmationRunsOutByItself();
    void saveThenUpload();
    void uploadThenSave();

private:
    bool askForBoth(ProfileProbe &probe) const;

    const PictureFolder files;
};

void TestProfileConfirmation::confirmationRunsOut_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("confirmation");
    QTest::newRow("English") << Language::English << u"✓ Saved"_s;
    QTest::newRow("Swedish") << Language::Swedish << u"✓ Sparad"_s;
}

void TestProfileConfirmation::confirmationRunsOut()
{
    QFETCH(Language, language);
    QFETCH(QString, confirmation);
    ProfileProbe probe(language);
    probe.service.answer(requests::updateProfile, 200, "{}");
    clickOnScreen(*probe.save);
    QTRY_COMPARE(probe.status->text(), confirmation);
    QCOMPARE(pendingTimers().size(), 1);
    const PendingTimer timer = pendingTimers().constFirst();
    QCOMPARE(timer.interval, 2000);
    QCOMPARE(timer.type, Qt::CoarseTimer);
    timer.runOut();
    QCOMPARE(probe.status->text(), u"● Online"_s);
}

void TestProfileConfirmation::confirmationRunsOutByItself()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    clickOnScreen(*probe.save);
    QTRY_COMPARE(probe.status->text(), u"✓ Saved"_s);
    QTRY_COMPARE(probe.status->text(), u"● Online"_s);
}

void TestProfileConfirmation::saveThenUpload()
{
    ProfileProbe probe;
    QVERIFY(askForBoth(probe));
    probe.service.release(requests::updateProfile);
    QTRY_COMPARE(probe.status->text(), u"✓ Saved"_s);
    probe.service.release(requests::uploadAvatar);
    QTRY_COMPARE(probe.status->text(), u"✓ Picture updated"_s);
    const QList<PendingTimer> timers = pendingTimers();
    QCOMPARE(timers.size(), 2);
    timers.first().runOut(); // the save's ends the picture's confirmation too
    QCOMPARE(probe.status->text(), u"● Online"_s);
    timers.last().runOut();
    QCOMPARE(probe.status->text(), u"● Online"_s);
}

void TestProfileConfirmation::uploadThenSave()
{
    ProfileProbe probe;
    QVERIFY(askForBoth(probe));
    probe.service.release(requests::uploadAvatar);
    QTRY_COMPARE(probe.status->text(), u"✓ Picture updated"_s);
    probe.service.release(requests::updateProfile);
    QTRY_COMPARE(probe.status->text(), u"✓ Saved"_s);
    QCOMPARE(pendingTimers().size(), 2);
    pendingTimers().constFirst().runOut();
    QCOMPARE(probe.status->text(), u"● Online"_s);
}

// Both answers wait: the file dialog may take longer than a confirmation lasts.
bool TestProfileConfirmation::askForBoth(ProfileProbe &probe) const
{
    for (const QByteArray &key : {requests::updateProfile, requests::uploadAvatar}) {
        probe.service.answer(key, 200, "{}");
        probe.service.hold(key);
    }
    clickOnScreen(*probe.save);
    return probe.service.waitForRequests(requests::updateProfile, 1)
           && chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s))
           && probe.service.waitForRequests(requests::uploadAvatar, 1);
}

TIDELOFT_GUI_TEST_MAIN(TestProfileConfirmation)
#include "tst_profile_confirmation.moc"
