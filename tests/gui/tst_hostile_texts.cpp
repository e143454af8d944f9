// Words of others are shown as they stand, wherever they come from: never as markup, never read from a file,
// never fetched, and never so that the window grows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_hostile_probe.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"
#include "ui/settings/profile_card.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"

#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTcpSocket>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using namespace tideloft::ui;

class TestHostileTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void watchSeesFilesAndHosts();
    void everyWayIn_data();
    void everyWayIn();
};

namespace
{

/// What reaches the screen of TEXT, and what should: both said by a way in.
struct Shown {
    QStringList actual;
    QStringList expected;
};
using WayIn = Shown (*)(HostileProbe &, const QString &text);

QLabel *label(const HostileProbe &probe, const char *name)
{
    return probe.the<QLabel>(QString::fromLatin1(name));
}

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

QStringList labels(const QWidget *root)
{
    QStringList texts;
    for (const auto *each : root->findChildren<QLabel *>())
        texts.append(each->text());
    return sorted(texts);
}

Shown ownName(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onMeLoaded", Q_ARG(QJsonObject, (QJsonObject{{u"username"_s, text}})));
    probe.refreshTimer()->stop();
    const QString name = text.trimmed().toLower();
    return {{label(probe, "myName")->text(), label(probe, "footerAvatar")->text()}, {name, initials(name)}};
}

Shown ownNameInProfile(HostileProbe &probe, const QString &text)
{
    const auto owner = std::make_unique<QWidget>(probe.window.get());
    const ProfileCard card = makeProfileCard(text, Language::English, owner.get());
    owner->resize(500, 400);
    card.card->resize(500, 400);
    owner->show();
    QCoreApplication::processEvents();
    const bool isNarrow = card.card->minimumSizeHint().width() <= 500;
    return {{labels(card.card).contains(text) ? text : u"(missing)"_s, card.avatarButton->text(),
             isNarrow ? u"narrow"_s : u"wide"_s},
            {text, initials(text).replace(u'&', u"&&"_s), u"narrow"_s}};
}

QListWidget *listConversation(HostileProbe &probe, const QString &peer, const QString &text)
{
    const QJsonArray items{QJsonObject{{u"peer"_s, peer}, {u"text"_s, text}}};
    callSlot(*probe.window, "onConversationsLoaded", Q_ARG(QJsonArray, items));
    return probe.the<QListWidget>(u"dmList"_s);
}

Shown peerName(HostileProbe &probe, const QString &text)
{
    const QListWidget *list = listConversation(probe, text, u"Hi"_s);
    const QString name = text.trimmed();
    if (name.isEmpty())
        return {{QString::number(list->count())}, {u"0"_s}};
    return {labels(list->itemWidget(list->item(0)))
                + QStringList{list->item(0)->data(Qt::UserRole).toString()},
            sorted({name, initials(name), u"Hi"_s, QString()}) + QStringList{name}};
}

Shown preview(HostileProbe &probe, const QString &text)
{
    const QListWidget *list = listConversation(probe, u"bob"_s, text);
    // The avatar, the name, the preview, the time. Previews are cut where the row's 140 px end.
    const auto *shown = list->itemWidget(list->item(0))->findChildren<QLabel *>().at(2);
    return {{shown->text()},
            {shown->fontMetrics().elidedText(firstPart(text, previewLimits), Qt::ElideRight, 140,
                                             Qt::TextLongestVariant)}};
}

Shown openPeer(HostileProbe &probe, const QString &text)
{
    const QString name = text.trimmed();
    if (name.isEmpty())
        return {};
    QListWidget *list = listConversation(probe, text, u"Hi"_s);
    emit list->itemClicked(list->item(0));
    return {{label(probe, "centerTitle")->text(), label(probe, "peerAvatar")->text()},
            {name, initials(name)}};
}

QListWidget *showHistory(HostileProbe &probe, const QString &from, const QString &text)
{
    if (label(probe, "centerTitle")->text() != u"bob") {
        QListWidget *list = listConversation(probe, u"bob"_s, u"Hi"_s);
        emit list->itemClicked(list->item(0));
    }
    const QJsonArray items{QJsonObject{{u"from"_s, from}, {u"text"_s, text}}};
    callSlot(*probe.window, "onHistoryLoaded", Q_ARG(QString, u"bob"_s), Q_ARG(QJsonArray, items));
    return probe.the<QListWidget>(u"messageList"_s);
}

Shown message(HostileProbe &probe, const QString &text)
{
    const QListWidget *list = showHistory(probe, u"bob"_s, text);
    const QStringList shown = labels(list->itemWidget(list->item(1)));
    const QString part = firstPart(text, messageLimits);
    return {{shown.contains(part) ? part : u"(missing)"_s}, {part}};
}

Shown senderName(HostileProbe &probe, const QString &text)
{
    const QListWidget *list = showHistory(probe, text, u"Hi"_s);
    const QString name = text.trimmed();
    const QStringList shown = labels(list->itemWidget(list->item(1)));
    const QString low = list->itemWidget(list->item(1))->sizeHint().height() < 120 ? u"low"_s : u"high"_s;
    return {{shown.contains(name) ? name : u"(missing)"_s, low}, {name, u"low"_s}};
}

Shown searchResult(HostileProbe &probe, const QString &text)
{
    const QJsonArray users{QJsonObject{{u"username"_s, text}}};
    callSlot(*probe.window, "onSearchLoaded", Q_ARG(QJsonArray, users));
    const auto *list = probe.the<QListWidget>(u"searchResults"_s);
    const QString name = text.trimmed();
    if (name.isEmpty())
        return {{QString::number(list->count())}, {u"0"_s}};
    const QListWidgetItem *entry = list->item(0);
    const bool isWhole = entry->text() == u"👤  "_s + name;
    const bool isCut = entry->text() == u"👤  "_s + inOneLine(name);
    const QString low = list->visualItemRect(entry).height() < 80 ? u"low"_s : u"high"_s;
    return {{isWhole || isCut ? name : entry->text(), entry->data(Qt::UserRole).toString(), low},
            {name, name, u"low"_s}};
}

/// What is seen of a tip, without its white space: a wide tip has its lines broken anywhere.
QString seenOf(const QString &tip)
{
    QTextDocument document;
    document.setHtml(tip);
    QString seen = document.toPlainText();
    seen.removeIf([](QChar character) { return character.isSpace(); });
    return seen;
}

Shown serverName(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, QJsonArray{server(u"1"_s, text)}));
    QAbstractButton *button = serverButtons(probe).value(0);
    const QString tip = tipOf(button);
    const QString escaped = Qt::convertFromPlainText(
        firstPart(text, {.characters = 300, .lines = 10, .emoji = 100, .effort = 30'000}),
        Qt::WhiteSpaceNormal);
    const QStringList onButton{button->text(), button->toolTip(), seenOf(tip)};
    button->click();
    return {onButton + QStringList{label(probe, "centerTitle")->text()},
            {initials(text, 1).replace(u'&', u"&&"_s), text, seenOf(escaped), text}};
}

Shown serverIdentifier(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, QJsonArray{server(text, {})}));
    serverButtons(probe).value(0)->click();
    return {{label(probe, "centerTitle")->text()}, {text}};
}

Shown sendFailure(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onMessageSendFailed", Q_ARG(QString, text));
    return {{probe.boxText()}, {firstPart(text, errorLimits)}};
}

Shown keysFailure(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onUserPublicKeysFailed", Q_ARG(QString, u"bob"_s), Q_ARG(QString, text));
    return {{probe.boxText()}, {firstPart(text, errorLimits)}};
}

Shown deviceIdentifier(HostileProbe &probe, const QString &text)
{
    showHistory(probe, u"bob"_s, u"Hi"_s);
    probe.the<QLineEdit>(u"msgInput"_s)->setText(u"Hello"_s);
    callSlot(*probe.window, "onSendClicked");
    const QJsonArray keys{QJsonObject{{u"deviceId"_s, text}, {u"publicKeyBase64"_s, u"eA=="_s}}};
    callSlot(*probe.window, "onUserPublicKeysLoaded", Q_ARG(QString, u"bob"_s), Q_ARG(QJsonArray, keys),
             Q_ARG(QString, QString()));
    const QString shown = probe.boxText();
    return {{shown.contains(text.left(1'000)) ? text : shown}, {text}};
}

Shown signInError(HostileProbe &probe, const QString &text)
{
    callSlot(*probe.window, "onLoginFailed", Q_ARG(QString, text));
    return {{probe.errorText()}, {firstPart(text, errorLimits)}};
}

void addRow(const char *name, WayIn way)
{
    QTest::addRow("%s, English", name) << way << Language::English;
    QTest::addRow("%s, Swedish", name) << way << Language::Swedish;
}

} // namespace

Q_DECLARE_METATYPE(WayIn)

void TestHostileTexts::watchSeesFilesAndHosts()
{
    HostileProbe probe(Language::English);
    const QString source = probe.texts().at(33).text.section(u'"', 1, 1); // the picture that markup names
    QVERIFY(QLabel(u"<img src=\"%1\">"_s.arg(source)).sizeHint().isValid());
    QCOMPARE(probe.trouble(), u"touched "_s + source);
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, 9);
    QCOMPARE(probe.trouble(), u"touched connect 127.0.0.1:9"_s);
}

void TestHostileTexts::everyWayIn_data()
{
    QTest::addColumn<WayIn>("way");
    QTest::addColumn<Language>("language");
    addRow("own name in the footer", ownName);
    addRow("own name in the settings", ownNameInProfile);
    addRow("peer's name in the list", peerName);
    addRow("preview", preview);
    addRow("peer's name above the chat", openPeer);
    addRow("message", message);
    addRow("sender", senderName);
    addRow("search result", searchResult);
    addRow("server's name", serverName);
    addRow("server's identifier", serverIdentifier);
    addRow("why sending failed", sendFailure);
    addRow("why keys are missing", keysFailure);
    addRow("device that cannot be written to", deviceIdentifier);
    addRow("why signing in failed", signInError);
}

void TestHostileTexts::everyWayIn()
{
    QFETCH(const WayIn, way);
    QFETCH(const Language, language);
    HostileProbe probe(language);
    QVERIFY(probe.texts().size() >= 100);
    if (way == signInError)
        probe.window->logOut();
    QCOMPARE(probe.trouble(), QString());
    qsizetype count = 0;
    const qsizetype step = rounds(2, 1); // in the short form each language takes every other text
    for (qsizetype i = step > 1 && language == Language::Swedish ? 1 : 0; i < probe.texts().size();
         i += step) {
        const HostileText &hostile = probe.texts().at(i);
        const Shown shown = way(probe, hostile.text);
        QVERIFY2(shown.actual == shown.expected,
                 hostile.name + ": " + shown.actual.join(u" | "_s).left(300).toUtf8());
        const QString trouble = probe.trouble();
        QVERIFY2(trouble.isEmpty(), hostile.name + ": " + trouble.toUtf8());
        count += shown.actual.isEmpty() ? 0 : 1;
    }
    QVERIFY(count * step > 90);
}

TIDELOFT_GUI_TEST_MAIN(TestHostileTexts)
#include "tst_hostile_texts.moc"
