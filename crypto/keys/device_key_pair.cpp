// Making the pair and writing it, for one program at a time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/device_key_pair.h"

#include "crypto/cipher/failure.h"
#include "crypto/keys/key_store.h"
#include "local_files/directory_lock.h"
#include "local_files/permissions.h"
#include "local_files/regular_file.h"

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

bool writeKeyPair(const KeyPair &pair, QString *error)
{
    QString writeError;
    if (!writePrivateKeyFile(pair.privateHalf.view(), &writeError)
        || !writePublicKeyFile(pair.publicHalf, &writeError))
        return fail(error, writeError);
    return true;
}

bool generateKeyPair(QString *error)
{
    const auto pair = makeKeyPair(error);
    return pair && writeKeyPair(*pair, error);
}

// Two programs may sign in for the first time at the same moment. Each looks for a pair and writes one under
// a single lock, so the second program finds the whole pair of the first. Making a pair is slow, so the pair
// is made before the lock is taken. If both files hold something already, no lock is needed. The directory is
// asked for only once: if it were away for a moment, an existing pair would seem to be missing and would be
// written over.
bool ensureKeyPair(QString *error)
{
    const QString directory = appDataDir();
    if (directory.isEmpty())
        return fail(error, u"Private key path is empty."_s);
    const KeyFiles files = keyFilesIn(directory);
    local_files::keepFileForOwner(files.privateHalf);
    local_files::keepFileForOwner(files.publicHalf);
    if (local_files::isFilled(files.privateHalf) && local_files::isFilled(files.publicHalf))
        return true;
    const auto bothExist = [&files] {
        return local_files::somethingIsAt(files.privateHalf) && local_files::somethingIsAt(files.publicHalf);
    };
    const bool missing = !bothExist();
    const auto fresh = missing ? makeKeyPair(error) : nullptr;
    if (missing && !fresh)
        return false;
    const local_files::DirectoryLock lock(directory);
    return bothExist() || (fresh ? writeKeyPair(*fresh, error) : generateKeyPair(error));
}

} // namespace tideloft::crypto
