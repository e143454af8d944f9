// What the room is promised of the system, promise by promise: on another system these have to pass as well.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/descriptor.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

using namespace tideloft::local_files;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;
using Kind = system::Status::Kind;
using system::Locking;
using system::Opening;

namespace
{

constexpr QFileDevice::Permissions readAndWrite = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

struct Freed {
    void operator()(char *block) const { std::free(block); }
};

} // namespace

class TestSystem : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void opensWhatItSays_data();
    void opensWhatItSays();
    void handsNothingToOtherPrograms_data();
    void handsNothingToOtherPrograms();
    void newFilesAreForTheirOwner();
    void oldFilesKeepTheirBytes();
    void tellsWhatIsThere_data();
    void tellsWhatIsThere();
    void tellsOfSecondNames();
    void tellsWhoseItIs();
    void permissionsAreTheToolkits();
    void certainThatNothingIsThere_data();
    void certainThatNothingIsThere();
    void readsAndWrites();
    void oneLockAtATime();
    void wipesMemory();
    void allOfABlockMayBeOverwritten();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return home->filePath(name); }

    std::unique_ptr<QTemporaryDir> home;
};

// One of everything, under its own name.
void TestSystem::init()
{
    home = std::make_unique<QTemporaryDir>();
    QVERIFY(writeFile(pathOf(u"file"_s), "12345"));
    QVERIFY(QDir().mkdir(pathOf(u"directory"_s)));
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link to file"_s)));
    QVERIFY(QFile::link(pathOf(u"directory"_s), pathOf(u"link to directory"_s)));
    QVERIFY(QFile::link(pathOf(u"circle"_s), pathOf(u"circle"_s)));
    QCOMPARE(mkfifo(QFile::encodeName(pathOf(u"pipe"_s)).constData(), 0600), 0);
}

void TestSystem::opensWhatItSays_data()
{
    QTest::addColumn<Opening>("opening");
    QTest::addColumn<QStringList>("opened");
    QTest::newRow("a directory") << Opening::Directory << QStringList{u"directory"_s, u"link to directory"_s};
    QTest::newRow("what is there itself")
        << Opening::Itself << QStringList{u"directory"_s, u"file"_s, u"pipe"_s};
    QTest::newRow("to read") << Opening::Reading
                             << QStringList{u"directory"_s, u"file"_s, u"link to directory"_s,
                                            u"link to file"_s, u"pipe"_s};
    QTest::newRow("to write") << Opening::Writing << QStringList{u"file"_s, u"nothing"_s};
}

// Nobody is at the other end of the pipe: a hang of this test is its failure.
void TestSystem::opensWhatItSays()
{
    QFETCH(const Opening, opening);
    QStringList found;
    for (const QString &name : {u"circle"_s, u"directory"_s, u"file"_s, u"link to directory"_s,
                                u"link to file"_s, u"nothing"_s, u"pipe"_s}) {
        if (Descriptor(system::open(pathOf(name), opening)).isOpen())
            found.append(name);
    }
    QTEST(found, "opened");
}

void TestSystem::handsNothingToOtherPrograms_data()
{
    QTest::addColumn<Opening>("opening");
    QTest::addColumn<QString>("name");
    QTest::newRow("a directory") << Opening::Directory << u"directory"_s;
    QTest::newRow("what is there itself") << Opening::Itself << u"file"_s;
    QTest::newRow("to read") << Opening::Reading << u"file"_s;
    QTest::newRow("to write") << Opening::Writing << u"file"_s;
}

void TestSystem::handsNothingToOtherPrograms()
{
    QFETCH(const Opening, opening);
    QFETCH(const QString, name);
    const Descriptor place(system::open(pathOf(name), opening));
    QVERIFY(place.isOpen());
    QVERIFY((fcntl(place.get(), F_GETFD) & FD_CLOEXEC) != 0);
}

void TestSystem::newFilesAreForTheirOwner()
{
    const mode_t before = umask(0);
    const Descriptor made(system::open(pathOf(u"made"_s), Opening::Writing));
    umask(before);
    QCOMPARE(system::statusOf(made.get())->permissions, readAndWrite);
}

void TestSystem::oldFilesKeepTheirBytes()
{
    const Descriptor file(system::open(pathOf(u"file"_s), Opening::Writing));
    QCOMPARE(system::statusOf(file.get())->size, qint64{5});
}

void TestSystem::tellsWhatIsThere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Kind>("kind");
    QTest::newRow("file") << u"file"_s << Kind::RegularFile;
    QTest::newRow("link to a file") << u"link to file"_s << Kind::RegularFile;
    QTest::newRow("directory") << u"directory"_s << Kind::Directory;
    QTest::newRow("pipe") << u"pipe"_s << Kind::Other;
}

void TestSystem::tellsWhatIsThere()
{
    QFETCH(const QString, name);
    QFETCH(const Kind, kind);
    const Descriptor place(system::open(pathOf(name), Opening::Reading));
    const auto opened = system::statusOf(place.get());
    const auto named = system::statusAt(pathOf(name));
    QVERIFY(opened && named);
    QCOMPARE(opened->kind, kind);
    QCOMPARE(named->kind, kind);
    QCOMPARE(opened->size, named->size);
    if (kind == Kind::RegularFile)
        QCOMPARE(named->size, qint64{5});
    QVERIFY(!system::statusAt(pathOf(u"nothing"_s)));
    QVERIFY(!system::statusOf(-1));
}

void TestSystem::tellsOfSecondNames()
{
    QVERIFY(system::statusAt(pathOf(u"file"_s))->hasOneName);
    QCOMPARE(link(QFile::encodeName(pathOf(u"file"_s)).constData(),
                  QFile::encodeName(pathOf(u"second"_s)).constData()),
             0);
    QVERIFY(!system::statusAt(pathOf(u"file"_s))->hasOneName);
}

// The root directory belongs to root.
void TestSystem::tellsWhoseItIs()
{
    QVERIFY(system::statusAt(pathOf(u"file"_s))->isOwn);
    QCOMPARE(system::statusAt(QDir::rootPath())->isOwn, geteuid() == 0);
}

// All 512 of them: given by this room and read by the toolkit, and the other way round.
void TestSystem::permissionsAreTheToolkits()
{
    constexpr QFileDevice::Permissions known = QFileDevice::Permissions::fromInt(0x7077);
    const QString path = pathOf(u"file"_s);
    const Descriptor file(system::open(path, Opening::Itself));
    for (unsigned bits = 0; bits < 512; ++bits) {
        const auto wanted =
            QFileDevice::Permissions::fromInt((bits >> 6) << 12 | (bits >> 3 & 7) << 4 | (bits & 7));
        system::setPermissions(file.get(), wanted);
        QCOMPARE(QFile::permissions(path) & known, wanted);
        QCOMPARE(system::statusOf(file.get())->permissions, wanted);
    }
}

void TestSystem::certainThatNothingIsThere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isCertain");
    QTest::newRow("nothing") << u"nothing"_s << true;
    QTest::newRow("below a file") << u"file/nothing"_s << true;
    QTest::newRow("a link that leads in a circle") << u"circle"_s << true;
    QTest::newRow("a name that is too long") << QString(300, u'x') << true;
    QTest::newRow("a file") << u"file"_s << false;
    QTest::newRow("a link to a file") << u"link to file"_s << false;
    QTest::newRow("a pipe") << u"pipe"_s << false;
}

void TestSystem::certainThatNothingIsThere()
{
    QFETCH(const QString, name);
    QTEST(system::nothingIsAt(pathOf(name)), "isCertain");
}

void TestSystem::readsAndWrites()
{
    const Descriptor in(system::open(pathOf(u"file"_s), Opening::Reading));
    const Descriptor out(system::open(pathOf(u"file"_s), Opening::Writing));
    char bytes[8] = {};
    QCOMPARE(system::write(out.get(), "ab", 2), qsizetype{2});
    QCOMPARE(system::read(in.get(), bytes, 8), qsizetype{5});
    QCOMPARE(QByteArray(bytes), QByteArray("ab345"));
    QCOMPARE(system::read(in.get(), bytes, 8), qsizetype{0});
    QVERIFY(system::read(out.get(), bytes, 8) < 0);
    QVERIFY(system::write(in.get(), bytes, 1) < 0);
    QVERIFY(system::empty(out.get()));
    QCOMPARE(system::statusOf(in.get())->size, qint64{0});
    QVERIFY(!system::empty(in.get()));
}

void TestSystem::oneLockAtATime()
{
    std::optional<Descriptor> first(std::in_place, system::open(pathOf(u"directory"_s), Opening::Directory));
    const Descriptor second(system::open(pathOf(u"directory"_s), Opening::Directory));
    QCOMPARE(system::tryLock(first->get()), Locking::Done);
    QCOMPARE(system::tryLock(second.get()), Locking::NotNow);
    first.reset();
    QCOMPARE(system::tryLock(second.get()), Locking::Done);
    QCOMPARE(system::tryLock(-1), Locking::Impossible);
}

void TestSystem::wipesMemory()
{
    QByteArray bytes("a secret");
    system::wipe(bytes.data(), 7);
    QCOMPARE(bytes, QByteArray(7, '\0') + 't');
}

void TestSystem::allOfABlockMayBeOverwritten()
{
    for (const size_t size : {size_t{1}, size_t{24}, size_t{100'000}}) {
        const std::unique_ptr<char, Freed> block(static_cast<char *>(std::malloc(size)));
        QVERIFY(block);
        QVERIFY(system::sizeOfBlock(block.get()) >= size);
        std::fill_n(block.get(), system::sizeOfBlock(block.get()), 'x');
    }
}

TIDELOFT_TEST_MAIN(TestSystem)
#include "tst_system.moc"
