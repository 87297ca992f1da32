// From the window's block to a record and back from a result.
#include "driver.h"
#include "mocomp/polar_keywords.h"
#include "support/reference.h"

#include <gtest/gtest.h>

namespace norva::test {
namespace {

proimag_parms block(int mode) {
    static const std::vector<float> data = noise(2 * 16 * 12, 1);
    proimag_parms pip;
    pip.mode = mode;
    pip.nf = 16;
    pip.nt = 12;
    pip.q = data.data();
    pip.npmx = 7;
    pip.kscl = 2;
    pip.apmn = 0.25F;
    pip.diam = 0.5F;
    pip.kflop = 1;
    pip.nbu = -3;
    pip.xc = 1.5F, pip.yc = -2.5F;
    pip.xc1 = -6, pip.xc2 = 5, pip.yc1 = -7, pip.yc2 = 4;
    pip.wct = 10, pip.dct = 0.5F, pip.xpv = 1, pip.ypv = 2, pip.ang = 30;
    return pip;
}

TEST(image_pack, records_hold_the_words_of_their_action) {
    plr_kws polar;
    polar.dtyp = 0, polar.xex = 11, polar.yex = 12, polar.rc = 13, polar.da = 14, polar.du = 15,
    polar.sa = 16, polar.de = 17;
    const std::int32_t stored[] = {7, 4, 1, 2, 3, 19, 99, 98};
    const pi_surroundings around{
        .f0 = 9000, .df = 2, .bw = 32, .hclip = 0.5F, .polar = &polar, .jary = stored};
    auto parms = [] {
        return record(PI_INIT).i(16).i(12).i(1).i(-1).i(1).i(1).i(1).i(7).i(2).f(0.25).f(0.5);
    };
    record init = parms(), formatted = parms();
    formatted.words[0] = PI_POLAR;
    formatted.i(1).f(11).f(12).f(9000).f(2).f(13).f(14).f(15).f(16).f(17);
    for (float v : std::span(block(0).q, 2 * 16 * 12)) {
        init.f(v);
        formatted.f(v);
    }
    const record expected[] = {
        init,
        record(PI_FLOP).i(1),
        record(PI_PEAK_SCALING).i(7).i(2).f(0.25).f(1.0), // the diameter at the high threshold
        record(PI_EDIT).f(-6).f(5).f(-7).f(4),
        record(PI_INTERPOLATE).i(1).i(1),
        record(PI_PEAK_PARAMETERS).f(1.5).f(-2.5),
        record(PI_STATUS),
        record(PI_CUT).f(10).f(0.5).f(1).f(2).f(30),
        record(PI_CENTER).f(1.5).f(-2.5).f(9015).f(32).i(1),
        formatted,
        record(PI_WRITE),
        record(PI_GO).i(-3),
        record(PI_STEP).i(-3),
        record(PI_STORE_CUT),
        record(PI_EXPORT),
        record(PI_RESTORE).i(5).i(4).i(1).i(2).i(3).i(19),
        record(PI_END)};
    for (const record& r : expected) {
        const pi_packed packed = pi_pack(block(r.words[0]), around);
        EXPECT_EQ(packed.refusal, "");
        EXPECT_EQ(packed.record, r.words) << "action " << r.words[0];
    }
}

TEST(image_pack, what_is_refused_before_the_processor_is_asked) {
    auto refusal = [](const proimag_parms& pip, float hclip = 1, std::span<const std::int32_t> jary = {}) {
        const pi_packed packed = pi_pack(pip, {.hclip = hclip, .jary = jary});
        EXPECT_EQ(packed.record.empty(), !packed.refusal.empty());
        return packed.refusal;
    };
    const char* too_large = "pi_apply.c: Not enough memory for specified image!";
    const char* too_many = "Too many points, must be < 8192.\n  Try larger sample spacing.";
    proimag_parms pip = block(PI_FLOP);
    pip.nf = 64, pip.nt = 256, pip.ifx = 2, pip.ify = 4; // 131072
    EXPECT_EQ(refusal(pip), "");
    pip.nf = 1, pip.nt = 131073, pip.ifx = pip.ify = 1;
    EXPECT_EQ(refusal(pip), too_large);
    EXPECT_TRUE(pi_pack(pip, {}).too_large);
    pip.mode = PI_EXPORT;
    EXPECT_EQ(refusal(pip), "");
    pip = block(PI_INTERPOLATE);
    for (int factor : {0, -1, 1 << 30}) {
        pip.ifx = pip.ify = factor;
        EXPECT_EQ(refusal(pip), too_large) << factor;
    }
    for (int kscl : {1, 2, 3}) {
        pip = block(PI_PEAK_SCALING);
        pip.kscl = kscl;
        EXPECT_EQ(refusal(pip, 0.01F), "");
        for (float h : {0.0F, NAN}) EXPECT_EQ(refusal(pip, h), "Bad high clip value!");
    }
    const struct {
        float wct, dct;
        std::string text;
    } cuts[] = {{10, 0, "Sample spacing must be > 0."},
                {10, -1, "Sample spacing must be > 0."},
                {10, NAN, "Sample spacing must be > 0."},
                {8192.5F, 1, ""},
                {8193, 1, too_many},
                {NAN, 1, too_many}};
    for (const auto& c : cuts) {
        pip = block(PI_CUT);
        pip.wct = c.wct, pip.dct = c.dct;
        EXPECT_EQ(refusal(pip), c.text) << c.wct << ' ' << c.dct;
    }
    const std::int32_t lies[] = {9, 1, 19, 0};
    EXPECT_EQ(refusal(block(PI_RESTORE)), "ERROR restoring jary");
    EXPECT_EQ(refusal(block(PI_RESTORE), 1, lies), "ERROR restoring jary");
    EXPECT_EQ(refusal(block(PI_RESTORE), 1, std::span(lies).first(1)), "ERROR restoring jary");
}

// However a result is cut short or changed, taking it apart ends with a message or with what it says.
TEST(image_pack, a_damaged_result_is_noticed) {
    act(init_record(noise(2 * 16 * 16, 1), 16, 16));
    for (const record& r :
         {record(PI_CUT).f(10).f(0.5).f(0).f(0).f(0), record(PI_CENTER).f(1).f(1).f(9000).f(15).i(0),
          record(PI_STATUS), record(PI_EXPORT)}) {
        EXPECT_NE(act(r).what, pi_result::FAILED);
        std::vector<std::int32_t> words = result_words();
        while (words.back() == 0) words.pop_back();
        pi_result result;
        EXPECT_TRUE(
            pi_unpack(std::span(result_words()).first(words.size() + 1), result)); // a last word may be 0
        for (std::size_t n = 0; n < words.size(); n++) {
            EXPECT_FALSE(pi_unpack(std::span(words).first(n), result)) << n;
        }
        for (std::size_t at = 0; at < std::min<std::size_t>(words.size(), 40); at++) {
            for (int value : {-1, 1 << 30, -(1 << 30)}) {
                std::vector<std::int32_t> changed = words;
                changed[at] = value;
                pi_unpack(changed, result);
            }
        }
    }
}

} // namespace
} // namespace norva::test
