#include "compat/process.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace {

#if defined(__GLIBC__)
#if __GLIBC_PREREQ(2, 33) // from there on it tells of its blocks without overflowing

/// Whether a megabyte gets memory of its own from the system.
bool megabyteStandsApart() {
    constexpr std::size_t megabyte = std::size_t{1} << 20U;
    const auto before = ::mallinfo2().hblks;
    const auto block = std::make_unique<char[]>(megabyte);
    block[0] = 'x'; // so that the block is not done without
    return ::mallinfo2().hblks > before;
}

TEST(Process, largeBlocksShareTheMemoryOfSmallOnes) {
    // In a process of its own: what the allocator was asked cannot be taken back.
    EXPECT_EXIT(
        {
            compat::keepFreedMemory();
            std::exit(megabyteStandsApart() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

#endif
#endif

#ifdef SIGXFSZ

TEST(Process, passingTheFileSizeLimitEndsNothing) {
    compat::survivePassingFileSizeLimit();
    EXPECT_EQ(std::raise(SIGXFSZ), 0);
    EXPECT_EQ(std::signal(SIGXFSZ, SIG_DFL), SIG_IGN);
}

#endif

} // namespace
