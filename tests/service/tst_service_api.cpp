// Sends the examples of the service's page to a real service. Every endpoint has an example there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_server.h"
#include "tests/service/key_material.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

struct Example {
    QByteArray method;
    QByteArray target;
    QMap<QByteArray, QByteArray> headers;
    QByteArray body;
    int status = 0;
    QMap<QByteArray, QByteArray> replyHeaders;
    QByteArray reply;
};

QByteArray page()
{
    QFile file(QStringLiteral(SERVICE_API_PAGE));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray firstLine(const QByteArray &text)
{
    return text.split('\n').constFirst();
}

// The lines up to the first that is empty; what comes behind is left in TEXT.
QMap<QByteArray, QByteArray> takeHeaders(QByteArray &text)
{
    QMap<QByteArray, QByteArray> headers;
    while (!text.isEmpty()) {
        const QByteArray line = firstLine(text);
        text.remove(0, line.size() + 1);
        if (line.isEmpty())
            break;
        headers.insert(line.left(line.indexOf(':')), line.mid(line.indexOf(':') + 1).trimmed());
    }
    return headers;
}

Example parse(const QByteArray &text)
{
    const qsizetype middle = text.indexOf("\n---\n");
    QByteArray request = text.left(middle);
    QByteArray reply = text.mid(middle + 5);
    const QByteArray first = firstLine(request);
    request.remove(0, first.size() + 1);
    Example example;
    example.method = first.split(' ').value(0);
    example.target = first.split(' ').value(1);
    example.headers = takeHeaders(request);
    example.body = request;
    const QByteArray status = firstLine(reply);
    reply.remove(0, status.size() + 1);
    example.status = status.toInt();
    example.replyHeaders = takeHeaders(reply);
    example.reply = reply;
    return example;
}

QList<Example> examples()
{
    const QByteArray text = page();
    QList<Example> found;
    const QByteArray begin = "```http\n";
    for (qsizetype at = text.indexOf(begin); at >= 0; at = text.indexOf(begin, at + 1)) {
        const qsizetype from = at + begin.size();
        found << parse(text.mid(from, text.indexOf("\n```", from) - from));
    }
    return found;
}

} // namespace

class TestServiceApi : public QObject
{
    Q_OBJECT

private slots:
    void examplesAreTrue();
    void everyEndpointHasAnExample();

private:
    void check(const Example &example);
    QByteArray filledIn(QByteArray text) const;
    bool matches(const QJsonValue &expected, const QJsonValue &actual);
    bool matches(const QString &expected, const QString &actual);

    QMap<QString, QString> names{{u"rsaKey"_s, rsaPublicKey(2048)}, {u"wrappedKey"_s, base64(256)}};
    QMap<QByteArray, QByteArray> sessions;
    std::unique_ptr<ApiServer> server;
};

QByteArray TestServiceApi::filledIn(QByteArray text) const
{
    for (auto name = names.cbegin(); name != names.cend(); ++name)
        text.replace('$' + name.key().toUtf8(), name->toUtf8());
    return text;
}

bool TestServiceApi::matches(const QString &expected, const QString &actual)
{
    if (expected == u"…"_s)
        return !actual.isEmpty();
    if (!expected.startsWith(u'$'))
        return expected == actual;
    const QString name = expected.mid(1);
    if (!names.contains(name))
        names.insert(name, actual);
    return !actual.isEmpty() && names.value(name) == actual;
}

bool TestServiceApi::matches(const QJsonValue &expected, const QJsonValue &actual)
{
    if (expected.isString())
        return actual.isString() && matches(expected.toString(), actual.toString());
    if (expected.isArray()) {
        const QJsonArray items = expected.toArray();
        bool same = actual.isArray() && items.size() == actual.toArray().size();
        for (qsizetype i = 0; same && i < items.size(); ++i)
            same = matches(items[i], actual.toArray()[i]);
        return same;
    }
    if (!expected.isObject())
        return expected == actual;
    const QJsonObject members = expected.toObject();
    bool same = members.keys() == actual.toObject().keys();
    for (const QString &key : members.keys())
        same = same && matches(members.value(key), actual.toObject().value(key));
    return same;
}

void TestServiceApi::check(const Example &example)
{
    const QByteArray user = example.headers.value("As");
    QByteArray more;
    if (example.headers.contains("If-None-Match"))
        more = "If-None-Match: " + filledIn(example.headers.value("If-None-Match")) + "\r\n";
    QByteArray body = filledIn(example.body);
    const QByteArray type = example.headers.value("Content-Type", "application/json");
    if (type.startsWith("multipart"))
        body.replace('\n', "\r\n").append("\r\n");
    const HttpReply reply =
        server->call(example.method, filledIn(example.target), sessions.value(user), body, type, more);
    QCOMPARE(reply.status, example.status);
    for (auto header = example.replyHeaders.cbegin(); header != example.replyHeaders.cend(); ++header)
        QVERIFY2(matches(QString::fromUtf8(*header),
                         QString::fromUtf8(reply.headers.value(header.key().toLower()))),
                 header.key());
    if (reply.headers.contains("set-cookie") && example.target.endsWith("login"))
        sessions.insert(reply.object().value(u"username"_s).toString().toLatin1(),
                        reply.headers.value("set-cookie").split(';').constFirst());
    QJsonParseError error;
    const QJsonDocument expected = QJsonDocument::fromJson(example.reply, &error);
    if (error.error != QJsonParseError::NoError) {
        QCOMPARE(reply.body, example.reply);
        return;
    }
    const QJsonDocument actual = QJsonDocument::fromJson(reply.body);
    const bool same = expected.isArray()
                          ? matches(QJsonValue(expected.array()), QJsonValue(actual.array()))
                          : matches(QJsonValue(expected.object()), QJsonValue(actual.object()));
    QVERIFY2(same, reply.body);
}

void TestServiceApi::examplesAreTrue()
{
    server = std::make_unique<ApiServer>();
    const QList<Example> all = examples();
    QVERIFY(all.size() > 25);
    for (const Example &example : all) {
        check(example);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(u"in the example %1 %2"_s.arg(QString::fromUtf8(example.method),
                                                           QString::fromUtf8(example.target))));
    }
}

void TestServiceApi::everyEndpointHasAnExample()
{
    const QTemporaryDir folder;
    const Api api({folder.filePath(u"test.sqlite"_s)}, {});
    QByteArrayList headings;
    QByteArrayList withoutExample;
    for (const QByteArray &part : page().split('#')) { // a heading has two or three of them
        const QByteArray line = firstLine(part).trimmed();
        if (!line.startsWith("GET ") && !line.startsWith("POST "))
            continue;
        headings << line;
        if (!part.contains("```http\n" + line.split(' ').first() + ' '))
            withoutExample << line;
    }
    QByteArrayList endpoints = api.endpoints();
    std::sort(endpoints.begin(), endpoints.end());
    std::sort(headings.begin(), headings.end());
    QCOMPARE(headings, endpoints);
    QCOMPARE(withoutExample, QByteArrayList());
}

TIDELOFT_TEST_MAIN(TestServiceApi)
#include "tst_service_api.moc"
