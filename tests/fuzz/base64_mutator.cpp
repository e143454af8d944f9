// Mutation of what a key file's Base64 stands for: bytes changed in the text itself rarely reach a key's
// numbers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/json_input.h"

#include <algorithm>

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);

using namespace tideloft::tests;

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    const QByteArray input = rawInput(data, size);
    const QByteArray half = input.startsWith('p') ? QByteArray("p") : QByteArray();
    QByteArray key = QByteArray::fromBase64(input.sliced(half.size()));
    if (seed % 4 == 0 || key.isEmpty())
        return LLVMFuzzerMutate(data, size, maxSize);
    const qsizetype before = key.size();
    key.resize(before + 64);
    key.resize(static_cast<qsizetype>(LLVMFuzzerMutate(reinterpret_cast<uint8_t *>(key.data()),
                                                       static_cast<size_t>(before),
                                                       static_cast<size_t>(key.size()))));
    const QByteArray made = half + key.toBase64();
    if (static_cast<size_t>(made.size()) > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(made.begin(), made.end(), data);
    return static_cast<size_t>(made.size());
}
