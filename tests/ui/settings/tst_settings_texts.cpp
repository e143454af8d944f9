// The parts of the settings that are neither switches nor buttons: fields and fixed texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;
using tideloft::ui::LocalizedText;

class TestSettingsTexts : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void accountFields_data();
    void accountFields();
    void accountFieldsAreSavedByNothing();
    void shieldCard_data();
    void shieldCard();
    void recentActivity_data();
    void recentActivity();
    void aboutBadgeAndNames();
    void aboutMotto_data();
    void aboutMotto();
    void aboutFacts_data();
    void aboutFacts();
    void aboutCutsALongHost();
    void inlineStylesIgnoreTheLightTheme();
};

namespace
{

const QString factLabel = u"color: #5a7a9a; font-size: 12px; background: transparent;"_s;
const QString factValue = u"color: #e8f0f8; font-size: 12px; background: transparent;"_s;

void addLanguages(const LocalizedText &words)
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("text");
    QTest::newRow("English") << Language::English << words.english;
    QTest::newRow("Swedish") << Language::Swedish << words.swedish;
}

/// The card of the section in which a label with TEXT stands.
QWidget *cardWith(const QWidget *content, const QString &text)
{
    QWidget *part = labelWith(content, text);
    while (part && part->objectName() != u"settingsCard")
        part = part->parentWidget();
    if (!part)
        qFatal("\"%s\" stands in no card", qPrintable(text));
    return part;
}

} // namespace

void TestSettingsTexts::accountFields_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("filledWith");
    QTest::newRow("username English") << Language::English << u"Username"_s << QString() << u"alice"_s;
    QTest::newRow("username Swedish") << Language::Swedish << u"Användarnamn"_s << QString() << u"alice"_s;
    QTest::newRow("bio English") << Language::English << u"Bio"_s << u"Write something about yourself..."_s
                                 << QString();
    QTest::newRow("bio Swedish") << Language::Swedish << u"Bio"_s << u"Skriv något om dig själv..."_s
                                 << QString();
}

void TestSettingsTexts::accountFields()
{
    QFETCH(Language, language);
    QFETCH(QString, label);
    const SettingsPageProbe probe(language);
    const QWidget *row = probe.row(Account, label);
    QCOMPARE(spacesOf(row), u"16 12 16 12, spacing 6"_s);
    QCOMPARE(itemsOf(row), u"QLabel QLineEdit"_s);
    QCOMPARE(row->findChild<QLabel *>()->styleSheet(),
             u"color: #5a7a9a; font-size: 11px; font-weight: 600; background: transparent;"_s);
    const auto *field = row->findChild<QLineEdit *>();
    QTEST(field->placeholderText(), "placeholder");
    QTEST(field->text(), "filledWith");
    QCOMPARE(field->accessibleName(), label);
    QCOMPARE(field->styleSheet(), u"background: #0c151e; border: 1px solid #1a2d40; border-radius: 6px;"
                                  "padding: 8px 12px; color: #e8f0f8; font-size: 13px;"_s);
}

void TestSettingsTexts::accountFieldsAreSavedByNothing()
{
    const SettingsPageProbe probe;
    for (const QString &label : {u"Username"_s, u"Bio"_s}) {
        auto *field = probe.row(Account, label)->findChild<QLineEdit *>();
        QTest::keyClicks(field, u"changed"_s);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QCOMPARE(probe.window.sentSignals(), 0);
}

void TestSettingsTexts::shieldCard_data()
{
    addLanguages({u"Ditt konto är verifierat och säkert"_s, u"Your account is verified and secure"_s});
}

void TestSettingsTexts::shieldCard()
{
    QFETCH(Language, language);
    QFETCH(QString, text);
    const SettingsPageProbe probe(language);
    const QWidget *card = probe.content(Security)->layout()->itemAt(1)->widget();
    QCOMPARE(card->objectName(), u"settingsCard"_s);
    QCOMPARE(itemsOf(card), u"[QLabel [QLabel QLabel]*1 QLabel]"_s);
    QMap<QString, QString> styles;
    for (const auto *label : card->findChildren<QLabel *>())
        styles.insert(label->text(), label->styleSheet());
    QCOMPARE(styles.size(), 4);
    QCOMPARE(styles.take(u"Trust & Safety"_s),
             u"color: #e8f0f8; font-size: 14px; font-weight: 700; background: transparent;"_s);
    QCOMPARE(styles.take(text), u"color: #3ba55d; font-size: 12px; background: transparent;"_s);
    QCOMPARE(styles.take(u"✓ Verified"_s),
             u"color: #3ba55d; font-size: 13px; font-weight: 700; background: transparent;"_s);
    QCOMPARE(styles.values(), QStringList{u"font-size: 28px; background: transparent;"_s}); // the icon's
}

void TestSettingsTexts::recentActivity_data()
{
    addLanguages({u"Senaste inloggningar visas här"_s, u"Recent logins will appear here"_s});
}

void TestSettingsTexts::recentActivity()
{
    QFETCH(Language, language);
    QFETCH(QString, text);
    const SettingsPageProbe probe(language);
    const QWidget *card = cardWith(probe.content(Security), text);
    QCOMPARE(labelTexts(card), QStringList{text});
    QCOMPARE(labelWith(card, text)->styleSheet(), factLabel);
    QCOMPARE(probe.content(Security)->layout()->indexOf(card),
             probe.content(Security)->layout()->count() - 2); // a stretch below it
}

void TestSettingsTexts::aboutBadgeAndNames()
{
    const SettingsPageProbe probe;
    const QWidget *about = probe.content(About);
    const QLabel *badge = labelWith(about, u"TL"_s);
    QCOMPARE(badge->minimumSize(), QSize(72, 72));
    QCOMPARE(badge->maximumSize(), QSize(72, 72));
    QVERIFY(badge->alignment().testFlag(Qt::AlignHCenter));
    QCOMPARE(badge->styleSheet(),
             u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);"
             "border-radius: 18px; color: #fff; font-size: 26px; font-weight: 800;"_s);
    QCOMPARE(labelWith(about, u"TideLoft"_s)->styleSheet(),
             u"color: #e8f0f8; font-size: 22px; font-weight: 800; background: transparent;"_s);
    QCOMPARE(labelWith(about, QStringLiteral("Version " TIDELOFT_VERSION))->styleSheet(),
             u"color: #5a7a9a; font-size: 13px; background: transparent;"_s);
}

void TestSettingsTexts::aboutMotto_data()
{
    addLanguages({u"Privat. Säker. Snabb."_s, u"Private. Secure. Fast."_s});
}

void TestSettingsTexts::aboutMotto()
{
    QFETCH(Language, language);
    QFETCH(QString, text);
    const SettingsPageProbe probe(language);
    QCOMPARE(labelWith(probe.content(About), text)->styleSheet(),
             u"color: #7ab0f5; font-size: 12px; background: transparent;"_s);
}

void TestSettingsTexts::aboutFacts_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    const QString service = u"TideLoft service (localhost:1)"_s;
    const QString toolkit = u"Qt "_s + QString::fromLatin1(qVersion());
    QTest::newRow("English") << Language::English << QStringList{u"Encryption"_s, u"RSA-2048 + AES-256-GCM"_s,
                                                                 u"Protocol"_s,   u"TLS 1.3"_s,
                                                                 u"Backend"_s,    service,
                                                                 u"Client"_s,     toolkit,
                                                                 u"License"_s,    u"MIT"_s};
    QTest::newRow("Swedish") << Language::Swedish << QStringList{u"Kryptering"_s, u"RSA-2048 + AES-256-GCM"_s,
                                                                 u"Protokoll"_s,  u"TLS 1.3"_s,
                                                                 u"Backend"_s,    service,
                                                                 u"Klient"_s,     toolkit,
                                                                 u"Licens"_s,     u"MIT"_s};
}

void TestSettingsTexts::aboutFacts()
{
    QFETCH(Language, language);
    QFETCH(QStringList, expected);
    const SettingsPageProbe probe(language);
    const QWidget *card = cardWith(probe.content(About), u"TLS 1.3"_s);
    QCOMPARE(labelTexts(card), expected);
    for (int i = 0; i < expected.size(); i += 2) {
        QCOMPARE(labelWith(card, expected.at(i))->styleSheet(), factLabel);
        QCOMPARE(labelWith(card, expected.at(i + 1))->styleSheet(), factValue);
    }
    probe.clickRow(About);
    for (int i = 0; i < expected.size(); i += 2) { // a line each, the label left of its value
        const QRect label = labelWith(card, expected.at(i))->geometry();
        const QRect value = labelWith(card, expected.at(i + 1))->geometry();
        QCOMPARE(label.top(), value.top());
        QVERIFY(label.right() < value.left());
    }
}

// Sections scroll up and down alone: what is wider than the page would be out of reach.
void TestSettingsTexts::aboutCutsALongHost()
{
    const QString host = u"%1.%1.%1.localhost"_s.arg(QString(60, u'w'));
    const SettingsPageProbe probe(Language::English, {u"alice"_s, {}, host});
    probe.clickRow(About);
    const QWidget *about = probe.content(About);
    labelWith(about, u"TideLoft service (%1)"_s.arg(host)); // which fails without one
    QTRY_COMPARE(about->width(), about->parentWidget()->width());
}

void TestSettingsTexts::inlineStylesIgnoreTheLightTheme()
{
    const SettingsPageProbe probe;
    const auto styles = [&probe] {
        QStringList all;
        for (int i = Account; i <= About; ++i) {
            if (i == Appearance)
                continue; // its buttons mark the choice
            for (const auto *part : probe.content(i)->findChildren<QWidget *>())
                all.append(part->styleSheet());
        }
        return all;
    };
    const QStringList before = styles();
    probe.clickRow(Appearance);
    QTest::mouseClick(buttonWith(probe.content(Appearance), u"Light"_s), Qt::LeftButton);
    QCOMPARE(styles(), before);
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsTexts)
#include "tst_settings_texts.moc"
