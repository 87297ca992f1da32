// The image processor: an image formed with everything that is returned of it, and stored actions replayed.
#include "anchors.h"
#include "image/proimag.h"
#include "mocomp/trnpos.h"
#include "pair.h"
#include "signal/weight.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <numbers>
#include <string>

namespace norva::bench {
namespace {

constexpr int npmx = 100;
constexpr float apmn = 0.05F;

// Twenty scatterers and some noise, nt records of nf samples.
std::vector<float> scatterers(int nf, int nt) {
    std::vector<float> q = noise(2UL * nf * nt);
    for (int p = 0; p < 20; p++) {
        const double x = (7 * p % 20 - 10) * 0.045, y = (11 * p % 20 - 10) * 0.043;
        for (int t = 0; t < nt; t++) {
            for (int f = 0; f < nf; f++) {
                const double phase = 2 * std::numbers::pi * (x * t + y * f);
                q[2UL * (t * nf + f)] += static_cast<float>(std::cos(phase));
                q[2UL * (t * nf + f) + 1] += static_cast<float>(std::sin(phase));
            }
        }
    }
    return q;
}

// Action 0 as told, the transform by FFTW, every other step in the loop that it fits into: the weight, the
// rotation and the transposition with the reading of the data, the rotation back with the forming of the
// power.
class told_image {
public:
    told_image(int nf, int nt, int factor)
        : nf_(nf), nt_(nt), nx_(factor * nt), ny_(factor * nf), turned_(2UL * nf * nt),
          image_(2UL * nx_ * ny_), a_(static_cast<std::size_t>(nx_) * ny_), out_(a_.size() + 3 * npmx + 13),
          plan_(nx_, ny_, -1, image_.data()) {}

    void run(const float* q) {
        trnpoc(q, nf_, nt_, turned_.data());
        if (nx_ > nt_) std::fill_n(image_.data(), image_.size(), 0.0F);
        for (int j = 0; j < nf_; j++) {
            const float y = static_cast<float>(j) / nf_ - (2 * j > nf_ ? 1.0F : 0.0F);
            const float* from = turned_.data() + 2UL * ((j + nf_ / 2) % nf_) * nt_;
            float* to = image_.data() + 2UL * (j < nf_ / 2 ? j : ny_ - nf_ + j) * nx_;
            for (int i = 0; i < nt_; i++) {
                const float x = static_cast<float>(i) / nt_ - (2 * i > nt_ ? 1.0F : 0.0F);
                const float w = cirwght(4 * (x * x + y * y));
                const int k = (i + nt_ / 2) % nt_, l = i < nt_ / 2 ? i : nx_ - nt_ + i;
                to[2 * l] = w * from[2 * k];
                to[2 * l + 1] = w * from[2 * k + 1];
            }
        }
        plan_.run();
        float pmax = 0;
        for (int j = 0; j < ny_; j++) {
            const float* from = image_.data() + 2UL * ((j + ny_ / 2) % ny_) * nx_;
            float* to = a_.data() + static_cast<std::size_t>(j) * nx_;
            for (int half = 0; half < 2; half++, to += nx_ / 2) {
                const float* s = half == 0 ? from + nx_ : from;
                for (int i = 0; i < nx_ / 2; i++) {
                    to[i] = s[2 * i] * s[2 * i] + s[2 * i + 1] * s[2 * i + 1];
                    pmax = std::max(pmax, to[i]);
                }
            }
        }
        for (std::size_t k = 0; k < a_.size(); k++) a_.data()[k] = std::sqrt(a_.data()[k] / pmax);
        std::array<int, npmx + 1> lp{};
        int npk = 0;
        plain_peaks(a_.data(), nx_, ny_, npmx, apmn, lp.data(), &npk);
        std::memcpy(out_.data() + 3 * npk + 13, a_.data(), a_.size() * sizeof(float));
        benchmark::DoNotOptimize(out_.data());
    }

private:
    int nf_, nt_, nx_, ny_;
    floats turned_, image_, a_, out_;
    fftw plan_;
};

using words = std::vector<std::int32_t>;

words init_record(int nf, int nt, int factor, const std::vector<float>& q) {
    words in = {PI_INIT, nf, nt, 1, -1, -1, factor, factor, npmx, 2, std::bit_cast<std::int32_t>(apmn)};
    in.push_back(std::bit_cast<std::int32_t>(1.0F));
    for (float v : q) in.push_back(std::bit_cast<std::int32_t>(v));
    return in;
}

// Threads, frequencies, records, factor.
void form_image(benchmark::State& state) {
    const auto nf = static_cast<int>(state.range(1)), nt = static_cast<int>(state.range(2)),
               factor = static_cast<int>(state.range(3));
    const std::string title = "`proimag` forms " + std::to_string(factor * nt) + " x " +
                              std::to_string(factor * nf) + " from " + std::to_string(nt) + " x " +
                              std::to_string(nf);
    if (!fftw::available()) return skip(state, title);
    const std::vector<float> q = scatterers(nf, nt);
    const words in = init_record(nf, nt, factor, q);
    words out(PI_RESULT_WORDS);
    told_image told(nf, nt, factor);
    contest c;
    c.work = title;
    c.anchor = [&] { told.run(q.data()); };
    c.product = [&] { proimag(in, out); };
    c.threads = static_cast<int>(state.range(0));
    c.goal = c.threads == 1 ? 0.6 : 0.5;
    measure(state, c);
}
BENCHMARK(form_image)
    ->UseManualTime()
    ->Iterations(21)
    ->ArgsProduct({{1, 2}, {256}, {512}, {1}})
    ->ArgsProduct({{1, 2}, {128}, {256}, {2}});

words action(int mode, std::initializer_list<int> whole, std::initializer_list<float> reals = {}) {
    words in = {mode};
    in.insert(in.end(), whole.begin(), whole.end());
    for (float v : reals) in.push_back(std::bit_cast<std::int32_t>(v));
    return in;
}

// Back to the step after the first and on to the 20th, beside forming the image 20 times.
void replay(benchmark::State& state) {
    const int nf = 256, nt = 512;
    const words init = init_record(nf, nt, 1, scatterers(nf, nt));
    words out(PI_RESULT_WORDS);
    contest c;
    c.work = "`proimag` replays 19 actions";
    c.anchor = [&] {
        for (int k = 0; k < 20; k++) proimag(init, out);
    };
    c.prepare = [&] {
        proimag(init, out);
        for (int k = 0; k < 4; k++) {
            for (const words& in : {action(PI_FLOP, {3}), action(PI_PEAK_PARAMETERS, {}, {20, 30}),
                                    action(PI_PEAK_SCALING, {npmx, 1}, {-3, 1}),
                                    action(PI_CUT, {}, {100, 0.25F, 0, 0, 30.0F * static_cast<float>(k)}),
                                    k == 1   ? action(PI_INTERPOLATE, {2, 2})
                                    : k == 2 ? action(PI_EDIT, {}, {-100, 150, -80, 100})
                                             : action(PI_FLOP, {1})})
                proimag(in, out);
        }
        proimag(action(PI_STEP, {-19}), out);
    };
    c.product = [&] { proimag(action(PI_STEP, {19}), out); };
    c.goal = 0.5;
    measure(state, c);
    if (out[0] != 20) state.SkipWithError("an action has failed");
}
BENCHMARK(replay)->UseManualTime()->Iterations(9);

} // namespace
} // namespace norva::bench
