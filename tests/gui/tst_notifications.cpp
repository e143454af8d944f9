// What errors and confirmations are to a screen reader. A test from outside hears them as they come up.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_accessible_probe.h"
#include "tests/support/test_main.h"
#include "ui/widgets/message_box.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestNotifications : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void errorsOfTheSignInPage();
    void confirmationsInTheFooter();
    void boxesAreAlerts();
    void longTextsAreToldWithTheirBox();
};

namespace
{

/// "Role: name" of what a screen reader finds in the place of WIDGET.
QString spoken(const QWidget *widget)
{
    return told(spokenOf(widget)->role(), spokenName(widget), {});
}

QString notification(const QString &text)
{
    return told(QAccessible::Notification, text, {});
}

} // namespace

void TestNotifications::errorsOfTheSignInPage()
{
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    const auto *error = probe.the<QLabel>(u"authError"_s);
    probe.click(u"primaryButton"_s);
    QCOMPARE(spoken(error), notification(u"Please enter your username and password."_s));
    probe.service.answer("POST /api/auth/login", 401, R"({"message":"<b>Wrong</b> password"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    QVERIFY(spokenOf(error)->state().invisible);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), u"<b>Wrong</b> password"_s);
    QCOMPARE(spoken(error), notification(u"<b>Wrong</b> password"_s));
    QVERIFY(!spokenOf(error)->state().invisible);
}

void TestNotifications::confirmationsInTheFooter()
{
    SettingsProbe probe;
    probe.openSettings();
    probe.service.answer("POST /api/profile/update", 200, "{}");
    const auto *status = probe.the<QLabel>(u"myStatus"_s);
    QCOMPARE(spoken(status), notification(u"● Online"_s));
    buttonWith(probe.content(Account), u"Save changes"_s)->click();
    QTRY_COMPARE(status->text(), u"✓ Saved"_s);
    QCOMPARE(spoken(status), notification(u"✓ Saved"_s));
}

void TestNotifications::boxesAreAlerts()
{
    const SettingsProbe probe;
    probe.openSettings();
    buttonWith(probe.content(Advanced), u"Clear"_s)->click();
    auto *box = probe.window->findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(spoken(box), told(QAccessible::AlertMessage, u"TideLoft"_s, {}));
    QCOMPARE(spokenName(labelWith(box, u"Cache cleared."_s)), u"Cache cleared."_s); // read with the box
    box->accept();
}

// A text that scrolls is in no label that is shown; the box says it itself.
void TestNotifications::longTextsAreToldWithTheirBox()
{
    const SettingsProbe probe;
    const QString longText = QString(400, u'w');
    tideloft::ui::showWarning(probe.window.get(), longText);
    auto *box = probe.window->findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(spoken(box), told(QAccessible::AlertMessage, u"TideLoft"_s, {}));
    QCOMPARE(spokenDescription(box), longText);
    box->accept();
}

TIDELOFT_GUI_TEST_MAIN(TestNotifications)
#include "tst_notifications.moc"
