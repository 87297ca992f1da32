// The image's steps in its own stored actions and in the journal: every position shows the picture it showed
// when it was made.
#include "image_fixture.h"

#include "mocomp/polar_keywords.h"
#include "mocomp/polar_window.h"
#include "state/write_out.h"

#include <map>
#include <random>

namespace norva {
namespace {

class steps : public test::image_test {
protected:
    // The picture of the present step, under the number in the control box.
    void remember() { seen_[number()] = digest(); }
    int number() const { return 100 * (user.count + (jary ? 0 : 1)) + xi.pip.count; }
    void expect_as_seen() {
        ASSERT_EQ(imgwinon, 1);
        ASSERT_TRUE(seen_.contains(number())) << number() << " " << user.count << " " << jary.allocated();
        EXPECT_EQ(digest(), seen_.at(number())) << number();
    }

    void scale_peaks(const std::string& peaks, const std::string& high, const std::string& diam) {
        ASSERT_TRUE(click("Plot Scaling"));
        set_field("# of peaks:", peaks);
        set_field("High amplitude threshold:", high);
        set_field("Diam highest peak:", diam);
        step_field("Scaling of dot:", true);
        ASSERT_TRUE(click("APPLY"));
    }

    std::map<int, std::size_t> seen_;
};

TEST_F(steps, a_new_step_drops_those_ahead) {
    open_three();
    for (const char* button : {"Flop (h)", "Flop (v)", "Flop (h)"}) {
        ASSERT_TRUE(click(button));
        remember();
    }
    press_control_box(RIGHT_BUTTON);
    EXPECT_EQ(xi.pip.count, 0);
    rec->shortcut(top(), 'Y');
    rec->run_pending();
    EXPECT_EQ(xi.pip.count, 1);
    expect_as_seen();
    ASSERT_TRUE(click("Flop (h)"));
    press_control_box(LEFT_BUTTON);
    EXPECT_EQ(messages, std::vector<std::string>{"***Error 116...Cannot advance any further"});
    rec->shortcut(top(), 'Z');
    rec->run_pending();
    expect_as_seen();
}

TEST_F(steps, leaving_backwards_keeps_the_steps_and_goes_before_the_image) {
    open_three();
    ASSERT_TRUE(click("Flop (h)"));
    ASSERT_TRUE(click("Flop (v)"));
    remember();
    seen_[201] = seen_[102];
    for (int i = 0; i < 3; i++) press_control_box(MIDDLE_BUTTON);
    EXPECT_EQ(imgwinon, 0);
    EXPECT_EQ(user.count, 0);
    EXPECT_EQ(eoj, 2);
    EXPECT_FALSE(jary);
    mng_jrnl(nullptr, 1);
    rec->run_pending();
    ASSERT_EQ(imgwinon, 1);
    EXPECT_EQ(xi.pip.count, 0);
    press_control_box(LEFT_BUTTON);
    press_control_box(LEFT_BUTTON);
    expect_as_seen();
    // Out again, with nothing changed: the journal stays as it is.
    for (int i = 0; i < 3; i++) press_control_box(MIDDLE_BUTTON);
    EXPECT_EQ(user.count, 0);
    EXPECT_EQ(eoj, 2);
    // Changed and dismissed: the new steps take the place of the old.
    mng_jrnl(nullptr, 1);
    rec->run_pending();
    ASSERT_TRUE(click("Flop (v)"));
    remember();
    ASSERT_TRUE(click("DISMISS"));
    EXPECT_EQ(journal_tags(), (std::vector<int>{0, 28, 27}));
    go_to(1);
    press_control_box(LEFT_BUTTON);
    expect_as_seen();
    EXPECT_TRUE(messages.empty()) << messages[0];
}

// A polar formatted image is formed so again, although nothing asks for polar formatting by then.
TEST_F(steps, polar_image_replayed_as_it_was) {
    scene s = make_scene({});
    s.table = {.da = 0.0005, .de = 0, .rc = 200};
    s.points = {{.amplitude = 1, .x = 4, .y = 3}, {.amplitude = 0.7, .x = -5, .y = -6}};
    load(s);
    ASSERT_TRUE(click("Polar Format"));
    *get_pkw() = {.eflag = 1, .dtyp = 0, .xex = 15, .yex = 15, .rc = 200, .da = 0.0005f, .de = 0};
    pkw_putvals();
    plr_kw_cb(nullptr, 1);
    rec->run_pending();
    ASSERT_EQ(imgwinon, 1);
    EXPECT_EQ(ximag_action(), "Polar Format Initialization");
    remember();
    ASSERT_TRUE(click("Flop (h)"));
    remember();
    press_control_box(MIDDLE_BUTTON);
    expect_as_seen();
    press_control_box(LEFT_BUTTON);
    ASSERT_TRUE(click("DISMISS"));
    EXPECT_EQ(plr_kw_stat(), 0);
    ASSERT_TRUE(click("Image"));
    remember();
    ASSERT_TRUE(click("DISMISS"));
    click("SAVE");
    start();
    rec->rasters = true;
    reset_kws();
    open_journal("raw.jou;1");
    for (int position : {1, 3}) {
        go_to(position);
        expect_as_seen();
        EXPECT_EQ(ximag_action() == "Polar Format Initialization", position == 1);
        press_control_box(LEFT_BUTTON);
        if (imgwinon) expect_as_seen();
    }
    EXPECT_TRUE(messages.empty()) << messages[0];
}

// A stored centering is passed, gone back over and passed again: the corrections of the journal stay as they
// are, and those of later steps too.
TEST_F(steps, stored_centering_counts_once) {
    open_three();
    ASSERT_TRUE(click("Center Image"));
    press(10, 5, RIGHT_BUTTON);
    const std::vector<float> once = samples();
    ASSERT_TRUE(click("Range Prof"));
    ASSERT_TRUE(click("Rmv Drift"));
    const std::vector<float> twice = samples();
    ASSERT_TRUE(click("DISMISS"));
    const int end = eoj;
    ASSERT_EQ(user.mc.nrecs, 2);
    go_to(1);
    for (int i = 0; i < 3; i++) {
        press_control_box(LEFT_BUTTON);
        EXPECT_EQ(user.mc.ptr, 1);
        press_control_box(MIDDLE_BUTTON);
        EXPECT_EQ(user.mc.ptr, 0);
    }
    press_control_box(LEFT_BUTTON);
    press_control_box(LEFT_BUTTON);
    EXPECT_EQ(imgwinon, 0);
    EXPECT_EQ(user.count, 2);
    EXPECT_TRUE(samples() == once);
    EXPECT_EQ(user.mc.nrecs, 2);
    go_to(end);
    EXPECT_TRUE(samples() == twice);
    // Dismissed where the centering is passed: it holds, and what came after it is gone.
    go_to(1);
    press_control_box(LEFT_BUTTON);
    ASSERT_TRUE(click("DISMISS"));
    EXPECT_EQ(journal_tags(), (std::vector<int>{0, 28, 27}));
    EXPECT_EQ(user.mc.ptr, 1);
    EXPECT_TRUE(samples() == once);
    EXPECT_TRUE(messages.empty()) << messages[0];
}

// A journal with no room for the two records of an image takes neither, and the data are those of its last
// step.
TEST_F(steps, full_journal) {
    open_three();
    ASSERT_TRUE(click("DISMISS"));
    while (journal_next_index() < JOURNAL_MAX_INDEX - 1) jrnl(1);
    const std::vector<float> before = samples();
    const int count = user.count;
    ASSERT_TRUE(click("Image"));
    ASSERT_TRUE(click("Center Image"));
    press(10, 5, RIGHT_BUTTON);
    EXPECT_EQ(messages, std::vector<std::string>{"***Error in JOURNAL...INDX dimension exceeded"});
    EXPECT_EQ(imgwinon, 0);
    EXPECT_EQ(user.count, count);
    EXPECT_EQ(user.mc.ptr, 0);
    EXPECT_TRUE(samples() == before);
    EXPECT_FALSE(jary);
}

TEST_F(steps, edited_data_are_handed_over_and_the_step_passed) {
    open_three();
    ASSERT_TRUE(click("Edit Image"));
    press(-20, -25);
    press(22, 25);
    press(0, 0, RIGHT_BUTTON);
    reduced = {};
    write_hooks.image_hands_over();
    rec->run_pending();
    remember();
    EXPECT_EQ(xi.pip.count, 2);
    EXPECT_TRUE(reduced.samples);
    EXPECT_GE(reduced.nt, xi.pip.nx);
    ASSERT_TRUE(click("Flop (h)"));
    reduced = {};
    press_control_box(MIDDLE_BUTTON); // onto the step that made no picture of its own
    EXPECT_EQ(xi.pip.count, 2);
    EXPECT_FALSE(reduced.samples); // only the request itself hands over
    expect_as_seen();
    ASSERT_TRUE(click("DISMISS"));
    EXPECT_TRUE(messages.empty()) << messages[0];
}

// Whatever is done, gone back over and stored: each step shows what it showed when it was made.
TEST_F(steps, random_analyses) {
    for (unsigned seed = 1; seed <= 4; seed++) {
        std::mt19937 random(seed);
        const auto pick = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        const auto place = [&pick] { return pick(60) - 30.0; };
        seen_.clear();
        open_three();
        remember();
        // A step of the image was asked for: a new one drops those ahead, and a refused one changes nothing.
        const auto made = [this](int before) {
            if (!imgwinon || number() == before) return;
            seen_.erase(seen_.lower_bound(number()), seen_.end());
            remember();
        };
        for (int i = 0; i < 60; i++) {
            if (!imgwinon) {
                const int choice = pick(3);
                if (choice == 0 && user.count > 0) mng_jrnl(nullptr, 2);
                if (choice == 1 && user.count < eoj) mng_jrnl(nullptr, 1);
                rec->run_pending();
                if (!imgwinon && choice == 2) {
                    ASSERT_TRUE(click("Image"));
                    seen_.erase(seen_.lower_bound(number()), seen_.end());
                    remember();
                } else if (imgwinon) {
                    expect_as_seen();
                }
                continue;
            }
            const int before = number();
            switch (pick(12)) {
            case 0: click("Flop (h)"); break;
            case 1: click("Flop (v)"); break;
            case 2:
                step_field("Factor in C/r:", pick(2) == 0);
                click("Interpolate");
                break;
            case 3:
                click("Edit Image");
                press(place(), place());
                press(place(), place());
                press(place(), place());
                if (number() == before) press(0, 0, MIDDLE_BUTTON);
                break;
            case 4:
                scale_peaks(std::to_string(1 + pick(100)), std::to_string(0.1 * (2 + pick(8))),
                            std::to_string(0.05 * (1 + pick(9))));
                break;
            case 5:
                click("Peak Parameters");
                press(place(), place(), RIGHT_BUTTON);
                break;
            case 6: write_hooks.image_hands_over(); break;
            case 7:
                if (pick(3) == 0) {
                    click("Center Image");
                    press(place(), place(), RIGHT_BUTTON);
                }
                break;
            case 8:
                if (pick(4) == 0) click("DISMISS");
                break;
            default:
                press_control_box(pick(3));
                if (imgwinon && number() != before && seen_.contains(number())) expect_as_seen();
                continue;
            }
            rec->run_pending();
            if (!imgwinon) // closed and stored: what was ahead is gone
                seen_.erase(seen_.upper_bound(before), seen_.end());
            made(before);
        }
        if (HasFailure()) FAIL() << "seed " << seed;
        if (imgwinon) click("DISMISS");
        while (rec->visible(top()) && click("DISMISS")) {
        }
        click("SAVE");
    }
}

// Journals whose image arrays are damaged: a message and no picture, or the image without steps; never more.
TEST_F(steps, damaged_arrays) {
    open_three();
    ASSERT_TRUE(click("Flop (h)"));
    scale_peaks("40", "0.5", "0.2");
    ASSERT_TRUE(click("Edit Image"));
    press(-20, -25);
    press(22, 25);
    press(0, 0, RIGHT_BUTTON);
    ASSERT_TRUE(click("DISMISS"));
    click("SAVE");
    const std::string good = test::read_all("raw.jou;1");
    int opened = 0;
    const char* const words[] = {"\xff\xff\xff\xff", "\xff\xff\xff\x7f", "\x07\0\0\0", "\0\0\xc0\x7f"};
    for (std::size_t at = 260; at + 4 < good.size(); at += 4) {
        std::string bad = good;
        bad.replace(at, 4, words[at / 4 % 4], 4);
        test::write_all("bad.jou", bad);
        start();
        open_journal("bad.jou");
        if (eoj < 1 || user.rdfile.empty()) continue;
        go_to(1);
        for (int i = 0; imgwinon && i < 8; i++) {
            opened++;
            press_control_box(LEFT_BUTTON);
        }
        if (imgwinon) {
            choose_style("Contours");
            press_control_box(MIDDLE_BUTTON);
            ximag_leave();
        }
        jrnl(95);
    }
    EXPECT_GT(opened, 20);
}

} // namespace
} // namespace norva
