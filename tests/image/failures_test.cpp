// Messages, limits, and data that are none.
#include "driver.h"
#include "state/image_cut.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace norva::test {
namespace {

record small_init(formation how = {}) {
    return init_record(noise(2 * 16 * 16, 5), 16, 16, how);
}

TEST(image_failures, each_check_has_its_message_and_leaves_the_image) {
    const record box = record(PI_EDIT).f(1).f(7).f(-8).f(7); // with 2 samples a gate: 13 by 31
    const struct {
        std::vector<record> before;
        record action;
        const char* message; // null: passes
    } cases[] = {
        {{}, record(-1), "***Error 99...Invalid mode"},
        {{}, record(22), "***Error 99...Invalid mode"},
        {{}, record(PI_WEIGHT).i(1), "***Action not activated"},
        {{}, record(13), "***Action not activated"},
        {{}, record(PI_EDIT).f(1), "***Error 99...Incomplete record"},
        {{}, small_init({.ifx = 64, .ify = 128}), "***Error 100a...Insufficient memory"},
        {{}, small_init({.npmx = 1001}), "***Error 100b...Too many peaks specified"},
        {{}, small_init({.kscl = 0}), "***Error 100c...Improper scaling"},
        {{}, small_init({.kscl = 4}), "***Error 100c...Improper scaling"},
        {{}, small_init({.ifx = 0}), "***Error 99...Improper data size"},
        {{}, record(PI_INIT), "***Error 99...Incomplete record"},
        {{box}, record(PI_FLOP).i(1), "***Error 101a...Image cannot be flopped"},
        {{box}, record(PI_FLOP).i(3), "***Error 101a...Image cannot be flopped"},
        {{box}, record(PI_FLOP).i(2), nullptr},
        {{record(PI_EDIT).f(-7).f(7).f(1).f(7)},
         record(PI_FLOP).i(3),
         "***Error 101b...Image cannot be flopped"},
        {{record(PI_EDIT).f(0).f(7).f(-7).f(7)},
         record(PI_FLOP).i(1),
         nullptr}, // the zero is its first sample
        {{}, record(PI_EDIT).f(-8).f(7.5).f(-8).f(7.5), nullptr},
        {{}, record(PI_EDIT).f(-8.5).f(7).f(-8).f(7), "***Error 104a...Box must be inside image"},
        {{}, record(PI_EDIT).f(-8).f(8).f(-8).f(7), "***Error 104a...Box must be inside image"},
        {{}, record(PI_EDIT).f(-8).f(7).f(-1e30).f(7), "***Error 104a...Box must be inside image"},
        {{}, record(PI_EDIT).f(-8).f(7).f(-8).f(1e30), "***Error 104a...Box must be inside image"},
        {{}, record(PI_EDIT).f(-2).f(2.5).f(-8).f(7), "***Error 104b...Box is too small"},
        {{}, record(PI_EDIT).f(-8).f(7).f(7).f(-8), "***Error 104b...Box is too small"},
        {{}, record(PI_EDIT).f(7).f(-8).f(1e30).f(-1e30), "***Error 104b...Box is too small"},
        {{}, record(PI_EDIT).f(-2.5).f(2.5).f(-2.5).f(2.5), nullptr}, // 11 by 11
        {{}, record(PI_INTERPOLATE).i(1).i(2), "***Error 105a...Interpolation cannot be reversed"},
        {{}, record(PI_INTERPOLATE).i(2).i(-5), "***Error 105a...Interpolation cannot be reversed"},
        {{}, record(PI_INTERPOLATE).i(64).i(128), "***Error 105b...Insufficient memory"},
        {{}, record(PI_INTERPOLATE).i(2147483647).i(2147483647), "***Error 105b...Insufficient memory"},
        {{}, record(PI_INTERPOLATE).i(2).i(1024), "***Error 105b...Insufficient memory"}, // column too long
        {{}, record(PI_CUT).f(8).f(0).f(0).f(0).f(0), "***Error 108...Improper cut"},
        {{}, record(PI_CUT).f(0.2).f(0.5).f(0).f(0).f(0), "***Error 108...Improper cut"},
        {{}, record(PI_CUT).f(8).f(1 / 512.0).f(0).f(0).f(0), nullptr}, // 8192 samples at most: here 4096
        {{}, record(PI_CUT).f(16).f(1 / 512.0).f(0).f(0).f(90), nullptr},
        {{}, record(PI_CUT).f(16).f(1 / 513.0).f(0).f(0).f(90), "***Error 108...Improper cut"},
        {{}, record(PI_CUT).f(8).f(1).f(0).f(NAN).f(0), "***Error 108...Improper cut"},
        {{}, record(PI_CUT).f(8).f(1).f(1e30).f(0).f(0), nullptr}, // far outside: no numbers, but no crash
        {{}, record(PI_CENTER).f(-8).f(0).f(9000).f(150).i(0), "***Error 109a...Point must be within image"},
        {{}, record(PI_CENTER).f(0).f(7.5).f(9000).f(150).i(1), "***Error 109a...Point must be within image"},
        {{}, record(PI_CENTER).f(0).f(7).f(9000).f(150).i(0), nullptr},
        {{},
         record(PI_CENTER).f(0).f(0).f(9000).f(0).i(0),
         "***Error 109c...Improper frequency or bandwidth"},
        {{}, record(PI_STEP).i(-1), "***Error 116...Cannot backup any further"},
        {{}, record(PI_STEP).i(1), "***Error 116...Cannot advance any further"},
        {{}, record(PI_STEP).i(std::numeric_limits<int>::min()), "***Error 116...Cannot backup any further"},
        {{box, record(PI_STEP).i(-1), record(PI_FLOP).i(1)},
         record(PI_STEP).i(1),
         "***Error 116...Cannot advance any further"},
        {{}, record(PI_STORE_CUT), "***Error 118...proimag journal"}, // the image does not stand at a cut
    };
    act(record(PI_END));
    EXPECT_EQ(act(record(PI_FLOP).i(1)).message, "***Initialization must be done first.");
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << "action " << c.action.words[0] << " " << (c.message ? c.message : "passes"));
        act(small_init({.ifx = 2, .ify = 2}));
        for (const record& r : c.before) act(r);
        act(record(PI_STEP).i(0));
        const std::uint64_t before = digest();
        const pi_result r = act(c.action);
        EXPECT_EQ(r.message, c.message ? c.message : "");
        if (!c.message) continue;
        EXPECT_EQ(result_words()[0], -1);
        EXPECT_EQ(result_words()[19], 0x20202020); // filled up with blanks
        act(record(PI_STEP).i(0));
        EXPECT_EQ(digest(), before);
    }
}

TEST(image_failures, a_peak_must_be_near) {
    turntable t(32, 32, -1, 1);
    t.add(0, 0);
    act(t.init({.ifx = 8, .ify = 8}));
    EXPECT_EQ(act(record(PI_CENTER).f(0).f(0.9).f(9000).f(150).i(1)).mode, PI_CENTER);
    const auto none = [&](double x, double y) {
        const pi_result r = act(record(PI_PEAK_PARAMETERS).f(x).f(y));
        EXPECT_EQ(r.mode, PI_PEAK_PARAMETERS);
        return r.apk == 0 && r.xpk == 0 && r.ypk == 0;
    };
    EXPECT_FALSE(none(0.5, 0.5));
    EXPECT_TRUE(none(-16, 0)); // first column
    EXPECT_TRUE(none(0, 15.875));
    EXPECT_TRUE(none(NAN, 0));
    // Four samples of 32 each way: a hill of 8 gates to each side, whose top is too far from its slope.
    std::vector<float> data(2 * 32 * 32);
    for (int row = 14; row < 18; row++) {
        for (int f = 14; f < 18; f++) data[2 * (row * 32 + f)] = 1;
    }
    act(init_record(data, 32, 32));
    EXPECT_TRUE(none(4, 0));
    EXPECT_FALSE(none(1.6, 0));
    EXPECT_EQ(act(record(PI_CENTER).f(4).f(0).f(9000).f(150).i(1)).message,
              "***Error 109b...No peak within 2 gates");
    EXPECT_FLOAT_EQ(act(record(PI_CENTER).f(4).f(0).f(9000).f(150).i(0)).xc, 4);
}

TEST(image_failures, limits_are_exact) {
    // 1048576 samples and 1000 peaks pass; the peaks found are the strongest.
    const record most =
        init_record(noise(2 * 128 * 128, 3), 128, 128, {.ifx = 8, .ify = 8, .npmx = 1000, .apmn = 0});
    pi_result r = act(most);
    ASSERT_EQ(r.nx * r.ny, PI_MAX_SAMPLES) << r.message;
    EXPECT_EQ(r.npk, 1000);
    EXPECT_TRUE(std::is_sorted(r.dp.rbegin(), r.dp.rend()));
    EXPECT_EQ(act(record(PI_INTERPOLATE).i(8).i(8)).nx, 1024); // changes nothing but rounding
    EXPECT_EQ(act(record(PI_INTERPOLATE).i(9).i(8)).message, "***Error 105b...Insufficient memory");
    r = act(record(PI_WRITE));
    EXPECT_EQ(r.data.size(), 2U * PI_MAX_SAMPLES);
    act(record(PI_PEAK_SCALING).i(100000).i(7).f(0).f(1)); // not checked here, but held
    EXPECT_EQ(act(record(PI_STEP).i(0)).npk, 1000);
    // A result that does not fit.
    std::vector<std::int32_t> out(20);
    proimag(record(PI_STEP).i(0).words, out);
    EXPECT_FALSE(pi_unpack(out, r));
    EXPECT_EQ(r.message, "***Error 99...Result does not fit");
    // The journal: 2197152 words with the first record. A cut holds most, the rest is filled up with status.
    act(init_record(noise(2 * 12 * 12, 3), 12, 12));
    act(record(PI_CUT).f(5).f(0.5).f(0).f(0).f(0));
    const int used = 12 + 2 * 144 + 7, room = PI_JOURNAL_WORDS - used;
    cutj.jf = 1;
    cutj.ns = 1;
    cutj.ir.assign(static_cast<std::size_t>(room) - 1, 26);
    cutj.np = room - 1;
    EXPECT_EQ(act(record(PI_STORE_CUT)).message, "***Error 118...proimag journal");
    cutj.np = room - 2;
    EXPECT_EQ(act(record(PI_STORE_CUT)).what, pi_result::CUT_STORED);
    EXPECT_EQ(act(record(PI_STATUS)).what, pi_result::STATUS); // the last that begins inside
    EXPECT_EQ(act(record(PI_STATUS)).message, "***Error 99...not enough memory for proimag journal");
    EXPECT_EQ(act(record(PI_EXPORT)).nn, room + 10); // count, 6 + 1 + room words, status, end
    cutj = {};
}

TEST(image_failures, data_that_are_none_give_an_empty_or_a_sound_picture) {
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    turntable t(32, 32, -1, 1);
    t.add(5, -5);
    const std::vector<float> good = t.data();
    const struct {
        const char* name;
        float factor, spoiled;
        bool empty;
    } cases[] = {{"zero", 0, 0, true},        {"one nan", 1, nan, false},    {"one inf", 1, inf, false},
                 {"nan", nan, nan, true},     {"large", 1e30F, 0, false},    {"largest", 3e38F, 0, true},
                 {"small", 1e-25F, 0, false}, {"denormal", 1e-41F, 0, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<float> data = good;
        for (float& v : data) v *= c.factor;
        data[700] += c.spoiled;
        for (double apmn : {0.5, -3.0}) {
            pi_result r = act(init_record(data, 32, 32, {.ifx = 2, .ify = 2, .apmn = apmn}));
            for (int pass = 0; pass < 3; pass++) {
                ASSERT_EQ(r.what, pi_result::IMAGE) << r.message;
                EXPECT_TRUE(std::all_of(r.a.begin(), r.a.end(), [](float v) { return v >= 0 && v <= 1; }));
                if (c.factor < 3e38F || std::isnan(c.factor)) { // above, the transform runs over
                    EXPECT_EQ(r.npk == 0, c.empty);
                    EXPECT_EQ(r.ascl == 0, c.empty);
                    EXPECT_EQ(*std::max_element(r.a.begin(), r.a.end()), c.empty ? 0.0F : 1.0F);
                    const double away = r.npk > 0 ? std::hypot(r.xp[0] - 5, r.yp[0] + 5) : 0;
                    EXPECT_LT(away, 0.6);
                }
                act(record(PI_PEAK_PARAMETERS).f(3).f(3));
                act(record(PI_CUT).f(10).f(0.5).f(0).f(0).f(45));
                act(record(PI_WRITE));
                r = act(pass == 0 ? record(PI_INTERPOLATE).i(4).i(4)
                                  : record(PI_EDIT).f(-12).f(12).f(-12).f(12));
            }
        }
    }
}

} // namespace
} // namespace norva::test
