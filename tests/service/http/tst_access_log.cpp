// One line of the log for each request, whatever the request holds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/access_log.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestAccessLog : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
};

void TestAccessLog::lines_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("route");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("problem");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *name, const char *method, const char *route, int status,
                        const char *problem, const char *line) {
        QTest::newRow(name) << QByteArray(method) << QByteArray(route) << status << QByteArray(problem)
                            << QByteArray(line);
    };
    row("answered", "GET", "/a/{name}", 200, "", "GET /a/{name} 200");
    row("no method and no route", "", "", 404, "", "- - 404");
    row("a problem with a line break", "GET", "/broken", 500, "pipe\nburst",
        "GET /broken 500: pipe\\x0aburst");
    row("a method that commands a terminal", "G\x1b[2J", "", 404, "", "G\\x1b[2J - 404");
}

void TestAccessLog::lines()
{
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, route);
    QFETCH(int, status);
    QFETCH(QByteArray, problem);
    Response response;
    response.status = status;
    response.route = route;
    response.problem = problem;
    QTEST(logLine(method, response), "line");
}

TIDELOFT_TEST_MAIN(TestAccessLog)
#include "tst_access_log.moc"
