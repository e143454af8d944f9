// What the toolkit keeps in memory of endless headers, and of the endless body of a refusal.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "net/api_client.h"
#include "tests/support/net/flooding_service.h"
#include "tests/support/test_home.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tideloft;

namespace
{

constexpr qint64 mebibyte = qint64{1024} * 1024;
constexpr auto longest = 120s;

// The most that was resident so far, in MiB.
double peakMemory()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The kernel does not tell the resident memory.");
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ').at(1).toDouble() / 1024;
    }
    qFatal("The kernel does not tell the most of the resident memory.");
}

void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write("5") != 1)
        qFatal("The kernel does not forget the most of the resident memory.");
}

// The service ends the connection once it has sent what it may; the client reports a failure then.
void measure(const QByteArray &what, qint64 sentAtMost, const QByteArray &head, const QByteArray &piece)
{
    const tests::FloodingService service(head, piece, sentAtMost);
    net::ApiClient client;
    QEventLoop loop;
    QObject::connect(&client, &net::ApiClient::meFailed, &loop, &QEventLoop::quit);
    QTimer::singleShot(longest, &loop, [&service] {
        qFatal("The client does not report the end after %lld bytes.",
               static_cast<long long>(service.taken()));
    });
    forgetPeak();
    const double before = peakMemory();
    client.fetchMe();
    loop.exec();
    const double sent = static_cast<double>(service.mostTaken()) / mebibyte;
    bench::inform("memory that " + what + " takes", QByteArray::number((peakMemory() - before) / sent, 'f', 2)
                                                        + " bytes a byte (" + QByteArray::number(sent, 'f', 0)
                                                        + " MiB sent)");
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QCoreApplication application(argc, argv);
    measure("an endless body of status 401", 512 * mebibyte,
            "HTTP/1.1 401 Unauthorized\r\nContent-Type: application/json\r\n\r\n", QByteArray(mebibyte, ' '));
    measure("an endless row of headers", 16 * mebibyte, "HTTP/1.1 200 OK\r\n",
            ("X-More: " + QByteArray(1000, 'x') + "\r\n").repeated(100));
    measure("one endless header", 16 * mebibyte, "HTTP/1.1 200 OK\r\nX-More: ", QByteArray(mebibyte, 'x'));
    return 0;
}
