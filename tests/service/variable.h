// The environment of programs that a test starts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::tests
{

/// A variable that programs which are started meanwhile find in their environment.
class Variable
{
public:
    Variable(const char *called, const QByteArray &value) : name(called), before(qgetenv(called))
    {
        qputenv(name, value);
    }
    Q_DISABLE_COPY_MOVE(Variable)
    ~Variable() { before.isNull() ? qunsetenv(name) : qputenv(name, before); }

private:
    const char *name;
    const QByteArray before;
};

/// Lets a library stand before the C library in them. It is named without its folder: blanks in a path would
/// end it.
class Preloaded
{
public:
    Preloaded(const QByteArray &name, const QByteArray &folder)
        : library("LD_PRELOAD", name),
          libraries("LD_LIBRARY_PATH", folder)
    {
    }

private:
    const Variable library;
    const Variable libraries;
    const Variable sanitizer{"ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0"};
};

} // namespace tideloft::tests
