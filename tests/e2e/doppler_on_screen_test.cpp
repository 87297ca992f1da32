// The Doppler window on real widgets: parameters, corrections by mouse, zoom, the journal, paper.
#include "screen.h"

#include <algorithm>

namespace norva {
namespace {

constexpr double OFFSET = 14, RATE = 6; // Hz; Hz per second
constexpr double STEP = 0.01;           // s between records
constexpr int RECORDS = 120;

class doppler_on_screen : public test::screen {
protected:
    // One scatterer at range 0 whose Doppler frequency rises all the time.
    void SetUp() override {
        scene s;
        s.nf = 32;
        s.df = 1;
        s.nt = RECORDS;
        s.dt = STEP;
        s.points = {{.amplitude = 1, .doppler = OFFSET}};
        s.motion = [fc = scene_centre(s)](double t) { return -0.5 * RATE * t * t / fc; };
        ASSERT_EQ(write_scene(s, {}, "spin.pfx"), 1);
        start();
        type("NORVA: main", 0, "spin.pfx");
        ASSERT_TRUE(click("Doppler Prof"));
        ASSERT_EQ(dpwinon, 1);
    }

    static std::vector<float> shown() { return {user.dpdata.begin(), user.dpdata.end()}; }
};

TEST_F(doppler_on_screen, journal_by_corner_box_and_keys) {
    const QImage empty = look();
    const QPoint box = {5, 5};
    ASSERT_TRUE(click("INITIALIZE"));
    const QImage first = look();
    ASSERT_TRUE(click("Rmv Drift"));
    const QImage second = look();
    const std::vector<float> data(user.pfdata.begin(), user.pfdata.end()), profiles = shown();
    press(box, Qt::MiddleButton);
    EXPECT_EQ(user.count, 2);
    EXPECT_EQ(look(), first);
    press(box, Qt::LeftButton);
    EXPECT_EQ(look(), second);
    for (int i = 0; i < 2; i++) key(plot(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(user.count, 1);
    EXPECT_EQ(look(), empty);
    for (int i = 0; i < 2; i++) key(plot(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(look(), second);
    EXPECT_TRUE(shown() == profiles);
    EXPECT_TRUE(std::equal(data.begin(), data.end(), user.pfdata.begin()));
    // The keys are heard in the window's fields and in the plot controls too.
    click("Plot");
    int back = 3;
    for (const char* window : {"NORVA: Doppler profile", "NORVA: profile plotting"})
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->windowTitle() == window) {
                key(top->findChildren<QLineEdit*>().at(0), Qt::Key_Z, Qt::ControlModifier);
                EXPECT_EQ(user.count, --back) << window;
            }
    press(box, Qt::RightButton); // to the start: the main window
    EXPECT_EQ(user.count, 0);
    EXPECT_EQ(dpwinon, 0);
}

TEST_F(doppler_on_screen, saved_and_replayed_to_the_same_picture) {
    EXPECT_FALSE(click("Rmv Drift")); // grey before the profiles stand
    type("NORVA: Doppler profile", 0, "32");
    type("NORVA: Doppler profile", 2, "4");
    ASSERT_TRUE(click("INITIALIZE"));
    EXPECT_EQ(user.dp_ni, 32);
    EXPECT_EQ(user.dp_lag, 4);
    ASSERT_TRUE(click("Rmv Drift"));
    ASSERT_TRUE(click("Center"));
    dp_gate gate;
    ASSERT_TRUE(strongest_doppler_gate(gate));
    press(at(gate.doppler, 0.6), Qt::RightButton);
    EXPECT_EQ(user.mc.ptr, 1);
    press(at(gate.doppler, 0.6), Qt::LeftButton);
    EXPECT_EQ(user.mc.ptr, 2);
    ASSERT_TRUE(strongest_doppler_gate(gate));
    EXPECT_NEAR(gate.doppler, 0, dp.dd + 32.0 / plot()->width());
    const QImage picture = look();
    const std::vector<float> profiles = shown();
    click("DISMISS");
    click("SAVE");
    replay("spin.jou;1");
    for (const char* name : {"step_002", "step_003", "step_004"})
        EXPECT_EQ(test::read_all(std::string("out/") + name + ".pdf").substr(0, 5), "%PDF-") << name;
    // The opening of the window shows no profiles.
    EXPECT_NE(QImage("out/step_001.png"), QImage("out/step_002.png"));

    select_journal_file("spin.jou;1");
    filewin_cb(main_window().jfil, 2);
    user.count = 4;
    mng_jrnl(nullptr, 0);
    EXPECT_TRUE(shown() == profiles);
    EXPECT_EQ(look(), picture);
}

} // namespace
} // namespace norva
