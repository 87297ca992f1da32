// Polar formatting.
#include "anchors.h"
#include "mocomp/polar.h"
#include "pair.h"

#include <string>

namespace norva::bench {
namespace {

// 128 records of 128 frequencies on 256 x 256 points, with ni refinements of the range.
void polar_format(benchmark::State& state) {
    const int n = 128, points = 256, ni = static_cast<int>(state.range(0));
    const std::vector<float> s = noise(2UL * n * n);
    std::vector<float> z(2UL * points * points);
    contest c;
    c.work = "`polarfor1` 128 x 128 to 256 x 256, " + std::to_string(ni) + (ni == 1 ? " step" : " steps");
    const auto form = [&](auto polarfor) {
        polarfor(s.data(), n, n, 9000.0F, 8.0F, 40.0F, 0.05F, 0.002F, points, points, 0.02F, 0.02F, ni,
                 300.0F, z.data());
    };
    c.anchor = [&] { form(plain_polarfor1); };
    c.product = [&] { form(polarfor1); };
    c.threads = static_cast<int>(state.range(1));
    c.goal = c.threads == 1 ? 0.04 : 0.02;
    measure(state, c);
}
BENCHMARK(polar_format)
    ->UseManualTime()
    ->Iterations(3)
    ->Args({1, 1})
    ->Args({3, 1})
    ->Args({1, 2})
    ->Args({3, 2});

} // namespace
} // namespace norva::bench
