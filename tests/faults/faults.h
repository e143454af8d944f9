// Failing calls as a test plans them, and asks about them. The library has to be preloaded.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/faults/failing_calls.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <dlfcn.h>

namespace tideloft::tests
{

/// One failure, or all from the first on, of the calls of a kind below a directory: for as long as the object
/// lives.
class Faults
{
public:
    Faults(const QString &directory, Call call, int first, bool onwards, int error)
        : place(QFile::encodeName(directory))
    {
        plan({place.constData(), call, first, onwards ? 1'000'000 : first, error});
    }
    Q_DISABLE_COPY_MOVE(Faults)
    ~Faults() { plan({"", Call::Any, 0, 0, 0}); }

    /// The first call that failed, as "write device_id.txt". Empty if none came so far.
    [[nodiscard]] static QString failed()
    {
        return QString::fromUtf8(reinterpret_cast<const char *(*)()>(function(failedCallName))());
    }

    /// How many calls of the kind came since the plan was made, whether they failed or not.
    [[nodiscard]] static int calls() { return reinterpret_cast<int (*)()>(function(plannedCallsName))(); }

private:
    static void *function(const char *name)
    {
        void *found = dlsym(RTLD_DEFAULT, name);
        if (!found)
            qFatal("The library that makes calls fail is not preloaded.");
        return found;
    }
    static void plan(const FaultPlan &faults)
    {
        reinterpret_cast<void (*)(const FaultPlan *)>(function(planFaultName))(&faults);
    }

    const QByteArray place;
};

} // namespace tideloft::tests
