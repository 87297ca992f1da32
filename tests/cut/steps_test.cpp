// The stored actions: replays give the same bits, failures leave what is stored, and each message is reached.
#include "driver.h"
#include "support/reference.h"

#include <algorithm>
#include <functional>
#include <random>

namespace norva {
namespace {

using namespace cut_test;
using test::noise;

struct cut_steps : ::testing::Test {
    void SetUp() override {
        forget();
        kss = 1;
        img.nt = 40;
        img.ksx = -1;
        img.ksy = 1;
        img.xc1 = -16;
        img.yc1 = 2;
        img.dxc = 0.25F;
        cutj.isi = 300;
    }
};

// A short cut of noise with one strong point.
cut_words noisy_cut() {
    const int nc = 128;
    cut_words w = record(PC_INIT, 1, 2, nc, -16.0, 0.25);
    std::vector<float> c = noise(2 * nc, 11);
    for (int k = 0; k < nc; k++) {
        const auto v = std::polar(9 * std::exp(-0.1F * static_cast<float>((k - 70) * (k - 70))), 0.4F * k);
        c[2 * k] += v.real();
        c[2 * k + 1] += v.imag();
    }
    put(w, c);
    return w;
}

cut_words noisy_signal() {
    cut_words w = record(PC_INIT_1D, 2, -2, 50, 9000.0, 1.5);
    put(w, noise(100, 4));
    return w;
}

// Words of a result without those that were not written.
cut_words words_of(const cut_words& in) {
    cut_words out(PC_RESULT_WORDS, 0x5aa5);
    procut(in, out);
    return out;
}

// An action that may come at any time; some of them fail.
cut_words any_action(std::mt19937& rng, bool one_dimensional) {
    auto pick = [&](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
    auto along = [&](int id) { // a position of the image or the transform
        const float part = static_cast<float>(pick(1001)) / 1000;
        if (id == 0) return -16 + 32 * part;
        return one_dimensional ? 9000 + 75 * part : part - 0.5F;
    };
    auto two = [&](int id) {
        const float a = along(id), b = along(id);
        return std::vector<float>{std::min(a, b), std::max(a, b)};
    };
    const int id = pick(2);
    switch (pick(18)) {
    case 0: return record(PC_WEIGHT, pick(4), 0);
    case 1: return record(PC_WEIGHT, pick(4), 2, two(1));
    case 2: return record(PC_EDIT, id, 2, two(id));
    case 3: return record(PC_SUB_SLOPE, id, two(id), along(1), along(1));
    case 4: return record(PC_SUB_SPLINE);
    case 5: return record(PC_PHASE_JUMP, two(1), 0.1 * pick(3));
    case 6: return record(PC_ZERO_PHASE, two(1));
    case 7: return record(PC_UNIT_AMPLITUDE, two(1));
    case 8: return record(PC_DIFFERENTIATE, id, pick(3), pick(4));
    case 9: return record(PC_RESTORE);
    case 10: return record(PC_DEWEIGHT, pick(2));
    case 11: return record(PC_PREVIOUS, pick(2));
    case 12: return record(PC_PEAKS, 1, along(0));
    case 13: return record(PC_PEAK_PAIR, two(0));
    case 14: return record(PC_SLOPE, id, two(id));
    case 15: {
        const cut_words last = words_of(record(PC_DIFFERENTIATE, id, 0, 1));
        words_of(record(PC_BACKUP, 1));
        const float first = std::bit_cast<float>(last[6]), step = std::bit_cast<float>(last[7]) - first;
        return record(PC_SPLINE, id, 1, 40, first + 3 * step, step, noise(40, rng()), 0.5);
    }
    case 16: return record(PC_TSA, two(1), two(1), 0.2);
    default: return record(PC_PERPENDICULAR, along(0), pick(2));
    }
}

// A straight run of random actions, then the same steps reached by backing up, advancing and restarting, and
// by coming back to the stored cut.
TEST_F(cut_steps, replays_give_the_same_bits) {
    for (unsigned seed = 1; seed <= 12; seed++) {
        SCOPED_TRACE(seed);
        const bool one_dimensional = seed % 4 == 0;
        std::mt19937 rng(seed);
        cutj.jf = 0;
        const cut_words initial = one_dimensional ? noisy_signal() : noisy_cut();
        std::vector<cut_words> results = {words_of(initial)};
        ASSERT_NE(results[0][0], -1);
        for (int k = 0; k < 400 && results.size() < 25; k++) {
            const cut_words action = any_action(rng, one_dimensional);
            const std::vector<std::int32_t> stored(cutj.ir.begin(), cutj.ir.begin() + cutj.np);
            cut_words r = words_of(action);
            if (r[0] == -1) {
                EXPECT_TRUE(
                    std::equal(stored.begin(), stored.end(), cutj.ir.begin(), cutj.ir.begin() + cutj.np));
                EXPECT_EQ(cutj.ns, static_cast<int>(results.size()) - 1);
                std::string text(reinterpret_cast<const char*>(&r[2]), 12);
                if (text == "***Error 195") words_of(record(PC_BACKUP, 1));
                continue;
            }
            results.push_back(std::move(r));
        }
        const int last = static_cast<int>(results.size()) - 1;
        ASSERT_GT(last, 8);
        int step = last;
        for (int k = 0; k < 60; k++) {
            cut_words r;
            switch (rng() % 4) {
            case 0:
                r = words_of(record(PC_RESTART));
                step = 0;
                break;
            case 1:
            case 2: {
                const int n = static_cast<int>(rng() % 6);
                r = words_of(record(PC_BACKUP, n));
                step = std::max(0, step - n);
                break;
            }
            default:
                r = words_of(record(PC_FORWARD));
                EXPECT_EQ(r[0] == -1, step == last);
                if (step == last) continue;
                step++;
            }
            EXPECT_EQ(r, results[step]) << "step " << step;
        }
        if (one_dimensional) continue;

        // Left, kept by an image, and opened again.
        while (step++ < last) words_of(record(PC_FORWARD));
        EXPECT_EQ(act(PC_EXIT).what, pc_result::ENDED);
        EXPECT_EQ(cutj.jf, 1);
        const cut_journal kept = cutj;
        words_of(record(PC_REENTRY));
        EXPECT_EQ(cutj.ir[0], -1);
        EXPECT_EQ(message(PC_RESTORE), "***Initialization must be done first");
        cutj = kept;
        cutj.ir.resize(kept.np);
        EXPECT_EQ(words_of(initial), results[0]);
        for (int k = 1; k <= last; k++) EXPECT_EQ(words_of(record(PC_FORWARD)), results[k]) << k;
        // Half way back and left unchanged: all of it is still there.
        words_of(record(PC_BACKUP, last / 2));
        act(PC_EXIT);
        EXPECT_EQ(cutj.jf, 0);
        EXPECT_EQ(cutj.np, kept.np);
        EXPECT_EQ(cutj.ns, kept.ns);
        EXPECT_TRUE(std::equal(kept.ir.begin(), kept.ir.begin() + kept.np, cutj.ir.begin()));
    }
}

TEST_F(cut_steps, a_fresh_action_after_a_backup_drops_the_steps_ahead) {
    open(noisy_cut());
    for (int lw : {0, 2, 3}) act(PC_WEIGHT, lw, 0);
    EXPECT_EQ(act(PC_BACKUP, 2).step, 301);
    EXPECT_EQ(message(PC_WEIGHT, 4, 0), "***Error 101a...Invalid weighting"); // leaves the two steps ahead
    EXPECT_EQ(act(PC_FORWARD).step, 302);
    EXPECT_EQ(act(PC_FORWARD).step, 303);
    EXPECT_EQ(message(PC_FORWARD), "***Error 125...Cannot advance any further");
    EXPECT_EQ(act(PC_BACKUP, 2).step, 301);
    const pc_result fresh = act(PC_DEWEIGHT, 1);
    EXPECT_EQ(fresh.step, 302);
    EXPECT_EQ(fresh.mode, PC_DEWEIGHT);
    EXPECT_EQ(message(PC_FORWARD), "***Error 125...Cannot advance any further");
    // A measurement does so too.
    act(PC_BACKUP, 1);
    act(PC_PEAKS, 1, 1.5);
    EXPECT_EQ(message(PC_FORWARD), "***Error 125...Cannot advance any further");
    // Back beyond the beginning stops there; the display is no longer deweighted.
    const pc_result start = act(PC_BACKUP, 99);
    EXPECT_EQ(start.step, 300);
    std::array<std::int32_t, 4> par{};
    procutpar(par);
    EXPECT_EQ(par[0], 0);
    EXPECT_EQ(par[1], 1);
}

TEST_F(cut_steps, a_signal_edited_away_comes_back_with_a_backup) {
    const pc_result before = open(point_cut({{0}}, 4));
    act(PC_WEIGHT, 0, 0);
    const cut_words weighted = words_of(record(PC_RESTORE));
    act(PC_WEIGHT, 2, 0); // a step ahead
    act(PC_BACKUP, 1);
    // Nothing of the band lies above 0.7 cycles a gate.
    constexpr const char* gone = "***Error 195...Signal identically zero, backup to restore";
    EXPECT_EQ(message(PC_ZERO_PHASE, 0.7, 0.9), gone);
    EXPECT_EQ(message(PC_WEIGHT, 1, 0), gone);
    EXPECT_EQ(message(PC_PEAKS, 1, 0.0), gone);
    EXPECT_EQ(message(PC_FORWARD), gone);
    EXPECT_EQ(words_of(record(PC_BACKUP, 1)), weighted);
    EXPECT_EQ(act(PC_FORWARD).step, before.step + 3);
    // Left while there is no signal: the edit is not kept.
    EXPECT_EQ(message(PC_ZERO_PHASE, 0.7, 0.9), gone);
    const int stored = cutj.np;
    EXPECT_EQ(act(PC_EXIT).step, 4);
    EXPECT_EQ(cutj.np, stored + 1);
    EXPECT_EQ(cutj.ns, 4);
}

TEST_F(cut_steps, each_message_is_reached) {
    struct row {
        cut_words in;
        const char* text;
    };
    const std::vector<float> two = {0, 0, 1, 1};
    cut_words long_raw = record(PC_INIT_1D, 0, 1, 2049, 0.0, 1.0);
    long_raw.resize(6 + 2 * 2049);
    const row rows[] = {
        {record(PC_INIT, 1, 2, 2, -1.0, 1.0, two), "***Error 100a"},
        {record(PC_INIT, 1, 2, 2, -1.0, NAN, two), "***Error 100a"},
        {record(PC_INIT, 1, 2, 2, -1.0, -0.5, two), "***Error 100a"},
        {record(PC_INIT, 1, 2, 2, -1.0, 1 / 3.0, two), "***Error 100b"},
        {record(PC_INIT, 1, 2, 2, -1.0, 1e-30, two), "***Error 100b"},
        {record(PC_INIT, 1, 2, 2, -1.0, 1 / 128.0, two), "***Error 100c"},
        {record(PC_INIT, 1, 2, 8193, -1.0, 0.5, two), "***Error 100c"},
        {record(PC_INIT, 1, 2, -5, -1.0, 0.5, two), "***Error 100c"},
        {record(PC_INIT, 1, 2, 8192, -1.0, 0.5, two), "***Error 99...Incomplete record"},
        {record(PC_INIT, 7, 2, 2, -1.0, 0.5, two), "***Error 101a...Invalid weighting"},
        {record(PC_INIT_1D, 1, 1, 2, 0.0, 1.0, two), "***Error 130a"},
        {long_raw, "***Error 130b...Number of samples must be 1 to 2048"},
        {record(PC_WEIGHT, 4, 0), "***Error 101a...Invalid weighting"},
        {record(PC_WEIGHT, -1, 0), "***Error 101a...Invalid weighting"},
        {record(PC_WEIGHT, 0, 1, 0.1), "***Error 101b...Improper number of crosshairs"},
        {record(PC_WEIGHT, 0, 2, 0.1, 0.1), "***Error 101c...Processing interval is too short"},
        {record(PC_EDIT, 0, 0), "***Error 102a...Improper number of crosshairs"},
        {record(PC_EDIT, 0, 9), "***Error 102a...Improper number of crosshairs"},
        {record(PC_EDIT, 0, 2, 1.0, 1.0), "***Error 102b...Crosshairs not in sequence"},
        {record(PC_EDIT, 0, 2, 1.0, 16.0), "***Error 102c...Last crosshair > data interval"},
        {record(PC_EDIT, 1, 2, 0.2, 0.1), "***Error 102d...Crosshairs not in sequence"},
        {record(PC_EDIT, 1, 2, 0.2, 2.0), "***Error 102e...Last crosshair > data interval"},
        {record(PC_EDIT, 1, 2, 0.2, 0.2078125), "***Error 102f...Processing interval is too short"},
        {record(PC_SUB_SLOPE, 0, 1.0, 1.0, 0.0, 0.0), "***Error 103a...Crosshairs not in sequence"},
        {record(PC_SUB_SLOPE, 1, 0.2, 0.1, 0.0, 0.0), "***Error 103b...Crosshairs not in sequence"},
        {record(PC_SUB_SLOPE, 1, 0.1, 0.2, NAN, 0.0), "***Error 103c...Phase is not finite"},
        {record(PC_SUB_SPLINE), "***Error 104a...Spline not defined"},
        {record(PC_PHASE_JUMP, 0.2, 0.1, 0.0), "***Error 105...Crosshairs not in sequence"},
        {record(PC_PHASE_JUMP, 0.1, 0.2, INFINITY), "***Error 105...Phase jump is not finite"},
        {record(PC_ZERO_PHASE, 0.2, 0.1), "***Error 106a...Crosshairs not in sequence"},
        {record(PC_UNIT_AMPLITUDE, 0.2, 0.2), "***Error 107a...Crosshairs not in sequence"},
        {record(PC_DIFFERENTIATE, 0, 1, 4), "***Error 108a...Nothing to differentiate"},
        {record(PC_DIFFERENTIATE, 0, 101, 0), "***Error 108b...Order of derivative must be 0 to 100"},
        {record(PC_PEAKS, 1, 15.75), "***Error 114...Invalid crosshair position"},
        {record(PC_PEAKS, 9), "***Error 114...Improper number of crosshairs"},
        {record(PC_PEAK_PAIR, 2.0, 2.0), "***Error 115a...Crosshairs not in ascending order"},
        {record(PC_PEAK_PAIR, 2.0, 2.5), "***Error 115b...Crosshair interval is too short"},
        {record(PC_PEAK_PAIR, 4.0, 15.75), "***Error 115c...No peak within crosshair interval"},
        {record(PC_SLOPE, 0, 2.0, 2.0), "***Error 116a...Crosshairs not in ascending order"},
        {record(PC_SLOPE, 0, 2.0, 2.25), "***Error 116b...Crosshairs not far enough apart"},
        {record(PC_SPLINE, 1, 401, 10, 0.0, 1.0), "***Error 117...Spline improperly defined"},
        {record(PC_SPLINE, 1, 0, 8193, 0.0, 1.0), "***Error 117...Spline improperly defined"},
        {record(PC_TSA, -0.2, 0.2, -0.3, 0.3, 0.2), "***Error 118...TSA Measurement requires deweighting"},
        {record(PC_PERPENDICULAR, 15.75, 1), "***Error 114...Invalid crosshair position"},
        {record(PC_SHIFT, 15.75, 9000.0, 500.0, 1), "***Error 121b...Invalid crosshair position"},
        {record(PC_SHIFT, 1.0, 9000.0, 0.0, 0), "***Error 121c...Delays are not finite"},
        {record(PC_MOCOMP, 9000.0, 500.0), "Must subtract phase slope or phase spline first!"},
        {record(PC_BACKUP), "***Error 99...Incomplete record"},
        {record(PC_SPLINE, 1, 0, 10, 0.0), "***Error 99...Incomplete record"},
        {record(12), "***Action not activated"},
        {record(13), "***Action not activated"},
        {record(PC_ABORT), "***Action not activated"},
        {record(31), "***Action not activated"},
        {record(32), "***Error 99...Invalid mode"},
        {record(-7), "***Error 99...Invalid mode"},
        {{}, "***Error 99...Invalid mode"},
    };
    // A point at the origin: its lobe falls towards the last sample.
    cut_words initial = record(PC_INIT, 1, 1, 128, -16.0, 0.25);
    for (int k = 0; k < 128; k++) {
        put(initial,
            std::exp(-0.01F * static_cast<float>((k - 64) * (k - 64))) + 1e-3F * static_cast<float>(128 - k));
        put(initial, 0.0F);
    }
    for (const row& r : rows) {
        const pc_result start = open(initial);
        ASSERT_EQ(start.message, "");
        EXPECT_EQ(run(r.in).message, r.text);
        EXPECT_EQ(cutj.ns, 0);
        EXPECT_EQ(cutj.np, 6 + 256);
        EXPECT_EQ(cutj.jf, 0);
    }
    // Splines that do not fit the grid they are subtracted on.
    const double dx = 4.0 / 512;
    const std::vector<float> ph(10, 0.1F);
    struct misfit {
        int id;
        double x1, step;
        const char* text;
    };
    const misfit misfits[] = {{0, 0, 0.26, "***Error 104b...Spline improperly defined"},
                              {0, -16.25, 0.25, "***Error 104c...Spline improperly defined"},
                              {0, 14, 0.25, "***Error 104d...Spline improperly defined"},
                              {1, 0, 1.02 * dx, "***Error 104e...Spline improperly defined"},
                              {1, -2 - dx, dx, "***Error 104f...Spline improperly defined"},
                              {1, 2 - 9 * dx, dx, "***Error 104g...Spline improperly defined"}};
    for (const misfit& m : misfits) {
        open(initial);
        act(PC_SPLINE, m.id, 0, 10, m.x1, m.step, ph);
        EXPECT_EQ(message(PC_SUB_SPLINE), m.text);
    }
    open(initial);
    act(PC_SUB_SLOPE, 1, -0.2, 0.2, 0.1, 0.2);
    EXPECT_EQ(message(PC_MOCOMP, 0.0, 0.0), "***Error 122e...Delays are not finite");
    open(initial);
    act(PC_SPLINE, 1, 0, 10, 0.0, dx, ph);
    act(PC_SUB_SPLINE);
    EXPECT_EQ(message(PC_MOCOMP, 9000.0, 500.0), "***Error 122d...M/C spline only for crossrange cut");
    open(initial);
    act(PC_SPLINE, 0, 0, 10, 0.0, 0.25, ph);
    act(PC_SUB_SPLINE);
    EXPECT_EQ(message(PC_MOCOMP, 9000.0, 500.0), "***Error 122c...M/C spline must be in transform domain");
}

TEST_F(cut_steps, limits_are_exact) {
    for (auto [nc, ls] : {std::pair(8192, 2), {8192, 64}, {1, 64}, {1, 2}}) {
        cut_words w = record(PC_INIT, 0, 3, nc, -nc / 2.0 / ls, 1.0 / ls);
        put(w, noise(2 * nc, 1));
        const pc_result r = open(w);
        ASSERT_EQ(r.message, "") << nc << " " << ls;
        EXPECT_EQ(r.cut.u.size(), static_cast<std::size_t>(nc));
        EXPECT_EQ(r.transform.u.size(), static_cast<std::size_t>(std::max(nc, 128 * ls)));
        for (int action : {PC_WEIGHT, PC_DEWEIGHT, PC_RESTORE}) EXPECT_EQ(message(action, 3, 0), "");
    }
    for (int nw : {2048, 1025, 3}) {
        cut_words w = record(PC_INIT_1D, 3, 1, nw, 0.0, 0.01);
        put(w, noise(2 * nw, 1));
        const pc_result r = open(w);
        ASSERT_EQ(r.message, "") << nw;
        EXPECT_EQ(r.cut.u.size(), static_cast<std::size_t>(std::max(128, nw > 1024 ? 8192 : 16)));
    }
    // The stored actions end at their limit, with room kept for the exit.
    open(noisy_cut());
    const std::vector<float> ph(8192, 0.0F);
    int steps = 0;
    while (message(PC_SPLINE, 1, 0, 8192, 0.0, 1.0, ph).empty() && steps < 100) steps++;
    EXPECT_EQ(steps, (CUT_JOURNAL_WORDS - 3 - 262) / 8198);
    EXPECT_EQ(message(PC_SPLINE, 1, 0, 8192, 0.0, 1.0, ph),
              "***Error 99...not enough memory for procut journal");
    while (message(PC_DEWEIGHT, 1).empty() && steps < 10000) steps++;
    act(PC_RESTORE);
    EXPECT_EQ(message(PC_RESTORE), "***Error 99...not enough memory for procut journal");
    EXPECT_EQ(cutj.np, CUT_JOURNAL_WORDS - 3);
    EXPECT_EQ(act(PC_EXIT).what, pc_result::ENDED);
    EXPECT_EQ(cutj.np + 2, CUT_JOURNAL_WORDS);
}

TEST_F(cut_steps, stored_cuts_that_are_damaged_are_dropped_or_refused) {
    open(noisy_cut());
    for (int lw : {0, 2, 3}) act(PC_WEIGHT, lw, 0);
    act(PC_EXIT);
    const cut_journal good = cutj;
    auto come_back = [&](auto damage) {
        cutj = good;
        cutj.ir.resize(good.np);
        damage();
        return run(noisy_cut());
    };
    // Not to be used at all: the new cut is taken, without steps.
    const std::function<void()> useless[] = {
        [] { cutj.np = 1 << 30; },       [] { cutj.np = -4; },         [] { cutj.ir.resize(100); },
        [] { cutj.ir[0] = PC_INIT_1D; }, [] { cutj.ir[3] = 1 << 29; }, [] { cutj.ir[5] = 0; },
    };
    for (const auto& damage : useless) {
        EXPECT_EQ(come_back(damage).step, 300);
        EXPECT_EQ(message(PC_FORWARD), "***Error 125...Cannot advance any further");
    }
    // Broken further on: up to there it can be used.
    const int third = good.np - 1 - 3;
    come_back([&] { cutj.ir[third] = 77; });
    EXPECT_EQ(act(PC_FORWARD).step, 301);
    const cut_words two = words_of(record(PC_FORWARD));
    EXPECT_EQ(message(PC_FORWARD), "***Error 99...Invalid mode");
    EXPECT_EQ(words_of(record(PC_BACKUP, 0)), two);
    come_back([&] { cutj.ir[third] = PC_INIT; });
    for (int k = 0; k < 2; k++) act(PC_FORWARD);
    EXPECT_EQ(message(PC_FORWARD), "***Error 99...Invalid mode");
    come_back([&] { cutj.ns = 1 << 30, cutj.np -= 2; });
    for (int k = 0; k < 2; k++) act(PC_FORWARD);
    EXPECT_EQ(message(PC_FORWARD), "***Error 99...Incomplete record");
    EXPECT_EQ(act(PC_WEIGHT, 1, 0).step, 303);
}

TEST_F(cut_steps, unfit_numbers_neither_crash_nor_hang) {
    for (float bad : {0.0F, NAN, INFINITY, 3e38F, 1e-42F}) {
        for (bool all : {true, false}) {
            for (bool raw : {true, false}) {
                cut_words w = raw ? noisy_signal() : noisy_cut();
                for (std::size_t k = 6; k < w.size(); k += all ? 1 : 37)
                    w[k] = std::bit_cast<std::int32_t>(bad);
                open(w);
                const double x = raw ? 9010.0 : 0.1, y = raw ? 9030.0 : 0.3;
                for (int lw : {0, 1, 2, 3}) act(PC_WEIGHT, lw, 0);
                act(PC_DEWEIGHT, 1);
                act(PC_TSA, x, y, x, y, 0.3);
                act(PC_PHASE_JUMP, x, y, 0);
                for (int id : {0, 1}) {
                    const double a = id ? x : 1.0, b = id ? y : 3.0;
                    act(PC_DIFFERENTIATE, id, 3, 2);
                    act(PC_SLOPE, id, a, b);
                    act(PC_SUB_SLOPE, id, a, b, 0.5, 1e30);
                    act(PC_EDIT, id, 2, a, b);
                    act(PC_SPLINE, id, 0, 3, a, NAN, std::vector<float>{NAN, 1e30F, -INFINITY});
                    act(PC_SUB_SPLINE);
                }
                act(PC_PEAKS, 1, 2.0);
                act(PC_PEAK_PAIR, -9.0, 9.0);
                act(PC_UNIT_AMPLITUDE, x, y);
                act(PC_ZERO_PHASE, x, y);
                for (float ch : {NAN, INFINITY, -1e38F}) {
                    act(PC_PEAKS, 1, ch);
                    act(PC_WEIGHT, 0, 2, ch, ch);
                    act(PC_EDIT, 1, 2, ch, -ch);
                    act(PC_SHIFT, ch, ch, ch, 0);
                    act(PC_TSA, ch, ch, ch, ch, ch);
                }
                act(PC_BACKUP, 1000);
            }
        }
    }
    // Data that are not all zero but hold something unfit say so.
    cut_words w = noisy_cut();
    w[9] = std::bit_cast<std::int32_t>(NAN);
    EXPECT_EQ(open(w).message, "***Error 195...Signal is not finite, backup to restore");
    std::fill(w.begin() + 6, w.end(), 0);
    EXPECT_EQ(open(w).message, "***Error 195...Signal identically zero, backup to restore");
}

} // namespace
} // namespace norva
