// A child of QProcess has memory of its own. The toolkit lets the child share its parent's until another
// program starts in it; ThreadSanitizer takes the parent for the child then, and is blind from there on.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <cstdarg>
#include <dlfcn.h>
#include <sched.h>

namespace
{

using Clone = int (*)(int (*)(void *), void *, int, void *, ...);

} // namespace

/// Takes the place of the C library's (clone(2)).
// NOLINTNEXTLINE(cert-dcl50-cpp): the C library's has a variable number of arguments
extern "C" int clone(int (*function)(void *), void *stack, int flags, void *argument, ...)
{
    std::va_list rest;
    va_start(rest, argument);
    void *parentId = va_arg(rest, void *);
    void *storage = va_arg(rest, void *);
    void *childId = va_arg(rest, void *);
    va_end(rest);
    const auto next = reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"));
    return next(function, stack, flags & ~(CLONE_VM | CLONE_VFORK), argument, parentId, storage, childId);
}
