// Answers to --help and --version.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/command_line.h"

#include "app/identity.h"
#include "net/service_host.h"

#include <string_view>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

QString helpText()
{
    return u"Usage: tideloft [OPTION]...\n"
           "The desktop client of the TideLoft end-to-end encrypted chat service.\n"
           "\n"
           "  --help     show this text and end\n"
           "  --version  show the version and the service it was built for, and end\n"
           "\n"
           "Options of the toolkit, such as -platform and -style, are taken too;\n"
           "everything else is ignored.\n"_s;
}

QString versionText()
{
    return u"%1 %2\nService: %3\n"_s.arg(applicationName, applicationVersion(), net::serviceHost());
}

} // namespace

std::optional<QString> answerTo(std::span<char *const> arguments)
{
    for (const std::string_view argument : arguments.subspan(arguments.empty() ? 0 : 1)) {
        if (argument == "--help")
            return helpText();
        if (argument == "--version")
            return versionText();
    }
    return std::nullopt;
}

} // namespace tideloft::app
