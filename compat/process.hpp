#pragma once

#include <csignal>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

/// What a program asks of the system that it runs on; does nothing where a system has no such thing.
namespace compat {

/// Lets a write beyond the limit on file sizes fail like one on a full disk, instead of ending the process.
inline void survivePassingFileSizeLimit() {
#ifdef SIGXFSZ
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
#endif
}

/// For programs that build documents of thousands of small blocks, free them and end: freed memory serves the
/// next document instead of going back to the system, and small blocks are joined to their neighbours when
/// they are freed, instead of by passes over all of them. To be called before anything is allocated.
inline void keepFreedMemory() {
#if defined(__GLIBC__)
    // The most that the library takes: larger blocks come from the system and go back to it.
    constexpr int largestShared = 32 * 1024 * 1024;
    constexpr int neverTrimmed = -1;
    constexpr int nothing = 0;
    static_cast<void>(::mallopt(M_MMAP_THRESHOLD, largestShared));
    static_cast<void>(::mallopt(M_TRIM_THRESHOLD, neverTrimmed));
    static_cast<void>(::mallopt(M_MXFAST, nothing));
#endif
}

} // namespace compat
