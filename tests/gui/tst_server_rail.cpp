// The servers in the rail: their buttons, opening one, and rebuilds at every moment.
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHelpEvent>
#include <QJsonDocument>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QScrollArea>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray groups = QByteArrayLiteral("GET /api/groups");

QJsonObject server(const QString &id, const QString &name)
{
    return {{u"groupId"_s, id}, {u"name"_s, name}, {u"iconUrl"_s, u"/icons/"_s + id}};
}

QLayout *columnOf(const GuiProbe &probe)
{
    if (const auto *place = probe.the<QWidget>(u"rail"_s)->findChild<QScrollArea *>())
        return place->widget()->layout();
    qFatal("The rail has no column for servers");
}

QList<QAbstractButton *> buttonsOf(const GuiProbe &probe)
{
    QList<QAbstractButton *> buttons;
    const QLayout *column = columnOf(probe);
    for (int i = 0; i < column->count(); ++i)
        buttons.append(qobject_cast<QAbstractButton *>(column->itemAt(i)->widget()));
    return buttons;
}

bool list(GuiProbe &probe, const QJsonArray &servers)
{
    probe.service.answer(groups, 200, QJsonDocument(servers).toJson());
    // A list that is still under way would take this one's place; and the buttons are laid out after the
    // call.
    return probe.settle() && callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, servers))
           && probe.settle();
}

QList<bool> checksOf(const GuiProbe &probe)
{
    QList<bool> checks;
    for (const QAbstractButton *button : buttonsOf(probe))
        checks.append(button->isChecked());
    return checks;
}

QString styleOf(const QString &background, const QString &border)
{
    return u"QPushButton { background: %1; border: 1px solid %2; border-radius: 10px; color: #e8f0f8; "
           "font-size: 14px; font-weight: 700; }QPushButton:hover { border-radius: 8px; border-color: "
           "#5aa0f5; }QPushButton:checked { border-radius: 8px; background: rgba(59,139,235,0.25); "
           "border-color: #3b8beb; }"_s.arg(background, border);
}

// Opens the context menu of the first button, lets USE look at it and act, and returns once it is closed.
// False: no menu came up.
bool withMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use)
{
    bool seen = false;
    QTimer::singleShot(0, [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            seen = true;
            use(menu);
            menu->close();
        }
    });
    QAbstractButton *button = buttonsOf(probe).first();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(button, &event);
    return seen;
}

} // namespace

class TestServerRail : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void initialsOfAServer_data();
    void initialsOfAServer();
    void buttonAsDesigned();
    void listAfterSignInFillsTheRail();
    void skipsWhatIsNoServer();
    void emptyListEmptiesTheRail();
    void openingShowsTheNotice_data();
    void openingShowsTheNotice();
    void openingAServerWithoutANameShowsItsIdentifier();
    void openingSendsNothing();
    void openingClosesTheConversation();
    void theOpenServerStaysMarkedAcrossLists();
    void keysAndClicksOpen_data();
    void keysAndClicksOpen();
    void menuInItsOrder_data();
    void menuInItsOrder();
    void menuOpensTheServer();
    void listArrivesWhileTheMenuIsOpen();
    void hostileNames_data();
    void hostileNames();
};

void TestServerRail::initialsOfAServer_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("alpha shows A") << u"alpha"_s << u"A"_s;
    QTest::newRow("x shows X") << u"x"_s << u"X"_s;
    QTest::newRow("an empty name shows an empty button") << QString() << QString();
}

void TestServerRail::initialsOfAServer()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    GuiProbe probe;
    QVERIFY(list(probe, {server(u"g1"_s, name)}));
    QCOMPARE(buttonsOf(probe).first()->text(), shown);
    QCOMPARE(buttonsOf(probe).first()->toolTip(), name);
}

void TestServerRail::buttonAsDesigned()
{
    GuiProbe probe;
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    QTest::mouseClick(buttonsOf(probe).at(1), Qt::LeftButton);
    QCOMPARE(checksOf(probe), (QList<bool>{false, true}));
    for (const QAbstractButton *button : buttonsOf(probe)) {
        QCOMPARE(propertyOf(*button, "fixedWidth"), QVariant(36));
        QCOMPARE(propertyOf(*button, "fixedHeight"), QVariant(36));
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(button->contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(button->isCheckable());
        QVERIFY(button->icon().isNull());
        QVERIFY(!button->accessibleName().isEmpty());
    }
    QCOMPARE(buttonsOf(probe).at(0)->styleSheet(), styleOf(u"#131e2a"_s, u"#1a2d40"_s));
    QCOMPARE(buttonsOf(probe).at(1)->styleSheet(), styleOf(u"rgba(59,139,235,0.2)"_s, u"#3b8beb"_s));
}

void TestServerRail::listAfterSignInFillsTheRail()
{
    GuiProbe probe;
    probe.service.answer(groups, 200, R"([{"groupId":"g1","name":"one"},{"groupId":"g2","name":"two"}])");
    QVERIFY(probe.signIn());
    QTRY_COMPARE(buttonsOf(probe).size(), 2);
    QCOMPARE(buttonsOf(probe).at(0)->text(), u"O"_s);
    QCOMPARE(buttonsOf(probe).at(1)->text(), u"T"_s);
}

void TestServerRail::skipsWhatIsNoServer()
{
    GuiProbe probe;
    QVERIFY(list(probe, {u"text"_s, 7, QJsonObject{{u"name"_s, u"No id"_s}}, server(u"g"_s, u"Good"_s)}));
    QCOMPARE(buttonsOf(probe).size(), 1);
    QCOMPARE(buttonsOf(probe).first()->toolTip(), u"Good"_s);
}

void TestServerRail::emptyListEmptiesTheRail()
{
    GuiProbe probe;
    QVERIFY(list(probe, {server(u"g"_s, u"Good"_s)}));
    const QPointer<QAbstractButton> old = buttonsOf(probe).first();
    QVERIFY(list(probe, {}));
    QCOMPARE(columnOf(probe)->count(), 0);
    QVERIFY(!old); // at once, not later
}

void TestServerRail::openingShowsTheNotice_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("notice");
    QTest::newRow("Swedish") << 0 << u"Server-chatt kommer snart. Välj en kanal från webklienten."_s;
    QTest::newRow("English") << 1 << u"Server chat coming soon. Select a channel from the web client."_s;
}

void TestServerRail::openingShowsTheNotice()
{
    QFETCH(int, language);
    QFETCH(QString, notice);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"my Club"_s)}));
    QTest::mouseClick(buttonsOf(probe).first(), Qt::LeftButton);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"my Club"_s);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"Server"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), u"M"_s);
    const auto *messages = probe.the<QListWidget>(u"messageList"_s);
    QCOMPARE(messages->count(), 1);
    QListWidgetItem *item = messages->item(0);
    QCOMPARE(item->flags(), Qt::NoItemFlags);
    const QWidget *row = messages->itemWidget(item);
    QCOMPARE(item->sizeHint(), row->sizeHint());
    const auto labels = row->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), notice);
    QCOMPARE(labels.first()->styleSheet(), u"color: #5a7a9a; font-size: 13px; background: transparent;"_s);
    QCOMPARE(labels.first()->alignment(), Qt::AlignCenter);
    QVERIFY(labels.first()->wordWrap());
}

void TestServerRail::openingAServerWithoutANameShowsItsIdentifier()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"group-7"_s, {})}));
    QTest::mouseClick(buttonsOf(probe).first(), Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"group-7"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), QString());
}

void TestServerRail::openingSendsNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(probe.settle());
    probe.refreshTimer()->stop();
    probe.service.clear();
    QTest::mouseClick(buttonsOf(probe).first(), Qt::LeftButton);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
}

void TestServerRail::openingClosesTheConversation()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(probe.open(u"bob"_s));
    QTest::mouseClick(buttonsOf(probe).first(), Qt::LeftButton);
    QVERIFY(probe.settle());
    probe.refreshTimer()->stop();
    probe.service.clear();
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /api/chat/history/bob"), 0);
    QCOMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 1); // still the notice
    probe.click(u"railBtn=💬"_s);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestServerRail::theOpenServerStaysMarkedAcrossLists()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    const QJsonArray servers{server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)};
    QVERIFY(list(probe, servers));
    QTest::mouseClick(buttonsOf(probe).at(1), Qt::LeftButton);
    QVERIFY(list(probe, {server(u"g2"_s, u"Two"_s), server(u"g3"_s, u"Three"_s)}));
    QCOMPARE(checksOf(probe), (QList<bool>{true, false}));
    // A click on the open one does not uncheck it.
    QTest::mouseClick(buttonsOf(probe).first(), Qt::LeftButton);
    QCOMPARE(checksOf(probe), (QList<bool>{true, false}));
}

void TestServerRail::keysAndClicksOpen_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way : {u"click"_s, u"double click"_s, u"space"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

// Each rebuilds the rail from inside an event of a button that the rebuild deletes.
void TestServerRail::keysAndClicksOpen()
{
    QFETCH(QString, way);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> old = buttonsOf(probe).first();
    if (way == u"space") {
        old->setFocus();
        QTest::keyClick(probe.window->windowHandle(), Qt::Key_Space); // to whatever has the focus by then
    } else {
        const QPoint spot = old->mapTo(probe.window.get(), old->rect().center());
        QTest::mouseClick(probe.window->windowHandle(), Qt::LeftButton, {}, spot);
        if (way == u"double click")
            QTest::mouseDClick(probe.window->windowHandle(), Qt::LeftButton, {}, spot);
    }
    QVERIFY(!old);
    QCOMPARE(checksOf(probe), QList<bool>{true});
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
}

void TestServerRail::menuInItsOrder_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QStringList>("actions");
    QTest::newRow("Swedish") << 0 << QStringList{u"Ladda upp server-ikon"_s, u"Öppna server"_s};
    QTest::newRow("English") << 1 << QStringList{u"Upload server icon"_s, u"Open server"_s};
}

void TestServerRail::menuInItsOrder()
{
    QFETCH(int, language);
    QFETCH(QStringList, actions);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    QStringList shown;
    QPoint place;
    const QPoint expected = buttonsOf(probe).first()->mapToGlobal(QPoint(5, 5));
    const bool seen = withMenu(probe, [&](QMenu *menu) {
        for (const QAction *action : menu->actions())
            shown.append(action->text());
        place = menu->pos();
    });
    QVERIFY(seen);
    QCOMPARE(shown, actions);
    QCOMPARE(place, expected);
    QCOMPARE(probe.centerPage(), u"emptyState"_s); // closed without a choice: nothing
}

void TestServerRail::menuOpensTheServer()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> old = buttonsOf(probe).first();
    QVERIFY(withMenu(probe, [](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    }));
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"One"_s);
    QCOMPARE(checksOf(probe), QList<bool>{true});
    QVERIFY(!old);
}

void TestServerRail::listArrivesWhileTheMenuIsOpen()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(list(probe, {server(u"g1"_s, u"One"_s)}));
    probe.service.answer(groups, 200, R"([{"groupId":"g1","name":"Renamed"}])");
    probe.service.hold(groups);
    const qsizetype before = probe.service.count(groups);
    QVERIFY(callSlot(*probe.window, "onServerIconUploaded", Q_ARG(QString, {}), Q_ARG(QString, {})));
    QVERIFY(probe.service.waitForRequests(groups, before + 1));
    const QPointer<QAbstractButton> old = buttonsOf(probe).first();
    bool rebuilt = false;
    QVERIFY(withMenu(probe, [&](QMenu *menu) {
        probe.service.release(groups);
        rebuilt = QTest::qWaitFor([&] { return !old; });
        menu->setActiveAction(menu->actions().at(1));
        QTest::keyClick(menu, Qt::Key_Return);
    }));
    QVERIFY(rebuilt);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"Renamed"_s);
}

void TestServerRail::hostileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup") << u"<img src=\"/dev/zero\">"_s << u"<"_s;
    QTest::newRow("ampersand") << u"&Club"_s << u"&&"_s; // doubled: a shown "&", not a shortcut
    QTest::newRow("line breaks") << u"One\nTwo\nThree"_s << u"O"_s;
    QTest::newRow("5,000 characters") << QString(5000, u'w') << u"W"_s;
    QTest::newRow("an emoji first") << u"🌍 World"_s << u"🌍"_s;
}

void TestServerRail::hostileNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    const QSize before = probe.window->size();
    QVERIFY(list(probe, {server(u"g1"_s, name)}));
    QAbstractButton *button = buttonsOf(probe).first();
    QCOMPARE(button->text(), shown);
    QCOMPARE(button->toolTip(), name);
    QVERIFY(button->shortcut().isEmpty());
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(button, &event);
    QTextDocument document;
    document.setHtml(QToolTip::text());
    const QString tip = document.toPlainText().replace(QChar::LineSeparator, u'\n');
    QVERIFY2(tip.startsWith(name.left(300)), qPrintable(tip));
    QToolTip::hideText();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->textFormat(), Qt::PlainText);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), name);
    QCoreApplication::processEvents();
    QCOMPARE(probe.window->size(), before);
    QCOMPARE(probe.window->minimumSizeHint().width() <= before.width(), true);
}

TIDELOFT_GUI_TEST_MAIN(TestServerRail)
#include "tst_server_rail.moc"
