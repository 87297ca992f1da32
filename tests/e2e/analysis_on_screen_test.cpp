// The main job on real widgets: a raw file, range profiles, corrections by mouse, the journal, paper.
#include "screen.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace norva {
namespace {

constexpr double FIRST_GATE = -8, DRIFT = 0.2; // gates; gates a record

class on_screen : public test::screen {
protected:
    void SetUp() override {
        scene s; // 64 frequencies
        s.nt = 60;
        s.points = {{.amplitude = 1, .delay = FIRST_GATE * scene_gate(s)}};
        s.motion = scene_motion(s, DRIFT, 0);
        ASSERT_EQ(write_scene(s, {}, "drift.pfx"), 1);
        start();
        type_into_first_field("drift.pfx");
        ASSERT_EQ(user.rdfile, "drift.pfx");
        ASSERT_TRUE(click("Range Prof"));
        ASSERT_EQ(rpwinon, 1);
    }

    // The raw file's field is the first of the main window.
    static void type_into_first_field(const std::string& text) { type("NORVA: main", 0, text); }

    static std::vector<float> copy(const jbuf<float>& block) { return {block.begin(), block.end()}; }

    // The scatterer stays within `slack` of `gate` in every record.
    static void expect_at(double gate, double slack) {
        for (int record = 0; record < user.nt; record++)
            ASSERT_NEAR(peak_gate(record, gate - 3, gate + 3), gate, slack) << "record " << record;
    }
};

TEST_F(on_screen, scatterer_stands_where_its_delay_says) {
    for (int record : {0, 30, 59}) {
        const double gate = FIRST_GATE + DRIFT * record;
        EXPECT_NEAR(peak_gate(record, gate - 3, gate + 3), gate, 0.02);
        // The profile shown peaks at the gate nearest to it.
        const float* row =
            user.rpdata.data() + static_cast<std::size_t>(record) * static_cast<std::size_t>(user.nr);
        const auto peak = std::max_element(row, row + user.nr) - row;
        EXPECT_NEAR(rp.r1 + static_cast<double>(peak) * rp.dr, gate, 0.5 * rp.dr + 0.01);
    }
}

TEST_F(on_screen, line_drawn_through_the_drift_removes_it) {
    ASSERT_TRUE(click("Rmv Line"));
    const QImage before = look();
    press(at(FIRST_GATE, 0), Qt::LeftButton);
    hover(at(2, 0.3));
    EXPECT_NE(look(), before); // the rubber line
    hover(at(-5, 0.5));
    const double last = FIRST_GATE + DRIFT * 59;
    press(at(last, 0.59), Qt::LeftButton);
    press(at(0, 0.3), Qt::RightButton);
    EXPECT_EQ(user.count, 2);
    EXPECT_EQ(user.mc.ptr, 1);
    expect_at(peak_gate(0, -12, 12), 0.1);
}

TEST_F(on_screen, drift_and_centre) {
    ASSERT_TRUE(click("Rmv Drift"));
    const double gate = peak_gate(0, -12, 12);
    expect_at(gate, 0.1);
    ASSERT_TRUE(click("Center"));
    press(at(gate, 0.3), Qt::LeftButton);
    // A press is as exact as a pixel.
    const double pixel = 64.0 / plot()->width();
    EXPECT_NEAR(peak_gate(0, -3, 3), 0, pixel + 0.02);
}

TEST_F(on_screen, saved_and_replayed_to_the_same_picture) {
    click("Rmv Drift");
    ASSERT_TRUE(click("Center"));
    press(at(-8, 0.3), Qt::LeftButton);
    const std::vector<float> shown = copy(user.rpdata);
    const QImage picture = look();
    click("DISMISS");
    click("SAVE");

    replay("drift.jou;1");
    EXPECT_FALSE(std::filesystem::exists("drift.jou;2"));
    EXPECT_FALSE(std::filesystem::exists("norva.mc.sav"));
    const std::string summary = test::read_all("out/summary.txt");
    EXPECT_NE(summary.find("Center Profiles (Mocomp)"), std::string::npos) << summary;
    for (const char* name : {"step_001", "step_002", "step_003"}) {
        EXPECT_FALSE(QImage(QString("out/") + name + ".png").isNull()) << name;
        EXPECT_EQ(test::read_all(std::string("out/") + name + ".pdf").substr(0, 5), "%PDF-");
    }
    EXPECT_FALSE(std::filesystem::exists("out/step_004.png")); // back in the main window

    type_into_first_field("drift.pfx");
    select_journal_file("drift.jou;1");
    filewin_cb(main_window().jfil, 2);
    user.count = 3;
    mng_jrnl(nullptr, 0);
    EXPECT_TRUE(copy(user.rpdata) == shown);
    EXPECT_EQ(look(), picture);
}

TEST(program, words_that_need_no_display) {
    const auto run = [](const std::string& words) {
        return std::system(
                   ("env -u DISPLAY -u QT_QPA_PLATFORM " NORVA_PROGRAM " " + words + " >/dev/null 2>&1")
                       .c_str()) /
               256;
    };
    EXPECT_EQ(run("--help"), 0);
    EXPECT_EQ(run("--version"), 0);
    EXPECT_EQ(run("--nonsense"), 2);
    EXPECT_EQ(run("--replay /nonexistent.jou --out /nonexistent/out"), 1);
}

} // namespace
} // namespace norva
