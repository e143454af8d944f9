// The first card of the Account section: its texts, measures and looks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestProfileCard : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void texts_data();
    void texts();
    void layout();
    void avatarButton();
    void initialsOfShortNames_data();
    void initialsOfShortNames();
    void fields();
    void labelLooks();
    void saveButton();
};

namespace
{

const QString fieldStyle = u"background: #0c151e; border: 1px solid #1a2d40; border-radius: 6px;"
                           "padding: 8px 12px; color: #e8f0f8; font-size: 13px;"_s;

QWidget *cardOf(const SettingsPageProbe &probe)
{
    return probe.content(Account)->layout()->itemAt(1)->widget();
}

template <typename Widget> Widget *inCard(const SettingsPageProbe &probe)
{
    const auto found = cardOf(probe)->findChildren<Widget *>(QString(), Qt::FindDirectChildrenOnly);
    return found.size() == 1 ? found.first() : nullptr;
}

} // namespace

void TestProfileCard::texts_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("save");
    QTest::addColumn<QString>("picture");
    QTest::newRow("English") << Language::English
                             << QStringList{u"alice"_s, u"Click the image to change your profile picture"_s,
                                            u"Display name"_s, u"Bio"_s}
                             << u"Write something about yourself..."_s << u"Click to change profile picture"_s
                             << u"Save changes"_s << u"Profile picture"_s;
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{u"alice"_s, u"Klicka på bilden för att byta profilbild"_s,
                                            u"Visningsnamn"_s, u"Bio"_s}
                             << u"Skriv något om dig själv..."_s << u"Klicka för att byta profilbild"_s
                             << u"Spara ändringar"_s << u"Profilbild"_s;
}

void TestProfileCard::texts()
{
    QFETCH(Language, language);
    const SettingsPageProbe probe(language);
    QTEST(labelTexts(cardOf(probe)), "labels");
    QTEST(inCard<QPlainTextEdit>(probe)->placeholderText(), "placeholder");
    const auto *avatar = probe.the<QPushButton>(u"settingsAvatarBtn"_s);
    QTEST(avatar->toolTip(), "toolTip");
    QTEST(avatar->accessibleName(), "picture");
    QFETCH(QString, save);
    QCOMPARE(buttonWith(cardOf(probe), save)->text(), save);
    QCOMPARE(inCard<QLineEdit>(probe)->accessibleName(), labelTexts(cardOf(probe)).at(2));
    QCOMPARE(inCard<QPlainTextEdit>(probe)->accessibleName(), u"Bio"_s);
}

void TestProfileCard::layout()
{
    const SettingsPageProbe probe;
    const QWidget *card = cardOf(probe);
    QCOMPARE(card->objectName(), u"settingsCard"_s);
    QCOMPARE(spacesOf(card), u"20 20 20 20, spacing 14"_s);
    QCOMPARE(itemsOf(card),
             u"[#settingsAvatarBtn(AL) 16 [%1 QLabel stretch]*1] QLabel QLineEdit QLabel QPlainTextEdit "
             "[stretch QPushButton(Save changes)]"_s.arg(
                 QString::fromLatin1(labelWith(card, u"alice"_s)->metaObject()->className())));
    const auto *top = static_cast<const QBoxLayout *>(card->layout()->itemAt(0)->layout());
    QCOMPARE(top->spacing(), 0); // nothing joins the gap of 16
    const QRect avatar = probe.the<QPushButton>(u"settingsAvatarBtn"_s)->geometry();
    QCOMPARE(labelWith(card, u"alice"_s)->geometry().left(), avatar.right() + 1 + 16);
}

void TestProfileCard::avatarButton()
{
    const SettingsPageProbe probe;
    const auto *avatar = probe.the<QPushButton>(u"settingsAvatarBtn"_s);
    QCOMPARE(avatar->text(), u"AL"_s);
    QCOMPARE(avatar->minimumSize(), QSize(72, 72));
    QCOMPARE(avatar->maximumSize(), QSize(72, 72));
    QCOMPARE(avatar->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(avatar->styleSheet(),
             u"QPushButton { background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);"
             "border-radius: 36px; color: #7ab0f5; font-size: 22px; font-weight: 700; "
             "border: 3px solid #3b8beb; }QPushButton:hover { border-color: #7ab0f5; }"_s);
}

void TestProfileCard::initialsOfShortNames_data()
{
    QTest::addColumn<QByteArray>("username");
    QTest::addColumn<QString>("initials");
    QTest::newRow("one letter") << QByteArray("q") << u"Q"_s;
    QTest::newRow("two letters") << QByteArray("ab") << u"AB"_s;
    QTest::newRow("long") << QByteArray("karin.lund") << u"KA"_s;
    QTest::newRow("ampersand is no mnemonic") << QByteArray("a&b") << u"A&&"_s;
}

void TestProfileCard::initialsOfShortNames()
{
    QFETCH(QByteArray, username);
    const SettingsPageProbe probe(Language::English, {QString::fromUtf8(username), {}, {}});
    QTEST(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), "initials");
    QCOMPARE(inCard<QLineEdit>(probe)->text(), QString::fromUtf8(username));
    QCOMPARE(labelTexts(cardOf(probe)).constFirst(), QString::fromUtf8(username));
}

void TestProfileCard::fields()
{
    const SettingsPageProbe probe;
    const auto *name = inCard<QLineEdit>(probe);
    QCOMPARE(name->text(), u"alice"_s);
    QCOMPARE(name->styleSheet(), fieldStyle);
    const auto *bio = inCard<QPlainTextEdit>(probe);
    QCOMPARE(bio->toPlainText(), QString());
    QCOMPARE(propertyOf(*bio, "fixedHeight"), QVariant(70));
    QCOMPARE(bio->styleSheet(), fieldStyle);
}

void TestProfileCard::labelLooks()
{
    const SettingsPageProbe probe;
    const QWidget *card = cardOf(probe);
    const QLabel *hint = labelWith(card, u"Click the image to change your profile picture"_s);
    QCOMPARE(labelWith(card, u"alice"_s)->styleSheet(),
             u"color: #e8f0f8; font-size: 16px; font-weight: 700; background: transparent;"_s);
    QCOMPARE(hint->styleSheet(), u"color: #5a7a9a; font-size: 11px; background: transparent;"_s);
    QVERIFY(hint->wordWrap());
    for (const QString &label : {u"Display name"_s, u"Bio"_s})
        QCOMPARE(labelWith(card, label)->styleSheet(),
                 u"color: #5a7a9a; font-size: 11px; font-weight: 600; background: transparent;"_s);
}

void TestProfileCard::saveButton()
{
    const SettingsPageProbe probe;
    const QPushButton *save = buttonWith(cardOf(probe), u"Save changes"_s);
    QCOMPARE(save->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(save->styleSheet(), u"background: #3b8beb; color: #fff; border: none; border-radius: 6px;"
                                 "font-size: 12px; font-weight: 600; padding: 8px 20px;"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestProfileCard)
#include "tst_profile_card.moc"
