// Whatever a person types into the search, the service reads exactly that.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "net/search_query.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::tests::LoopbackService;

namespace
{

// As a service decodes a form: "+" is a blank, then the percent signs.
QString formDecoded(QByteArray value)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(value.replace('+', ' ')));
}

} // namespace

class TestSearchQuery : public QObject
{
    Q_OBJECT

private slots:
    void arrivesUnchanged_data();
    void arrivesUnchanged();
};

void TestSearchQuery::arrivesUnchanged_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QByteArray>("onTheWire");
    const auto row = [](const char *name, const QString &query, const char *onTheWire) {
        QTest::newRow(name) << query << QByteArray(onTheWire);
    };
    row("plain", u"bob"_s, "bob");
    row("blank and ampersand", u"tom & jerry"_s, "tom%20%26%20jerry");
    row("plus", u"a+b"_s, "a%2Bb");
    row("looks encoded", u"%41"_s, "%2541");
    row("lone percent", u"50%"_s, "50%25");
    row("percent before a digit", u"%4"_s, "%254");
    row("hash", u"#"_s, "%23");
    row("only an ampersand", u"&"_s, "%26");
    row("another item", u"x&q=y"_s, "x%26q%3Dy");
    row("equals sign", u"="_s, "%3D");
    row("question mark and slash", u"../?"_s, "..%2F%3F");
    row("blanks around", u"  bob "_s, "%20%20bob%20");
    row("Swedish letters", u"ÅÄÖ"_s, "%C3%85%C3%84%C3%96");
    row("emoji", u"💬"_s, "%F0%9F%92%AC");
    row("combining mark stays apart", u"a\u030a"_s, "a%CC%8A");
    row("quotes and brackets", u"\"'<>[]{}|\\^`"_s, "%22%27%3C%3E%5B%5D%7B%7D%7C%5C%5E%60");
    row("line break and tab", u"a\r\nb\tc"_s, "a%0D%0Ab%09c");
    row("semicolon and colon", u"a;b:c@d"_s, "a%3Bb%3Ac%40d");
    row("unreserved", u"-._~"_s, "-._~");
    row("empty", QString(), "");
}

void TestSearchQuery::arrivesUnchanged()
{
    QFETCH(const QString, query);
    QFETCH(const QByteArray, onTheWire);
    LoopbackService service;
    service.answer("GET /api/users/search", 200, "[]");
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::searchLoaded);
    client.searchUsers(query);
    QVERIFY(loaded.wait());
    QCOMPARE(service.requests().size(), 1);
    const QByteArray target = service.lastRequest().target;
    QCOMPARE(target, "/api/users/search?q=" + onTheWire);
    QCOMPARE(formDecoded(target.mid(target.indexOf('=') + 1)), query);
}

TIDELOFT_TEST_MAIN(TestSearchQuery)
#include "tst_search_query.moc"
