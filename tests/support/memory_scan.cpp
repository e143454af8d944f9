// Reading of /proc/self/mem.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/memory_scan.h"

#include <QFile>
#include <QSet>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace tideloft::tests
{

namespace
{

constexpr qsizetype soughtSize = 16;
constexpr size_t chunkSize = 1 << 20;
constexpr char turn = '\x5a';

// Memory of its own, which is not searched: what is read into it would be found a second time.
class Window
{
public:
    Window() : bytes(mmap(nullptr, chunkSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))
    {
        if (bytes == MAP_FAILED)
            qFatal("No memory to look at memory with.");
    }
    Q_DISABLE_COPY_MOVE(Window)
    ~Window() { munmap(bytes, chunkSize); }

    [[nodiscard]] const char *data() const { return static_cast<const char *>(bytes); }
    [[nodiscard]] void *buffer() const { return bytes; }
    [[nodiscard]] quint64 begin() const { return reinterpret_cast<quint64>(bytes); }
    [[nodiscard]] quint64 end() const { return begin() + chunkSize; }

private:
    void *const bytes;
};

struct Range {
    quint64 begin;
    quint64 end;
    QByteArray name;
};

// Lines of /proc/self/maps: "begin-end rwxp ... name". Without the window, which may lie inside a range.
QList<Range> writableRanges(const Window &window)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        qFatal("No list of this process's memory.");
    QList<Range> ranges;
    for (const QByteArray &line : maps.readAll().split('\n')) {
        const qsizetype dash = line.indexOf('-');
        const qsizetype blank = line.indexOf(' ');
        if (blank < 0 || line.mid(blank + 1, 2) != "rw")
            continue;
        const quint64 begin = line.first(dash).toULongLong(nullptr, 16);
        const quint64 end = line.mid(dash + 1, blank - dash - 1).toULongLong(nullptr, 16);
        const QByteArray name = line.mid(line.lastIndexOf(' ') + 1);
        if (window.begin() > begin)
            ranges.append({begin, std::min(end, window.begin()), name});
        if (window.end() < end)
            ranges.append({std::max(begin, window.end()), end, name});
    }
    return ranges;
}

size_t headOf(const char *bytes)
{
    return size_t(uchar(bytes[0])) << 8 | uchar(bytes[1]);
}

const size_t turnedHead = size_t(uchar(turn)) << 8 | uchar(turn);

bool isAt(const char *place, const QByteArray &turnedSecret)
{
    for (qsizetype i = 0; i < soughtSize; ++i) {
        if ((place[i] ^ turn) != turnedSecret[i])
            return false;
    }
    return true;
}

} // namespace

void SoughtSecrets::add(const QByteArray &secret)
{
    Q_ASSERT(secret.size() >= soughtSize);
    addTurned(turned(secret));
}

QByteArray SoughtSecrets::turned(const QByteArray &secret)
{
    QByteArray result(soughtSize, '\0');
    for (qsizetype i = 0; i < soughtSize; ++i)
        result[i] = static_cast<char>(secret[i] ^ turn);
    return result;
}

// Calls REPORT with the number of a secret, a range and an address for each place.
template <typename Report> void SoughtSecrets::search(const Report &report) const
{
    std::array<QList<qsizetype>, 1 << 16> byHead; // which of them begin with these two bytes
    for (qsizetype i = 0; i < secrets.size(); ++i)
        byHead[headOf(secrets[i].constData())].append(i);
    const Window window;
    const int memory = open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
    for (const Range &range : writableRanges(window)) {
        // A chunk begins a little before the end of the last: no secret is cut in two.
        for (quint64 at = range.begin; at + soughtSize <= range.end; at += chunkSize - soughtSize + 1) {
            const size_t wanted = std::min<quint64>(chunkSize, range.end - at);
            const ssize_t size = pread(memory, window.buffer(), wanted, static_cast<off_t>(at));
            for (ssize_t i = 0; i + soughtSize <= size; ++i) {
                for (const qsizetype which : byHead[headOf(window.data() + i) ^ turnedHead]) {
                    if (isAt(window.data() + i, secrets[which]))
                        report(which, range, at + static_cast<quint64>(i));
                }
            }
        }
    }
    close(memory);
}

QList<int> SoughtSecrets::places() const
{
    QList<int> counts(secrets.size(), 0);
    search([&](qsizetype which, const Range &, quint64) { ++counts[which]; });
    return counts;
}

int SoughtSecrets::found() const
{
    QSet<qsizetype> seen;
    search([&](qsizetype which, const Range &range, quint64 address) {
        seen.insert(which);
        qWarning("secret %lld lies at %llx, %llx before the end of %s", qlonglong(which), qulonglong(address),
                 qulonglong(range.end - address), range.name.constData());
    });
    return static_cast<int>(seen.size());
}

} // namespace tideloft::tests
