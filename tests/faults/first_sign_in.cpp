// What a first start and sign-in do with the data directory, in a process of its own: waits for a line on its
// input, and prints the device identifier and the public key, or what went wrong, a line each. With arguments
// "after MICROSECONDS" it is killed that long after the line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "net/device_identity.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

void print(const QString &line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void beKilledAfter(long microseconds)
{
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer{};
    itimerspec when{};
    when.it_value = {microseconds / 1'000'000, microseconds % 1'000'000 * 1000 + 1};
    if (timer_create(CLOCK_MONOTONIC, &event, &timer) != 0 || timer_settime(timer, 0, &when, nullptr) != 0)
        qFatal("No timer to be killed by.");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"TideLoft"_s);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    print(u"ready"_s);
    std::getchar();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"after"_s)
        beKilledAfter(arguments.value(2).toLong());
    print(net::loadOrCreateDeviceId(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)));
    QString error;
    if (!crypto::ensureKeyPair(&error)) {
        print(u"Key pair error: "_s + error);
        return 0;
    }
    const QString publicKey = crypto::readPublicKeyFile(&error);
    print(publicKey.isEmpty() ? u"Public key error: "_s + error : publicKey);
    return 0;
}
