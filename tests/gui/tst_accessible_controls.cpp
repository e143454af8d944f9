// Every control of every page and dialog has a name and a role that a screen reader can say, in both
// languages; and nothing else is a control.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/language_select_dialog.h"
#include "tests/gui/tst_accessible_probe.h"
#include "tests/gui/tst_accessible_table.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/settings_switches_table.h"
#include "tests/support/test_main.h"
#include "ui/widgets/message_box.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTest>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestAccessibleControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void tellWhatTheyAre_data();
    void tellWhatTheyAre();
    void namesAreWords();
    void windowsHaveNames_data();
    void windowsHaveNames();
    void cleanupTestCase() { windows.clear(); }

private:
    const SettingsProbe &settings(Language language);

    std::map<Language, std::unique_ptr<SettingsProbe>> windows; // for all sections: a sign-in takes its time
};

namespace
{

const QByteArrayList sectionNames{"Account", "Privacy",    "Security", "Notifications",
                                  "Chat",    "Appearance", "Advanced", "About"};

using Look = std::function<void(const QWidget *, const QList<const QWidget *> &)>;

/// Anybody finds bob; there are two servers, one of them without a name.
bool fill(SettingsProbe &probe)
{
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"bob"}])");
    if (!listServers(probe, {server(u"group-1"_s, u"Harbour"_s), server(u"group-2"_s, {})}))
        return false;
    auto *search = probe.the<QLineEdit>(u"sideSearch"_s);
    search->setText(u"bob"_s);
    const auto *results = probe.the<QWidget>(u"searchResults"_s);
    return waitFor([results] { return results->isVisible(); });
}

bool lookAtBox(const SettingsProbe &probe, const QString &text, const Look &look)
{
    tideloft::ui::showWarning(probe.window.get(), text); // it opens and lets the program go on
    const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !QTest::qWaitForWindowActive(const_cast<QMessageBox *>(box)))
        return false;
    look(box, {});
    return true;
}

bool lookAtDialog(const QByteArray &page, SettingsProbe &probe, const Look &look)
{
    const auto use = [&look](const QWidget *shown) { look(shown, {}); };
    if (page == "create server")
        return withCreateDialog(probe, [&](QDialog &dialog) { use(&dialog); });
    if (page == "privacy")
        return withDialog([&] { probe.click(u"quilloryBtn"_s); }, [&](QDialog &dialog) { use(&dialog); });
    if (page == "user menu")
        return withUserMenu(probe, use);
    if (page == "server menu")
        return fill(probe) && withServerMenu(probe, use);
    if (page == "box" || page == "long box")
        return lookAtBox(probe, page == "box" ? u"No."_s : u"No.\n"_s.repeated(200), look);
    return false;
}

bool lookAtSettings(const QByteArray &page, const SettingsProbe &probe, const Look &look)
{
    const auto index = int(sectionNames.indexOf(page));
    if (index < 0 && page != "settings")
        return false;
    probe.openSettings();
    if (page == "settings") {
        look(probe.settingsPage(), {probe.sections()});
        return true;
    }
    probe.clickRow(index);
    look(probe.section(index), {});
    return true;
}

bool lookAtMainPage(const QByteArray &page, SettingsProbe &probe, const Look &look)
{
    if (page == "rail" || page == "sidebar") {
        const bool filled = fill(probe);
        look(probe.the<QWidget>(page == "rail" ? u"rail"_s : u"leftSidebar"_s), {});
        return filled;
    }
    if (page != "empty" && page != "chat")
        return false;
    const bool isThere = page == "empty" || probe.open(u"bob"_s);
    look(probe.center(), {});
    return isThere;
}

/// Shows PAGE in LANGUAGE, and LOOKs at it. SETTINGS is a window whose settings may be leafed through.
bool lookAt(const QByteArray &page, Language language, const SettingsProbe &settings, const Look &look)
{
    if (page == "language") {
        tideloft::app::LanguageSelectDialog dialog;
        dialog.show();
        look(&dialog, {});
        return true;
    }
    if (page == "sign-in") {
        const GuiProbe probe;
        probe.window->setLanguageIndex(1);
        probe.window->setLanguageIndex(static_cast<int>(language));
        look(probe.page(), {});
        return true;
    }
    if (lookAtSettings(page, settings, look))
        return true;
    SettingsProbe probe(Language::English);
    probe.choose(language); // the names follow
    return lookAtMainPage(page, probe, look) || lookAtDialog(page, probe, look);
}

QByteArrayList pages()
{
    QByteArrayList pages;
    for (const Control &control : controls()) {
        if (!pages.contains(control.page))
            pages.append(control.page);
    }
    return pages;
}

QStringList expectedControls(const QByteArray &page, Language language)
{
    QStringList expected;
    for (const Control &control : controls()) {
        if (control.page == page)
            expected.append(told(control.role, control.name.in(language), control.description.in(language)));
    }
    for (const SwitchRow &row : switchRows()) {
        if (sectionNames.at(row.section) == page)
            expected.append(told(QAccessible::CheckBox, row.label.in(language), row.hint.in(language)));
    }
    return expected;
}

} // namespace

const SettingsProbe &TestAccessibleControls::settings(Language language)
{
    std::unique_ptr<SettingsProbe> &window = windows[language];
    if (!window) {
        window = std::make_unique<SettingsProbe>(Language::English);
        window->choose(language);
    }
    return *window;
}

void TestAccessibleControls::tellWhatTheyAre_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<Language>("language");
    for (const QByteArray &page : pages()) {
        QTest::addRow("%s, Swedish", page.constData()) << page << Language::Swedish;
        QTest::addRow("%s, English", page.constData()) << page << Language::English;
    }
}

void TestAccessibleControls::tellWhatTheyAre()
{
    QFETCH(QByteArray, page);
    QFETCH(Language, language);
    QStringList found;
    QVERIFY(lookAt(page, language, settings(language),
                   [&found](const QWidget *root, const QList<const QWidget *> &except) {
                       found = controlsBelow(root, except);
                   }));
    QStringList missing = expectedControls(page, language);
    QStringList unexpected;
    for (const QString &control : found) {
        if (!missing.removeOne(control))
            unexpected.append(control);
    }
    QCOMPARE(unexpected.join(u'|'), QString());
    QCOMPARE(missing.join(u'|'), QString());
}

// A symbol or a sign can be seen, but not said.
void TestAccessibleControls::namesAreWords()
{
    for (const Control &control : controls()) {
        for (const QString &name : {control.name.swedish, control.name.english}) {
            const auto letters =
                std::count_if(name.begin(), name.end(), [](QChar sign) { return sign.isLetter(); });
            QVERIFY2(letters >= 2, qPrintable(name));
        }
    }
}

void TestAccessibleControls::windowsHaveNames_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::addColumn<QString>("name");
    const auto row = [](const QByteArray &page, QAccessible::Role role, const QString &swedish,
                        const QString &english) {
        QTest::addRow("%s, Swedish", page.constData()) << page << Language::Swedish << role << swedish;
        QTest::addRow("%s, English", page.constData()) << page << Language::English << role << english;
    };
    const QString question = u"Choose your language / Välj ditt språk"_s;
    row("language", QAccessible::Dialog, question, question);
    row("empty", QAccessible::Window, u"TideLoft"_s, u"TideLoft"_s);
    row("create server", QAccessible::Dialog, u"Skapa server"_s, u"Create server"_s);
    row("privacy", QAccessible::Dialog, u"Quillory — Integritet"_s, u"Quillory — Privacy"_s);
    row("box", QAccessible::AlertMessage, u"TideLoft"_s, u"TideLoft"_s);
    row("user menu", QAccessible::PopupMenu, u"Kontomeny"_s, u"Account menu"_s);
    row("server menu", QAccessible::PopupMenu, u"Servermeny"_s, u"Server menu"_s);
}

void TestAccessibleControls::windowsHaveNames()
{
    QFETCH(QByteArray, page);
    QFETCH(Language, language);
    QFETCH(QAccessible::Role, role);
    QFETCH(QString, name);
    QStringList found;
    QVERIFY(lookAt(page, language, settings(language),
                   [&found](const QWidget *root, const QList<const QWidget *> &) {
                       const QAccessibleInterface *spoken = spokenOf(root->window());
                       found.append(told(spoken->role(), spoken->text(QAccessible::Name), {}));
                   }));
    QCOMPARE(found, QStringList(told(role, name, {})));
}

TIDELOFT_GUI_TEST_MAIN(TestAccessibleControls)
#include "tst_accessible_controls.moc"
