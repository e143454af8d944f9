// Names that others chose stand in a path as they are. Whatever they hold, the request goes to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

struct Way {
    const char *name;
    void (*ask)(ApiClient &client, const QString &name, const QString &picture);
};

const QList<Way> ways{
    {"history", [](ApiClient &client, const QString &name, const QString &) { client.fetchHistory(name); }},
    {"keys",
     [](ApiClient &client, const QString &name, const QString &) { client.fetchUserPublicKeys(name); }},
    {"server", [](ApiClient &client, const QString &name, const QString &) { client.fetchServer(name); }},
    {"icon", [](ApiClient &client, const QString &name,
                const QString &picture) { client.uploadServerIcon(name, picture); }},
    {"search", [](ApiClient &client, const QString &name, const QString &) { client.searchUsers(name); }},
};

struct Name {
    const char *what;
    QString name; ///< "%1" stands for another host
};

QList<Name> names()
{
    return {
        {"parent folders", u"../../../../x"_s},
        {"encoded parent folders", u"%2e%2e/%2e%2e/x"_s},
        {"a host after slashes", u"//%1/x"_s},
        {"a whole URL", u"http://%1/x"_s},
        {"parents and a host", u"../../..//%1/x"_s},
        {"a user and a host", u"@%1/x"_s},
        {"a user with a password", u"a:b@%1"_s},
        {"a port", u":1/x"_s},
        {"a query", u"bob?to=%1&a=b"_s},
        {"a fragment", u"bob#//%1"_s},
        {"an encoded slash", u"bob%2f..%2f"_s},
        {"percents that encode nothing", u"100% %zz %"_s},
        {"backslashes", u"\\\\%1\\x"_s},
        {"brackets", u"[::1]"_s},
        {"blanks", u"  bob  eve  "_s},
        {"line breaks", u"bob HTTP/1.1\r\nHost: %1\r\nX-Evil: 1\r\n\r\nGET /x"_s},
        {"encoded line breaks", u"bob%0d%0aX-Evil: 1"_s},
        {"control characters", u"a\tb\x01\x1b\x7f\u0085\u2028"_s},
        {"NUL", QString(u'a') + QChar() + u'b'},
        {"a lone surrogate", QString(u'a') + QChar(0xd800) + u'b'},
        {"a lone low surrogate", QString(QChar(0xdc00))},
        {"right to left", u"\u202ebob\u2066"_s},
        {"emoji", u"\U0001f600"_s},
        {"5,000 characters", QString(5000, u'n')},
        {"5,000 emoji", u"\U0001f600"_s.repeated(5000)},
        {"nothing", QString()},
        {"a dot", u"."_s},
        {"quotes and angles", u"\"<'>`{|}^"_s},
    };
}

bool isFitForARequestLine(const QByteArray &target)
{
    return std::all_of(target.begin(), target.end(),
                       [](char character) { return character > ' ' && character < 0x7f; });
}

} // namespace

class TestNamesInPaths : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theRequestStaysOnTheService_data();
    void theRequestStaysOnTheService();

private:
    QTemporaryDir directory;
};

void TestNamesInPaths::initTestCase()
{
    QFile picture(directory.filePath(u"me.png"_s));
    QVERIFY(picture.open(QIODevice::WriteOnly));
    QCOMPARE(picture.write("\x89PNG"), 4);
}

void TestNamesInPaths::theRequestStaysOnTheService_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<QString>("name");
    for (int way = 0; way < ways.size(); ++way) {
        for (const Name &name : names())
            QTest::addRow("%s: %s", ways.at(way).name, name.what) << way << name.name;
    }
}

// Either one request at the service, whole and with its own host, or none at all.
void TestNamesInPaths::theRequestStaysOnTheService()
{
    QFETCH(const int, way);
    QFETCH(QString, name);
    LoopbackService elsewhere;
    LoopbackService service; // made last: it is the one that the client knows
    const QString otherHost = elsewhere.url().mid(7);
    name.replace(u"%1"_s, otherHost);
    ApiClient client;
    QSignalSpy settled(&client, &ApiClient::meFailed);

    ways.at(way).ask(client, name, directory.filePath(u"me.png"_s));
    QTRY_COMPARE(service.requests().size(), 1);
    const RecordedRequest request = service.lastRequest();
    QCOMPARE(request.header("Host"), service.url().mid(7).toLatin1());
    QVERIFY2(isFitForARequestLine(request.target), request.target.constData());
    QVERIFY2(request.target.startsWith('/'), request.target.constData());
    QVERIFY(!request.hasHeader("X-Evil"));

    client.fetchMe();
    QVERIFY(settled.wait());
    QCOMPARE(service.requests().size(), 2); // and no third one, split off the first
    QCOMPARE(elsewhere.requests().size(), 0);
}

TIDELOFT_TEST_MAIN(TestNamesInPaths)
#include "tst_names_in_paths.moc"
