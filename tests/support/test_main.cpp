// The main() of programs of tests: "PROGRAM [CLASS] [ARGUMENTS]" runs the tests of one class, so that none
// finds what another class left behind. The other arguments are for the test framework.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_class.h"

#include <filesystem>
#include <iostream>
#include <map>
#include <string>

namespace
{

/// Made when the first class enters, which is before main() and in no order that is known.
std::map<std::string, tideloft::tests::RunTests> &testClasses()
{
    static std::map<std::string, tideloft::tests::RunTests> classes;
    return classes;
}

int nameAClass(const char *program)
{
    std::cerr << "Usage: " << program << " CLASS [ARGUMENTS of the test framework]\nClasses:";
    for (const auto &[name, run] : testClasses())
        std::cerr << ' ' << name;
    std::cerr << '\n';
    return 2;
}

} // namespace

bool tideloft::tests::addTestClass(const char *file, RunTests run)
{
    return testClasses().emplace(std::filesystem::path(file).stem(), run).second;
}

int main(int argc, char **argv)
{
    const auto &classes = testClasses();
    const auto named = classes.find(argc > 1 ? argv[1] : "");
    if (named != classes.end()) {
        argv[1] = argv[0];
        return named->second(argc - 1, argv + 1);
    }
    return classes.size() == 1 ? classes.begin()->second(argc, argv) : nameAClass(argv[0]);
}
