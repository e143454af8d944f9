// Opening, looking at what was opened, reading.
#include "crypto/regular_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tideloft::crypto
{

namespace
{

class Descriptor
{
public:
    explicit Descriptor(int opened) : number(opened) {}
    Q_DISABLE_COPY_MOVE(Descriptor)
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    [[nodiscard]] int get() const { return number; }

private:
    const int number;
};

// Up to and with the read that finds the end, so that a file which grows meanwhile is not cut.
std::optional<QByteArray> readAll(int file, qsizetype expected)
{
    QByteArray bytes(expected + 1, Qt::Uninitialized);
    qsizetype size = 0;
    for (;;) {
        const ssize_t got = read(file, bytes.data() + size, static_cast<size_t>(bytes.size() - size));
        if (got < 0)
            return {};
        size += got;
        if (got == 0)
            break;
        if (size == bytes.size())
            bytes.resize(2 * size);
    }
    bytes.truncate(size);
    return bytes;
}

} // namespace

// What was opened is looked at, not what the path named a moment before. Without O_NONBLOCK the opening of a
// pipe would wait for a writer; regular files do not care.
std::optional<QByteArray> readRegularFile(const QString &path)
{
    const Descriptor file(
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {
    };
    if (file.get() < 0 || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return readAll(file.get(), static_cast<qsizetype>(status.st_size));
}

} // namespace tideloft::crypto
