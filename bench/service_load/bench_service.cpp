// Measures the service from outside, under load: bench_service ROW [--full].
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/rows.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <map>

#include <sys/resource.h>

using namespace tideloft::bench;

namespace
{

const std::map<QString, void (*)(bool)> rows{
    {QStringLiteral("polling"), &measurePolling},
    {QStringLiteral("unchanged"), &measureUnchanged},
    {QStringLiteral("bytes"), &measureBytes},
    {QStringLiteral("saturation"), &measureSaturation},
    {QStringLiteral("history"), &measureHistory},
    {QStringLiteral("sends"), &measureSends},
    {QStringLiteral("kills"), &measureKills},
    {QStringLiteral("hostile"), &measureHostile},
    {QStringLiteral("trouble"), &measureTrouble},
    {QStringLiteral("retention"), &measureRetention},
    {QStringLiteral("shared"), &measureShared},
    {QStringLiteral("shared-unchanged"), &measureSharedUnchanged},
    {QStringLiteral("shared-sends"), &measureSharedSends},
    {QStringLiteral("growth"), &measureGrowth},
    {QStringLiteral("growth-file"), &measureGrowthOfAFile},
};

// Memory is bounded, so that a load which gets out of hand ends itself and not the machine.
void setLimits()
{
    constexpr rlim_t most = rlim_t{3} * 1024 * 1024 * 1024;
    const rlimit memory{most, most};
    setrlimit(RLIMIT_DATA, &memory);
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto row = rows.find(arguments.value(1));
    const bool full = arguments.value(2) == QStringLiteral("--full");
    if (row == rows.end() || arguments.size() > (full ? 3 : 2)) {
        std::fputs("Usage: bench_service ROW [--full]\n", stderr);
        return 2;
    }
    setLimits();
    row->second(full);
    return 0;
}
