// Runs a fuzz target once for every file of a corpus, so that each compiler's build looks at what was found.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace
{

std::set<std::filesystem::path> filesOf(const std::filesystem::path &corpus)
{
    std::set<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(corpus)) {
        if (entry.is_regular_file())
            files.insert(entry.path());
    }
    return files;
}

void replay(const std::filesystem::path &path)
{
    std::fprintf(stderr, "%s\n", path.filename().c_str()); // the last one named is the one that failed
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    // A copy of exactly that size, so that a sanitizer sees a read behind the end.
    const std::vector<uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s CORPUS\n", argv[0]);
        return 2;
    }
    const auto files = filesOf(argv[1]);
    for (const auto &file : files)
        replay(file);
    std::printf("%zu files replayed\n", files.size());
    return files.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
