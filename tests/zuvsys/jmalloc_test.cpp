// The allocator's promises. Accounting is read from the environment once a process, so what depends on it
// runs in a process of its own (a death test that leaves with status 0 when all held).
#include "zuvsys/jbuf.h"
#include "zuvsys/jmalloc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

// A refused request is part of the tests, not an error of the program.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace norva {
namespace {

constexpr std::size_t too_much = std::numeric_limits<std::size_t>::max() / 4;

bool all_zero(const void* p, std::size_t n) {
    const auto* bytes = static_cast<const unsigned char*>(p);
    return std::all_of(bytes, bytes + n, [](unsigned char b) { return b == 0; });
}

[[noreturn]] void leave(bool good) {
    std::_Exit(good ? 0 : 1);
}

TEST(jmalloc, blocks_are_zero_also_when_used_before) {
    for (std::size_t n : {0U, 1U, 8U, 100U, 5000U, 1U << 22}) {
        for (int again = 0; again < 3; again++) {
            void* p = jmalloc(n);
            ASSERT_NE(p, nullptr);
            EXPECT_TRUE(all_zero(p, std::max<std::size_t>(n, 8))) << n;
            std::memset(p, 0xAB, std::max<std::size_t>(n, 8));
            jfree(p);
        }
    }
    jfree(nullptr);
}

TEST(jmalloc, growing_keeps_what_was_there) {
    auto* p = static_cast<char*>(jrealloc(nullptr, 10));
    EXPECT_TRUE(all_zero(p, 10));
    std::strcpy(p, "gate");
    p = static_cast<char*>(jrealloc(p, 100000));
    EXPECT_STREQ(p, "gate");
    p = static_cast<char*>(jrealloc(p, 0));
    EXPECT_STREQ(p, "gate"); // eight bytes remain
    jfree(p);
}

TEST(jmalloc, a_refused_request_gives_empty_or_stops) {
    EXPECT_EQ(jjmalloc(too_much), nullptr);
    EXPECT_EXIT(jmalloc(too_much), testing::ExitedWithCode(255), "");
    EXPECT_EXIT(jrealloc(jmalloc(8), too_much), testing::ExitedWithCode(255), "");
    EXPECT_EXIT(jbuf<double>{too_much}, testing::ExitedWithCode(255),
                ""); // the size in bytes would wrap round
}

TEST(jmalloc, charges_nothing_without_accounting) {
    ASSERT_EQ(std::getenv("JUSED"), nullptr);
    void* p = jmalloc(3);
    EXPECT_EQ(jused(), 0);
    jfree(p);
}

TEST(jmalloc_accounting, charges_raised_sizes) {
    setenv("JUSED", "", 1);
    EXPECT_EXIT(
        {
            bool good = jused() == 0;
            void* p = jmalloc(3);
            good = good && jused() == 8;
            p = jrealloc(p, 20);
            good = good && jused() == 20;
            p = jrealloc(p, 1);
            good = good && jused() == 8;
            jfree(p);
            leave(good && jused() == 0);
        },
        testing::ExitedWithCode(0), "");
    // More blocks than the map's first 500 slots, released in another order.
    EXPECT_EXIT(
        {
            void* blocks[1300];
            for (void*& b : blocks) b = jmalloc(16);
            bool good = jused() == 1300 * 16;
            for (int i = 0; i < 1300; i += 2) jfree(blocks[i]);
            good = good && jused() == 650 * 16;
            for (int i = 1; i < 1300; i += 2) jfree(blocks[i]);
            leave(good && jused() == 0);
        },
        testing::ExitedWithCode(0), "");
    unsetenv("JUSED");
}

TEST(jmalloc_accounting, catches_pointers_it_never_gave_out) {
    setenv("JUSED", "1", 1);
    long alien[4] = {};
    EXPECT_EXIT(jfree(alien), testing::ExitedWithCode(255), "");
    EXPECT_EXIT(jjrealloc(alien, 9), testing::ExitedWithCode(255), "");
    EXPECT_EXIT(
        {
            void* p = jmalloc(9);
            jfree(p);
            jfree(p);
        },
        testing::ExitedWithCode(255), "");
    unsetenv("JUSED");
}

TEST(jmalloc_align, addresses_are_multiples) {
    for (std::size_t align : {16U, 64U, 4096U}) {
        auto* p = static_cast<char*>(jmalloc_align(100, align));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(p) % align, 0U);
        EXPECT_TRUE(all_zero(p, 100));
        p[99] = 'x';
        p = static_cast<char*>(jrealloc_align(p, 200000, align));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(p) % align, 0U);
        p[199999] = 'y';
        jfree_align(p);
    }
    int stranger = 0;
    jfree_align(&stranger); // unknown: no effect
    EXPECT_EQ(jrealloc_align(&stranger, 8, 8), &stranger);
}

// Wanted as it is: freeing the second block makes the table forget the first.
TEST(jmalloc_align, freeing_a_later_block_forgets_the_one_before) {
    EXPECT_EXIT(
        {
            void* first = jmalloc_align(32, 64);
            void* second = jmalloc_align(32, 64);
            void* third = jmalloc_align(32, 64);
            jfree_align(second);
            bool forgotten = jrealloc_align(first, 100000, 4096) == first;
            void* moved = jrealloc_align(third, 100000, 4096);
            leave(forgotten && reinterpret_cast<std::uintptr_t>(moved) % 4096 == 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(jbuf, copies_are_deep_and_moves_leave_nothing_behind) {
    jbuf<int> a(3);
    a[2] = 7;
    jbuf<int> b = a;
    b[2] = 8;
    EXPECT_EQ(a[2], 7);
    jbuf<int> c = std::move(b);
    EXPECT_EQ(c[2], 8);
    EXPECT_FALSE(b.allocated());
    a = c;
    EXPECT_EQ(a[2], 8);
    a.reset(5);
    EXPECT_EQ(a[2], 0);
    EXPECT_EQ(jbuf<int>(0).size(), 0U);
}

} // namespace
} // namespace norva
