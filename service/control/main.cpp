// Entry point of tideloftctl: does one command and ends.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/call_parser.h"
#include "service/control/output.h"
#include "service/system/process.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

using namespace tideloft::service;
using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    keepFilesForOwner(); // a copy of the database is nobody else's to read
    const QCoreApplication application(argc, argv);
    const ParsedCall parsed = parseCall(QCoreApplication::arguments());
    if (!parsed.command) {
        std::fputs(parsed.text.toUtf8().constData(), parsed.exitCode == 0 ? stdout : stderr);
        return parsed.exitCode;
    }
    try {
        parsed.command->run(parsed.call);
    } catch (const std::exception &error) {
        say(u"tideloftctl: %1"_s.arg(QString::fromUtf8(error.what())), stderr);
        return 1;
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
