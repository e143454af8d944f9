// Mutation of JSON as a tree: most of what bytes at random make of a reply is no JSON any more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/json_input.h"
#include "tests/fuzz/json_pieces.h"

#include <algorithm>
#include <random>

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);

using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

using Random = std::minstd_rand;

qsizetype below(Random &random, qsizetype bound)
{
    return static_cast<qsizetype>(random() >> 8) % bound;
}

template <typename List> auto oneOf(Random &random, const List &list)
{
    return list.at(below(random, list.size()));
}

QJsonValue changedText(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    const qsizetype size = bytes.size();
    bytes.resize(size + 32);
    bytes.resize(
        static_cast<qsizetype>(LLVMFuzzerMutate(reinterpret_cast<uint8_t *>(bytes.data()),
                                                static_cast<size_t>(size), static_cast<size_t>(size + 32))));
    return QString::fromUtf8(bytes);
}

QJsonValue changed(const QJsonValue &value, Random &random);

QJsonValue changedObject(QJsonObject object, Random &random)
{
    const QStringList names = object.keys();
    const qsizetype way = names.isEmpty() ? 0 : below(random, 8);
    if (way == 0) {
        object.insert(oneOf(random, memberNames()), oneOf(random, hostileValues()));
    } else if (way == 1) {
        object.remove(oneOf(random, names));
    } else if (way == 2) {
        object.insert(oneOf(random, memberNames()), object.value(oneOf(random, names)));
    } else {
        const QString name = oneOf(random, names);
        object.insert(name, changed(object.value(name), random));
    }
    return object;
}

QJsonValue changedArray(QJsonArray array, Random &random)
{
    const qsizetype way = array.isEmpty() ? 0 : below(random, 8);
    const qsizetype place = array.isEmpty() ? 0 : below(random, array.size());
    if (way == 0) {
        array.insert(place, oneOf(random, hostileValues()));
    } else if (way == 1) {
        array.removeAt(place);
    } else if (way == 2) {
        array.insert(below(random, array.size() + 1), QJsonValue(array.at(place)));
    } else if (way == 3) {
        array.append(array.takeAt(place));
    } else {
        array.replace(place, changed(array.at(place), random));
    }
    return array;
}

QJsonValue changed(const QJsonValue &value, Random &random)
{
    if (below(random, 16) == 0)
        return oneOf(random, hostileValues());
    if (value.isObject())
        return changedObject(value.toObject(), random);
    if (value.isArray())
        return changedArray(value.toArray(), random);
    if (value.isString() && below(random, 2) == 0)
        return changedText(value.toString());
    return oneOf(random, hostileValues());
}

QByteArray changedDocument(const QJsonDocument &document, Random &random)
{
    const QJsonValue root = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    QJsonValue result = changed(root, random);
    for (qsizetype more = below(random, 3); more > 0; --more)
        result = changed(result, random);
    const QJsonDocument made =
        result.isArray() ? QJsonDocument(result.toArray()) : QJsonDocument(result.toObject());
    return made.toJson(QJsonDocument::Compact);
}

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    Random random(seed);
    const QJsonDocument document = jsonInput(data, size);
    if (document.isNull() || below(random, 8) == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    const QByteArray made = changedDocument(document, random);
    if (made.isEmpty() || static_cast<size_t>(made.size()) > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(made.begin(), made.end(), data);
    return static_cast<size_t>(made.size());
}
