// The stored actions: whatever way a step is reached, its result is the same bits.
#include "driver.h"
#include "journal/tag_ary.h"
#include "state/image_cut.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace norva::test {
namespace {

record some_init(unsigned seed) {
    return init_record(noise(2 * 24 * 20, seed), 24, 20, {.ifx = 2, .apmn = seed % 2 ? -2.0 : 0.3});
}

// What the cut window leaves behind: a first record, other actions, the end.
std::vector<std::int32_t> some_cut_journal(int extra) {
    std::vector<std::int32_t> ir = record(0).i(1).i(2).i(3).f(-1).f(1).words;
    ir.resize(ir.size() + 2 * 3);
    for (int k = 0; k < extra; k++) ir.insert(ir.end(), {10, k % 2});
    ir.push_back(26);
    return ir;
}

// One of the things a user does to an image; some fail, as they do for him.
record some_action(std::mt19937& random) {
    auto whole = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    auto real = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
    switch (whole(0, 9)) {
    case 0: return record(PI_FLOP).i(whole(0, 4));
    case 1: return record(PI_PEAK_SCALING).i(whole(0, 60)).i(whole(1, 3)).f(real(-3, 0.9)).f(real(0, 2));
    case 2: return record(PI_EDIT).f(real(-9, -4)).f(real(3, 9)).f(real(-11, -4)).f(real(3, 11));
    case 3: return record(PI_INTERPOLATE).i(whole(1, 5)).i(whole(1, 5));
    case 4: return record(PI_STATUS);
    case 5:
        return record(PI_CUT)
            .f(real(2, 30))
            .f(real(0.1, 1.5))
            .f(real(-4, 4))
            .f(real(-4, 4))
            .f(real(-180, 180));
    case 6: return record(PI_CENTER).f(real(-9, 9)).f(real(-9, 9)).f(9000).f(150).i(whole(0, 1));
    case 7: return record(PI_WRITE);
    default: return record(PI_PEAK_PARAMETERS).f(real(-9, 9)).f(real(-9, 9));
    }
}

// A first record and the actions that brought an image to where it stands.
struct history {
    unsigned seed;
    std::vector<record> actions; // a cut is followed by a CUT_STORED with the length of its journal, if any
    std::size_t step = 0;
};

// The result of a step when nothing but the steps before were ever done.
std::uint64_t straight(const history& h) {
    act(some_init(h.seed));
    for (std::size_t k = 0; k < h.step; k++) act(h.actions[k]);
    return digest();
}

struct seen {
    history at;
    std::uint64_t result;
};

class random_walk {
public:
    random_walk(unsigned seed) : random_(seed), now_{seed, {}, 0} { act(some_init(seed)); }

    void go() {
        switch (std::uniform_int_distribution(0, 9)(random_)) {
        case 0: return step(std::uniform_int_distribution(-5, 5)(random_));
        case 1: return step(-1);
        case 2: return step(+1);
        case 3: return jump(std::uniform_int_distribution(-2, 12)(random_));
        case 4: return leave_and_return();
        default: fresh();
        }
    }
    void expect_results_of_straight_runs() const {
        for (const seen& s : seen_) EXPECT_EQ(straight(s.at), s.result) << "step " << s.at.step;
    }

private:
    void note() { seen_.push_back({now_, digest()}); }
    void fresh() {
        const record r = some_action(random_);
        const pi_result result = act(r);
        if (result.what == pi_result::FAILED) {
            act(record(PI_GO).i(static_cast<int>(now_.step))); // all stands as it was
            return note();
        }
        end_ahead_ = false;
        now_.actions.resize(now_.step++);
        now_.actions.push_back(r);
        note();
        if (r.words[0] == PI_CUT && random_() % 2) {
            cutj.jf = 1;
            cutj.ir = some_cut_journal(static_cast<int>(random_() % 4));
            cutj.np = static_cast<int>(cutj.ir.size());
            cutj.ns = 2;
            ASSERT_EQ(act(record(PI_STORE_CUT)).what, pi_result::CUT_STORED);
        }
    }
    void step(int n) {
        const int target = static_cast<int>(now_.step) + n, last = static_cast<int>(now_.actions.size());
        if (end_ahead_ && target > last) return;
        const pi_result r = act(record(PI_STEP).i(n));
        EXPECT_EQ(r.what == pi_result::FAILED, target < 0 || target > last);
        if (r.what == pi_result::FAILED) return;
        now_.step = static_cast<std::size_t>(target);
        EXPECT_EQ(r.step, target);
        note();
    }
    void jump(int n) {
        if (end_ahead_) n = std::min(n, static_cast<int>(now_.actions.size()));
        now_.step = static_cast<std::size_t>(std::clamp(n, 0, static_cast<int>(now_.actions.size())));
        EXPECT_EQ(act(record(PI_GO).i(n)).step, static_cast<int>(now_.step));
        note();
    }
    void leave_and_return() {
        const pi_result r = act(record(PI_EXPORT));
        ASSERT_EQ(r.what, pi_result::EXPORTED);
        EXPECT_EQ(r.ns, static_cast<int>(now_.step) + 1);
        now_.actions.resize(now_.step); // what stood ahead stays behind
        const jbuf<std::int32_t> jary = pi_make_jary(r, 7);
        EXPECT_EQ(walk_actions(jary.span()).err, 0);
        EXPECT_EQ(act(record(PI_STATUS)).message, "***Initialization must be done first.");
        act(some_init(now_.seed));
        proimag_parms pip;
        pip.mode = PI_RESTORE;
        pip.nf = pip.nt = 20;
        const pi_packed packed = pi_pack(pip, {.jary = jary.span()});
        ASSERT_EQ(packed.refusal, "");
        record restore(PI_RESTORE);
        restore.words = packed.record;
        EXPECT_EQ(act(restore).step, 0);
        now_.step = 0;
        end_ahead_ = true;
        note();
        jump(static_cast<int>(now_.actions.size()));
    }

    std::mt19937 random_;
    history now_;
    bool end_ahead_ = false; // restored actions end with one that closes the image
    std::vector<seen> seen_;
};

TEST(image_steps, any_way_to_a_step_gives_the_bits_of_the_straight_run) {
    result_words().resize(60000); // the digests run over all of it
    for (unsigned seed = 1; seed <= 12; seed++) {
        SCOPED_TRACE(seed);
        random_walk walk(seed);
        for (int k = 0; k < 40; k++) walk.go();
        walk.expect_results_of_straight_runs();
    }
    result_words().resize(PI_RESULT_WORDS);
}

// What a step leaves behind for later ones besides the image.
TEST(image_steps, a_threshold_by_the_noise_and_the_memory_of_an_edit_belong_to_their_step) {
    const record wide_cut = record(PI_CUT).f(20).f(0.5).f(5).f(0).f(0);
    const history h{4,
                    {record(PI_PEAK_SCALING).i(50).i(1).f(-2).f(1), record(PI_INTERPOLATE).i(4).i(4),
                     record(PI_EDIT).f(-5).f(5).f(-5).f(5), wide_cut},
                    4};
    const std::uint64_t all = straight(h);
    act(record(PI_GO).i(0));
    act(record(PI_GO).i(4));
    EXPECT_EQ(digest(), all);
    act(record(PI_GO).i(1));
    EXPECT_EQ(act(record(PI_STATUS)).npmx, 50);
    EXPECT_EQ(act(wide_cut).kwr, 0);
}

TEST(image_steps, a_replayed_end_closes_the_image) {
    act(some_init(3));
    act(record(PI_FLOP).i(1));
    const pi_result r = act(record(PI_EXPORT));
    EXPECT_EQ(r.stored, (std::vector<std::int32_t>{PI_FLOP, 1, PI_EXPORT}));
    const jbuf<std::int32_t> jary = pi_make_jary(r, 5);
    EXPECT_EQ(std::vector(jary.begin(), jary.begin() + 6),
              (std::vector<std::int32_t>{6, 2, PI_FLOP, 1, PI_EXPORT, 5}));
    act(some_init(3));
    act(record(PI_RESTORE).i(4).i(2).i(PI_FLOP).i(1).i(PI_EXPORT));
    const pi_result end = act(record(PI_GO).i(100));
    EXPECT_EQ(end.what, pi_result::EXPORTED);
    EXPECT_EQ(end.nn, 0);
    EXPECT_EQ(act(record(PI_STEP).i(0)).message, "***Initialization must be done first.");
    EXPECT_EQ(act(record(PI_END)).message, "***Initialization must be done first.");
}

// Stored actions come from files, and may meet other data than those they were made with.
TEST(image_steps, damaged_stored_actions_are_refused_or_stop_at_the_fault) {
    const std::vector<std::int32_t> good = {PI_FLOP, 1, PI_CUT, 0,       0, 0, 0, 0, 3,
                                            1,       1, 26,     PI_EDIT, 0, 0, 0, 0, PI_EXPORT};
    auto restore = [](const std::vector<std::int32_t>& words, int ns, int nn) {
        act(some_init(2));
        record r = record(PI_RESTORE).i(nn).i(ns);
        r.words.insert(r.words.end(), words.begin(), words.end());
        return act(r);
    };
    const auto whole = static_cast<int>(good.size()) + 1;
    EXPECT_EQ(restore(good, 4, whole).step, 0);
    for (int nn : {2, 4, 8, 10, 14, 1 << 30}) EXPECT_EQ(restore(good, 4, nn).what, pi_result::FAILED) << nn;
    for (int nn : {0, -1, -(1 << 30)}) {
        EXPECT_EQ(restore(good, 4, nn).what, pi_result::IMAGE);
        EXPECT_EQ(act(record(PI_STEP).i(1)).what, pi_result::FAILED); // nothing to advance to
    }
    for (int ns : {-1, 5, 1 << 30}) EXPECT_EQ(restore(good, ns, whole).what, pi_result::FAILED) << ns;
    struct {
        std::size_t at;
        int value;
    } faults[] = {{0, 2},  {0, 10},        {0, 16},  {0, 20}, {0, 22},
                  {0, -1}, {0, PI_EXPORT}, {8, 100}, {8, -3}, {8, 4}};
    for (const auto& fault : faults) {
        std::vector<std::int32_t> bad = good;
        bad[fault.at] = fault.value;
        EXPECT_EQ(restore(bad, 4, whole).message, "***Error 120...proimag journal error") << fault.at;
    }
    // Step 2 has no sample spacing: the replay stops there, and the image stands where it stood.
    restore(good, 4, whole);
    act(record(PI_GO).i(1));
    const std::uint64_t before = digest();
    EXPECT_EQ(act(record(PI_GO).i(4)).message, "***Error 108...Improper cut");
    act(record(PI_STEP).i(0));
    EXPECT_EQ(digest(), before);
}

} // namespace
} // namespace norva::test
