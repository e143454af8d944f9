// What a service says of its errors, in the body or in the status line, comes over real HTTP to every place
// that shows an error, and to those that show none.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/gui/tst_hostile_probe.h"
#include "tests/support/long_form.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"
#include "ui/texts/bounded_text.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

namespace
{

/// TEXT in JSON, every unit of it escaped: half a surrogate pair stays one.
QByteArray quoted(const QString &text)
{
    QByteArray bytes = "\"";
    for (const QChar unit : text)
        bytes += "\\u" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
    return bytes + '"';
}

/// What is left of TEXT on a status line, which ends at a line break.
QByteArray phraseOf(const QString &text)
{
    QByteArray phrase = text.left(2'000).toUtf8();
    for (const char ending : {'\n', '\r', '\0'})
        phrase.replace(ending, ' ');
    return phrase.trimmed();
}

/// Lets REQUEST fail with TEXT. The return value is what the client then knows of it.
using Refusal = QString (*)(HostileProbe &, const QByteArray &request, const QString &text);

QString inMessage(HostileProbe &probe, const QByteArray &request, const QString &text)
{
    probe.service.answer(request, 400, "{\"message\":" + quoted(text) + '}');
    return text;
}

QString inError(HostileProbe &probe, const QByteArray &request, const QString &text)
{
    probe.service.answer(request, 500, "{\"error\":" + quoted(text) + '}');
    return text;
}

QString inReason(HostileProbe &probe, const QByteArray &request, const QString &text)
{
    const QByteArray phrase = phraseOf(text);
    probe.service.raw(request, "HTTP/1.1 400 " + phrase + "\r\nContent-Length: 0\r\n\r\n");
    return u"Error transferring %1%2 - server replied: "_s.arg(
               probe.service.url(), QString::fromLatin1(request.mid(request.indexOf('/'))))
           + QString::fromLatin1(phrase);
}

/// Does what makes the client send its request, and returns what is shown then.
struct Place {
    QByteArray request;
    QString (*use)(HostileProbe &);
    bool isSignIn = false;
};

QString onSignInPage(const HostileProbe &probe, const QString &button)
{
    probe.username()->setText(u"alice"_s);
    probe.password()->setText(u"correct horse"_s); // and with that, the last error goes
    probe.click(button);
    const auto answered = [&] {
        return probe.username()->isEnabled() && !probe.errorText().startsWith(u"(");
    };
    return waitFor(answered, patience()) ? probe.errorText() : u"(no error)"_s;
}

QString logIn(HostileProbe &probe)
{
    return onSignInPage(probe, u"primaryButton"_s);
}

QString createAccount(HostileProbe &probe)
{
    return onSignInPage(probe, u"ghostButton"_s);
}

QString sendMessage(HostileProbe &probe)
{
    probe.the<QLineEdit>(u"msgInput"_s)->setText(u"Hello"_s);
    callSlot(*probe.window, "onSendClicked");
    return probe.boxText();
}

/// Lets USE send REQUEST and waits for the answer, which nothing on the screen tells of.
QString silently(HostileProbe &probe, const QByteArray &request, const std::function<void()> &use)
{
    const qsizetype before = probe.service.count(request);
    use();
    const bool isAsked = probe.service.waitForRequests(request, before + 1) && probe.settle();
    return !isAsked ? u"(not asked)"_s : QApplication::activeModalWidget() ? u"(a box)"_s : QString();
}

QString search(HostileProbe &probe)
{
    return silently(probe, "GET /api/users/search", [&] {
        auto *field = probe.the<QLineEdit>(u"sideSearch"_s);
        field->clear();
        QTest::keyClicks(field, u"bob"_s);
    });
}

QString saveProfile(HostileProbe &probe)
{
    if (!probe.settingsPage())
        probe.openSettings();
    return silently(probe, "POST /api/profile/update",
                    [&] { buttonWith(probe.content(Account), u"Save changes"_s)->click(); });
}

QString makeServer(HostileProbe &probe)
{
    return silently(probe, "POST /api/groups", [&] { createServer(probe, u"Server"_s); });
}

QString registerKey(HostileProbe &probe)
{
    return silently(probe, "POST /api/chat/device-key", [&] {
        callSlot(*probe.window, "onMeLoaded", Q_ARG(QJsonObject, (QJsonObject{{u"username"_s, u"alice"_s}})));
        probe.refreshTimer()->stop();
    });
}

QString refresh(HostileProbe &probe)
{
    return silently(probe, "GET /api/groups", [&] { registerKey(probe); });
}

} // namespace

Q_DECLARE_METATYPE(Place)
Q_DECLARE_METATYPE(Refusal)

class TestHostileErrors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void shown_data();
    void shown();
    void silent_data();
    void silent();
    void deviceIdentifiers_data();
    void deviceIdentifiers();

private:
    /// Runs EXPECT for every text, or in the short form for some of them, and looks for trouble after each.
    void walk(HostileProbe &probe, const std::function<QString(const QString &text)> &complaint);
};

void TestHostileErrors::walk(HostileProbe &probe,
                             const std::function<QString(const QString &text)> &complaint)
{
    QVERIFY(probe.texts().size() >= 100);
    static qsizetype start = 0; // rows begin at different texts, so that together they take all
    const qsizetype step = rounds(9, 1);
    for (qsizetype i = start++ % step; i < probe.texts().size(); i += step) {
        const HostileText &hostile = probe.texts().at(i);
        QString wrong = complaint(hostile.text);
        if (wrong.isEmpty())
            wrong = probe.trouble();
        QVERIFY2(wrong.isEmpty(), hostile.name + ": " + wrong.left(500).toUtf8());
    }
}

void TestHostileErrors::shown_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<Refusal>("refuse");
    QTest::addColumn<Language>("language");
    const QList<std::pair<const char *, Place>> places{
        {"signing in", {"POST /api/auth/login", logIn, true}},
        {"own profile", {"GET /api/me", logIn, true}},
        {"new account", {"POST /api/auth/register", createAccount, true}},
        {"keys", {"GET /api/chat/public-key/bob", sendMessage}},
        {"sending", {"POST /api/chat/send", sendMessage}}};
    for (const auto &[name, place] : places) {
        QTest::addRow("%s: message", name) << place << Refusal(inMessage) << Language::English;
        QTest::addRow("%s: error", name) << place << Refusal(inError) << Language::Swedish;
        QTest::addRow("%s: reason phrase", name) << place << Refusal(inReason) << Language::English;
        QTest::addRow("%s: reason phrase, Swedish", name) << place << Refusal(inReason) << Language::Swedish;
    }
}

void TestHostileErrors::shown()
{
    QFETCH(const Place, place);
    QFETCH(const Refusal, refuse);
    QFETCH(const Language, language);
    HostileProbe probe(language);
    QVERIFY(probe.open(u"bob"_s));
    probe.service.answer("GET /api/chat/public-key/bob", 200,
                         R"({"keys":[{"deviceId":"X","publicKeyBase64":")"
                             + tideloft::crypto::readPublicKeyFile().toUtf8() + R"("}]})");
    if (place.isSignIn)
        probe.window->logOut();
    walk(probe, [&](const QString &text) {
        const QString expected = firstPart(refuse(probe, place.request, text), errorLimits);
        const QString actual = place.use(probe);
        return actual == expected ? QString()
                                  : u"shows "_s + actual.left(200) + u" not "_s + expected.left(200);
    });
}

void TestHostileErrors::silent_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<Refusal>("refuse");
    const QList<std::pair<const char *, Place>> places{
        {"search", {"GET /api/users/search", search}},
        {"saving the profile", {"POST /api/profile/update", saveProfile}},
        {"creating a server", {"POST /api/groups", makeServer}},
        {"registering the key", {"POST /api/chat/device-key", registerKey}},
        {"own devices", {"GET /api/chat/device-keys/me", registerKey}},
        {"servers", {"GET /api/groups", refresh}}};
    for (const auto &[name, place] : places) {
        QTest::addRow("%s: message", name) << place << Refusal(inMessage);
        QTest::addRow("%s: reason phrase", name) << place << Refusal(inReason);
    }
}

void TestHostileErrors::silent()
{
    QFETCH(const Place, place);
    QFETCH(const Refusal, refuse);
    HostileProbe probe(Language::English);
    walk(probe, [&](const QString &text) {
        refuse(probe, place.request, text);
        return place.use(probe);
    });
}

void TestHostileErrors::deviceIdentifiers_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("English") << Language::English << u"Encryption failed: "_s;
    QTest::newRow("Swedish") << Language::Swedish << u"Kryptering misslyckades: "_s;
}

void TestHostileErrors::deviceIdentifiers()
{
    QFETCH(const Language, language);
    QFETCH(const QString, prefix);
    HostileProbe probe(language);
    QVERIFY(probe.open(u"bob"_s));
    walk(probe, [&](const QString &text) {
        probe.service.answer("GET /api/chat/public-key/bob", 200,
                             R"({"keys":[{"deviceId":)" + quoted(text) + R"(,"publicKeyBase64":"eA=="}]})");
        const QString shown = sendMessage(probe);
        QString expected =
            firstPart(prefix + u"RSA encrypt failed for device '"_s + text.trimmed(), errorLimits);
        if (expected.endsWith(u'…')) // what stands there of the reason differs
            expected.chop(1);
        const bool isShown = shown.startsWith(text.trimmed().isEmpty() ? prefix : expected);
        return isShown ? QString() : u"shows "_s + shown.left(200);
    });
}

TIDELOFT_GUI_TEST_MAIN(TestHostileErrors)
#include "tst_hostile_errors.moc"
