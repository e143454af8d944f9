// What the language selector changes, and what it leaves as the window was built.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestRetranslation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void followsTheSelector_data();
    void followsTheSelector();
    void selectorByKeys();
    void staysAsBuilt_data();
    void staysAsBuilt();
    void hintsStayAsBuilt();
    void staysSwedishThoughEnglishWasChosenBeforeTheFirstFrame_data() { staysAsBuilt_data(); }
    void staysSwedishThoughEnglishWasChosenBeforeTheFirstFrame();
    void secondBuildTimeIsSwedishToo();
    void errorTextStays_data();
    void errorTextStays();
    void missingEmptyLabelIsSkipped_data();
    void missingEmptyLabelIsSkipped();
    void statusReturnsToOnline();
    void accessibleNames_data();
    void accessibleNames();
};

namespace
{

const QString createServer = u"railBtn=+"_s;
const QStringList swedishHints{u"End-to-end krypterade meddelanden"_s, u"Snabb och säker kommunikation"_s,
                               u"Fungerar överallt"_s};

QStringList hintsIn(const QWidget &window)
{
    QStringList texts;
    for (const auto *label : window.findChildren<QLabel *>(u"hintText"_s))
        texts.append(label->text());
    return texts;
}

} // namespace

void TestRetranslation::followsTheSelector_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("swedish");
    const auto row = [](const QString &widget, const char *property, const QString &english,
                        const QString &swedish) {
        QTest::addRow("%s %s", qPrintable(widget), property)
            << widget << QByteArray(property) << english << swedish;
    };
    row(u"authTitle"_s, "text", u"Welcome back!"_s, u"Välkommen tillbaka!"_s);
    row(u"authSubtitle"_s, "text", u"Sign in or create an account to continue."_s,
        u"Logga in eller skapa konto för att fortsätta."_s);
    row(u"username"_s, "placeholderText", u"Username"_s, u"Användarnamn"_s);
    row(u"password"_s, "placeholderText", u"Password"_s, u"Lösenord"_s);
    row(u"primaryButton"_s, "text", u"Sign in"_s, u"Logga in"_s);
    row(u"ghostButton"_s, "text", u"Create account"_s, u"Skapa konto"_s);
    row(u"sidebarTitle"_s, "text", u"Messages"_s, u"Meddelanden"_s);
    row(u"sideSearch"_s, "placeholderText", u"Search or start conversation..."_s,
        u"Sök eller starta konversation..."_s);
    row(u"railBtn=💬"_s, "toolTip", u"Messages"_s, u"Meddelanden"_s);
    row(u"railBtn=⚙"_s, "toolTip", u"Settings"_s, u"Inställningar"_s);
    row(u"myStatus"_s, "text", u"● Online"_s, u"● Online"_s);
    row(u"emptyActionBtn"_s, "text", u"➕  Start new conversation"_s, u"➕  Starta ny konversation"_s);
    row(u"emptyTitle"_s, "text", u"Welcome to TideLoft"_s, u"Välkommen till TideLoft"_s);
    row(u"emptySubtitle"_s, "text", u"Select a conversation or start a new one to chat securely."_s,
        u"Välj en konversation eller starta en ny för att chatta säkert."_s);
}

void TestRetranslation::followsTheSelector()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const GuiProbe probe;
    const QWidget *found = named(*probe.window, widget);
    QTEST(found->property(property).toString(), "swedish"); // once during construction
    probe.window->setLanguageIndex(1);
    QTEST(found->property(property).toString(), "english");
    probe.window->setLanguageIndex(0);
    QTEST(found->property(property).toString(), "swedish");
}

void TestRetranslation::selectorByKeys()
{
    const GuiProbe probe;
    auto *combo = probe.the<QComboBox>(u"langCombo"_s);
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentIndex(), 1);
    QCOMPARE(probe.the<QLabel>(u"authTitle"_s)->text(), u"Welcome back!"_s);
    QTest::keyClick(combo, Qt::Key_Up);
    QCOMPARE(probe.the<QLabel>(u"authTitle"_s)->text(), u"Välkommen tillbaka!"_s);
}

void TestRetranslation::staysAsBuilt_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("expected");
    const auto row = [](const QString &widget, const char *property, const QString &expected) {
        QTest::addRow("%s %s", qPrintable(widget), property) << widget << QByteArray(property) << expected;
    };
    row(u"rememberCheck"_s, "text", u"Kom ihåg mig i 30 dagar"_s);
    row(u"authDividerText"_s, "text", u"eller"_s);
    row(u"secBadgeText"_s, "text", u"End-to-end encrypted · TLS 1.3"_s);
    row(u"msgInput"_s, "placeholderText", u"Skriv ett meddelande..."_s);
    row(createServer, "toolTip", u"Skapa server"_s);
    row(u"footerAvatar"_s, "toolTip", u"Klicka för att ändra profilbild"_s);
    row(u"quilloryBtn"_s, "text", u"Quillory"_s);
}

void TestRetranslation::staysAsBuilt()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const GuiProbe probe;
    const QWidget *found = named(*probe.window, widget);
    for (const int index : {0, 1, 0}) {
        probe.window->setLanguageIndex(index);
        QTEST(found->property(property).toString(), "expected");
    }
}

void TestRetranslation::hintsStayAsBuilt()
{
    const GuiProbe probe;
    probe.window->setLanguageIndex(1);
    QCOMPARE(hintsIn(*probe.window), swedishHints);
}

// As the program does with the language that somebody chose.
void TestRetranslation::staysSwedishThoughEnglishWasChosenBeforeTheFirstFrame()
{
    QFETCH(const QString, widget);
    QFETCH(const QByteArray, property);
    tideloft::ui::MainWindow window;
    window.setLanguageIndex(1);
    window.show();
    waitForMainPage(window);
    QTEST(named(window, widget)->property(property).toString(), "expected");
    QCOMPARE(hintsIn(window), swedishHints);
    QCOMPARE(named(window, u"sidebarTitle"_s)->property("text").toString(), u"Messages"_s);
}

// The language of an earlier window does not reach the next one.
void TestRetranslation::secondBuildTimeIsSwedishToo()
{
    const GuiProbe first;
    first.window->setLanguageIndex(1);
    const GuiProbe second;
    QCOMPARE(second.the<QComboBox>(u"langCombo"_s)->currentIndex(), 0);
    QCOMPARE(second.the<QLabel>(u"authTitle"_s)->text(), u"Välkommen tillbaka!"_s);
}

void TestRetranslation::errorTextStays_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Swedish, then English") << 0 << 1 << u"Fyll i användarnamn och lösenord."_s;
    QTest::newRow("English, then Swedish") << 1 << 0 << u"Please enter your username and password."_s;
}

void TestRetranslation::errorTextStays()
{
    QFETCH(int, first);
    QFETCH(int, second);
    const GuiProbe probe;
    probe.window->setLanguageIndex(first);
    probe.click(u"primaryButton"_s);
    probe.window->setLanguageIndex(second);
    QTEST(probe.errorText(), "expected");
    QVERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
}

void TestRetranslation::missingEmptyLabelIsSkipped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("title") << u"emptyTitle"_s;
    QTest::newRow("subtitle") << u"emptySubtitle"_s;
}

void TestRetranslation::missingEmptyLabelIsSkipped()
{
    QFETCH(QString, name);
    const GuiProbe probe;
    delete probe.the<QLabel>(name);
    probe.window->setLanguageIndex(1);
    QCOMPARE(probe.the<QLabel>(u"authTitle"_s)->text(), u"Welcome back!"_s);
    const QString other = name == u"emptyTitle" ? u"emptySubtitle"_s : u"emptyTitle"_s;
    QVERIFY(probe.the<QLabel>(other)->text().contains(u"start a new"_s)
            || probe.the<QLabel>(other)->text() == u"Welcome to TideLoft"_s);
}

// Retranslation takes the place of whatever the footer confirmed last.
void TestRetranslation::statusReturnsToOnline()
{
    const GuiProbe probe;
    probe.the<QLabel>(u"myStatus"_s)->setText(u"Something else"_s);
    probe.window->setLanguageIndex(1);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

void TestRetranslation::accessibleNames_data()
{
    QTest::addColumn<QString>("widget");
    // What a person must be able to reach although it has no words of its own.
    for (const char *name : {"username", "password", "langCombo", "railBtn=💬", "railBtn=+", "railBtn=⚙",
                             "addDmBtn", "sideSearch", "searchResults", "dmList", "messageList", "msgInput",
                             "sendButton", "footerAvatar", "sideFooter"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestRetranslation::accessibleNames()
{
    QFETCH(QString, widget);
    const GuiProbe probe;
    const QWidget *found = named(*probe.window, widget);
    const QString swedish = found->accessibleName();
    probe.window->setLanguageIndex(1);
    const QString english = found->accessibleName();
    QVERIFY(!swedish.isEmpty());
    QVERIFY(!english.isEmpty());
    QVERIFY2(swedish != english, qPrintable(english));
    probe.window->setLanguageIndex(0);
    QCOMPARE(found->accessibleName(), swedish);
}

TIDELOFT_GUI_TEST_MAIN(TestRetranslation)
#include "tst_retranslation.moc"
