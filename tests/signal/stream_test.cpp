// Results written past the cache, at every place relative to the boundaries of vectors and lines.
#include "signal/stream.h"
#include "signal/vector.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace norva {
namespace {

TEST(stream, copies_and_powers_are_those_of_plain_loops) {
    constexpr float untouched = 77;
    for (int n : {0, 1, 3, 7, 8, 9, 16, 31, 67}) {
        std::vector<float> x = test::noise(2 * n + 1, n), want(n + 1); // never without a place
        if (n > 3) x[5] = NAN, x[6] = INFINITY;
        powrc(n, x.data(), want.data());
        for (int to_at = 0; to_at < 16; to_at++) {
            for (int p_at = 0; p_at < 16; p_at++) {
                std::vector<float> to(2 * n + 32, untouched), p(n + 32, untouched);
                stream_samples(n, x.data(), &to[to_at], p_at == 15 ? nullptr : &p[p_at]);
                stream_done();
                ASSERT_EQ(0, std::memcmp(&to[to_at], x.data(), 2 * n * sizeof(float))) << n << " " << to_at;
                if (p_at == 15) continue;
                ASSERT_EQ(0, std::memcmp(&p[p_at], want.data(), n * sizeof(float))) << n << " " << p_at;
                for (int k : {to_at - 1, to_at + 2 * n}) ASSERT_TRUE(k < 0 || to[k] == untouched) << n;
                for (int k : {p_at - 1, p_at + n}) ASSERT_TRUE(k < 0 || p[k] == untouched) << n;
            }
        }
    }
}

} // namespace
} // namespace norva
