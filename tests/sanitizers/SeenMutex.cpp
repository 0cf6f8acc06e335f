// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Part of every test with the thread sanitizer and Qt 5, whose QMutex is locked and unlocked in a library that the
// sanitizer does not look into: the order that the lock makes is shown to it here. Qt 6 locks within our own code.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto s_realLock = reinterpret_cast<void (*)(QMutex*)>(::dlsym(RTLD_NEXT, "_ZN6QMutex4lockEv"));
    s_realLock(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    static const auto s_realUnlock = reinterpret_cast<void (*)(QMutex*)>(::dlsym(RTLD_NEXT, "_ZN6QMutex6unlockEv"));
    __tsan_release(this);
    s_realUnlock(this);
}
