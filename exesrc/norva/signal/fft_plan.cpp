// Plans: the choice of the passes of a length, their tables, and the lengths that have no short passes.
#include "fft_plan.h"

#include "signal/processor.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <numbers>

namespace norva {
namespace {

using std::numbers::pi;

// ---- Choice of the passes ----

// Work of one vector through a pass, in tenths of nanoseconds on the machine it was measured on.
struct radix_cost {
    int radix;
    double work;
};
constexpr std::array<radix_cost, 9> own_radices = {
    {{2, 16}, {3, 32}, {4, 40}, {5, 72}, {6, 78}, {8, 120}, {9, 185}, {10, 210}, {15, 450}}};

double work_of(int radix) {
    for (const radix_cost& c : own_radices) {
        if (c.radix == radix) return c.work;
    }
    return 2.0 * radix * radix + 10 * radix;
}

// The cheapest way from groups of `rest` samples to single ones.
enum class fft_kind { line, columns };
class route_search {
public:
    route_search(int n, fft_kind kind, fft_layout layout)
        : n_(n), kind_(kind), layout_(layout), lanes_(fft_lanes(layout)) {}
    std::vector<int> radices() { // empty when there is no way
        std::vector<int> route;
        for (int rest = n_; rest > 1; rest /= route.back()) {
            if (best(rest).radix == 0) return {};
            route.push_back(best(rest).radix);
        }
        return route;
    }

private:
    struct step {
        int radix = 0; // 0: there is no way
        double work = 1e300;
    };
    step best(int rest) {
        if (auto known = known_.find(rest); known != known_.end()) return known->second;
        step found;
        for (int radix = 2; radix <= rest && radix < fft_longest_odd; radix++) {
            if (rest % radix != 0 || !allowed(radix, rest)) continue;
            double work = pass_work(radix, rest) + (rest == radix ? 0 : best(rest / radix).work);
            if (work < found.work) found = {radix, work};
        }
        known_.emplace(rest, found);
        return found;
    }
    bool allowed(int radix, int rest) const {
        const bool first = rest == n_, last = rest == radix;
        if (kind_ == fft_kind::columns) {
            if ((first || last) && radix >= 6 && radix != 8 && own(radix)) return false;
        } else if (layout_ != fft_layout::planes) {
            // Whole vectors from the first pass on.
            if (first) return radix == lanes_;
        } else if (first && (radix == 4 || radix == 6 || radix == 8)) {
            return false;
        }
        if (last && (radix == 6 || radix == 10 || radix == 15)) return false;
        if (own(radix)) return true;
        for (int f = 2; f * f <= radix; f++) {
            if (radix % f == 0) return false;
        }
        return true; // an odd prime
    }
    static bool own(int radix) {
        return std::any_of(own_radices.begin(), own_radices.end(), [=](auto& c) { return c.radix == radix; });
    }
    double pass_work(int radix, int rest) const {
        constexpr double a_pass = 50, a_group = 15; // calls and loops
        const int m = rest / radix, s = n_ / rest;
        const double work = work_of(radix);
        if (kind_ == fft_kind::columns)
            return m * (s * work + a_group) + n_ * 10; // the cache is passed through
        if (s == 1) return a_pass + vectors(m, 8) * (work + (radix < lanes_ ? 25 : 12) * radix);
        const double group =
            vectors(s, lanes_) * (work + (s < lanes_ ? 20 * radix : 0)) + (s > lanes_ ? a_group : 0);
        return a_pass + m * group;
    }
    static int vectors(int count, int lanes) { return (count + lanes - 1) / lanes; }

    int n_;
    fft_kind kind_;
    fft_layout layout_;
    int lanes_;
    std::map<int, step> known_;
};

int short_route_of(int n) {
    for (std::size_t k = 0; k < std::size(fft_short_routes); k++) {
        if (fft_short_routes[k].n() == n) return static_cast<int>(k);
    }
    return -1;
}
std::vector<int> radices_of(const fft_short_route& r) {
    return r.second > 1 ? std::vector<int>{r.first, r.second, r.third} : std::vector<int>{r.first, r.third};
}

fft_layout layout_for(int n) {
    for (fft_layout layout : {fft_layout::blocks_of_8, fft_layout::blocks_of_4}) {
        const int lanes = fft_lanes(layout);
        if (n % lanes == 0 && n >= lanes * lanes) return layout;
    }
    return fft_layout::planes;
}

// ---- Tables ----

struct turn {
    float c, s; // of exp(-2 pi i k / n)
};
turn rotation(long long k, long long n) {
    const double arg = 2 * pi * static_cast<double>(k % n) / static_cast<double>(n);
    return {static_cast<float>(std::cos(arg)), static_cast<float>(-std::sin(arg))};
}

// Tables of one pass; only counted when `to` is null.
class table_writer {
public:
    explicit table_writer(float* to) : to_(to) {}
    std::size_t written() const { return written_; }

    void fill(fft_pass& pass, bool first) {
        pass.twiddles = here();
        const long long n = static_cast<long long>(pass.radix) * pass.m;
        for (int p = 0; p < pass.m; p += first ? 8 : 1) {
            // The last eight groups end at the last group.
            const int p0 = first ? std::max(0, std::min(p, pass.m - 8)) : p;
            for (long long k = 1; k < pass.radix; k++) {
                if (first) {
                    for (int t = 0; t < 8; t++) put(rotation(k * (p0 + fft_lane(t)), n).c);
                    for (int t = 0; t < 8; t++) put(rotation(k * (p0 + fft_lane(t)), n).s);
                } else {
                    put(rotation(k * p, n).c);
                    put(rotation(k * p, n).s);
                }
            }
        }
        pass.odd = here();
        const int half = (pass.radix - 1) / 2;
        for (int k = 1; k <= half; k++) {
            for (int j = 1; j <= half; j++) {
                put(rotation(static_cast<long long>(k) * j, pass.radix).c);
                put(-rotation(static_cast<long long>(k) * j, pass.radix).s);
            }
        }
    }

private:
    const float* here() const { return to_ ? to_ + written_ : nullptr; }
    void put(float value) {
        if (to_) to_[written_] = value;
        written_++;
    }
    float* to_;
    std::size_t written_ = 0;
};

void lay_passes(fft_plan& plan, const std::vector<int>& radices, fft_kind kind, fft_layout layout) {
    const int run = kind == fft_kind::columns ? fft_lanes(layout) : 1; // eight columns side by side
    int rest = plan.n;
    for (int radix : radices) {
        plan.passes.push_back({radix, rest / radix, run * (plan.n / rest), nullptr, nullptr});
        rest /= radix;
    }
    // One pass alone: a second one only brings the samples back to their place.
    if (radices.size() == 1) plan.passes.push_back({1, 1, run * plan.n, nullptr, nullptr});
    plan.schedule = {run * plan.n, layout, -1, static_cast<int>(plan.passes.size()), plan.passes.data()};

    auto fill_all = [&](table_writer writer) {
        for (fft_pass& pass : plan.passes)
            writer.fill(pass, kind == fft_kind::line && &pass == &plan.passes[0]);
        return writer.written();
    };
    const std::size_t size = fill_all(table_writer(nullptr));
    fill_all(table_writer(plan.tables.make_room(size)));
}

// ---- Lengths with a large prime factor ----

// A length not below n that the passes do well.
int convolution_length(int n) {
    int best = std::bit_ceil(static_cast<unsigned>(n));
    for (int factor : {3, 5, 9, 15}) {
        int length = factor * 8;
        while (length < n) length *= 2;
        best = std::min(best, length);
    }
    return best;
}

void lay_convolution(fft_plan& plan) {
    const int n = plan.n, m = convolution_length(2 * n - 1);
    plan.inner = &plan_for(m);
    float* c = plan.chirp.make_room(2 * static_cast<std::size_t>(n));
    float* b = plan.spectrum.make_room(2 * static_cast<std::size_t>(m));
    std::memset(b, 0, 2 * sizeof(float) * m);
    for (int k = 0; k < n; k++) {
        turn w = rotation(static_cast<long long>(k) * k, 2LL * n);
        c[2 * k] = w.c;
        c[2 * k + 1] = w.s;
        for (int at : {k, (m - k) % m}) {
            b[2 * at] = w.c / static_cast<float>(m);
            b[2 * at + 1] = -w.s / static_cast<float>(m);
        }
    }
    transform(*plan.inner, b, m, b, -1);
}

thread_local aligned_buffer convolution_work;

void convolve(const fft_plan& plan, const float* in, float* out, int sign) {
    const int n = plan.n, m = plan.inner->n;
    const float *c = plan.chirp.data(), *b = plan.spectrum.data();
    float* x = convolution_work.make_room(2 * static_cast<std::size_t>(m));
    // Sign + is sign - between exchanged real and imaginary parts.
    const int re = sign < 0 ? 0 : 1, im = 1 - re;
    for (int k = 0; k < 2 * n; k += 2) {
        const float xr = in[k + re], xi = in[k + im];
        x[k] = xr * c[k] - xi * c[k + 1];
        x[k + 1] = xr * c[k + 1] + xi * c[k];
    }
    std::memset(x + 2 * n, 0, 2 * sizeof(float) * (m - n));
    transform(*plan.inner, x, n, x, -1);
    for (int k = 0; k < 2 * m; k += 2) {
        const float xr = x[k], xi = x[k + 1];
        x[k] = xr * b[k] - xi * b[k + 1];
        x[k + 1] = xr * b[k + 1] + xi * b[k];
    }
    transform(*plan.inner, x, m, x, +1);
    for (int k = 0; k < 2 * n; k += 2) {
        out[k + re] = x[k] * c[k] - x[k + 1] * c[k + 1];
        out[k + im] = x[k] * c[k + 1] + x[k + 1] * c[k];
    }
}

// ---- Plans ----

// The code for this processor.
void choose_runners(fft_plan& plan) {
    plan.run = fft_run_base;
    plan.run_columns = fft_columns_base;
#if defined(__x86_64__)
    if (has_avx2()) {
        plan.run = fft_run_avx2;
        plan.run_columns = fft_columns_avx2;
    }
#endif
}

std::unique_ptr<fft_plan> make_plan(int n, fft_kind kind) {
    auto plan = std::make_unique<fft_plan>();
    plan->n = n;
    choose_runners(*plan);
    const fft_layout layout = kind == fft_kind::columns ? fft_layout::blocks_of_8 : layout_for(n);
    const int short_route = kind == fft_kind::line ? short_route_of(n) : -1;
    std::vector<int> radices = short_route >= 0 ? radices_of(fft_short_routes[short_route])
                                                : route_search(n, kind, layout).radices();
    if (radices.empty())
        lay_convolution(*plan);
    else
        lay_passes(*plan, radices, kind, layout);
    plan->schedule.short_route = short_route;
    return plan;
}

// Where the plan of a length is found without a lock: every length that a mixed transform may have, and the
// longer powers of two. Other lengths only serve convolutions, which keep their plan.
using plan_slot = std::atomic<const fft_plan*>;
constexpr int longest_by_length = 16384;
std::array<plan_slot, longest_by_length + 1> plans_by_length;
std::array<plan_slot, 31> plans_by_log;
std::array<plan_slot, longest_column + 1> column_plans;

const fft_plan& find_or_make(plan_slot* slot, int n, fft_kind kind) {
    if (slot) {
        if (const fft_plan* plan = slot->load(std::memory_order_acquire)) return *plan;
    }
    static std::recursive_mutex lock;
    static std::map<std::pair<int, fft_kind>, std::unique_ptr<fft_plan>> kept;
    std::lock_guard guard(lock);
    std::unique_ptr<fft_plan>& plan = kept[{n, kind}];
    if (!plan) plan = make_plan(n, kind);
    if (slot) slot->store(plan.get(), std::memory_order_release);
    return *plan;
}

// Scratch of longer transforms; short ones have theirs on the stack.
thread_local aligned_buffer pass_work;
constexpr int longest_on_stack = 1024;

} // namespace

const fft_plan& plan_for(int n) {
    plan_slot* slot = nullptr;
    if (n <= longest_by_length)
        slot = &plans_by_length[n];
    else if (std::has_single_bit(static_cast<unsigned>(n)))
        slot = &plans_by_log[std::countr_zero(static_cast<unsigned>(n))];
    return find_or_make(slot, n, fft_kind::line);
}

const fft_plan& column_plan_for(int n) {
    return find_or_make(&column_plans[n], n, fft_kind::columns);
}

void transform(const fft_plan& plan, const float* in, int used, float* out, int sign) {
    if (plan.inner) return convolve(plan, in, out, sign);
    if (plan.n <= longest_on_stack) {
        alignas(64) float work[fft_work(longest_on_stack)];
        return plan.run(plan.schedule, in, used, out, sign > 0, work);
    }
    plan.run(plan.schedule, in, used, out, sign > 0, pass_work.make_room(fft_work(plan.n)));
}

void transform(float* a, int n, int sign) {
    if (n > 1) transform(plan_for(n), a, n, a, sign);
}

void transform_adjacent_columns(float* a, std::ptrdiff_t row, int n, int first, int last, int sign) {
    if (n < 2) return;
    const fft_plan& plan = column_plan_for(n);
    static thread_local aligned_buffer work, gathered;
    const int together = plan.inner ? 1 : 8;
    for (int c = first; c < last; c += together) {
        const int count = std::min(together, last - c);
        float* at = a + 2 * static_cast<std::ptrdiff_t>(c);
        if (count == 8) {
            plan.run_columns(plan.schedule, at, row, sign > 0, work.make_room(fft_work(8 * n)));
            continue;
        }
        // Too few for a vector, or one by one: gathered, with zeros beside them.
        float* g = gathered.make_room(2 * static_cast<std::size_t>(together) * n);
        for (int j = 0; j < n; j++) {
            std::memcpy(g + 2 * together * j, at + j * row, 2 * sizeof(float) * count);
            std::memset(g + 2 * together * j + 2 * count, 0, 2 * sizeof(float) * (together - count));
        }
        if (plan.inner)
            transform(plan, g, n, g, sign);
        else
            plan.run_columns(plan.schedule, g, 16, sign > 0, work.make_room(fft_work(8 * n)));
        for (int j = 0; j < n; j++)
            std::memcpy(at + j * row, g + 2 * together * j, 2 * sizeof(float) * count);
    }
}

} // namespace norva
