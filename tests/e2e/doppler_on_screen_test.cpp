// The Doppler window on real widgets: parameters, corrections by mouse, zoom, the journal, paper.
#include "screen.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

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

    // Doppler (gates of a window of ni records, first of them `from`) of the strongest return: the largest of
    // a direct sum on a fine grid, at the centre frequency.
    static double direct_peak(int from, int ni) {
        double best = 0, most = -1;
        for (double x = -0.5 * ni; x < 0.5 * ni; x += 0.02) {
            std::complex<double> sum = 0;
            for (int j = 0; j < ni; j++) {
                const double h = 0.54 - 0.46 * std::cos(2 * std::numbers::pi * (j + 0.5) / ni);
                std::complex<double> at_range_zero = 0;
                for (int k = 0; k < user.nf; k++) {
                    const std::size_t i = 2 * (static_cast<std::size_t>(from + j) * user.nf + k);
                    at_range_zero += std::complex<double>(user.pfdata[i], user.pfdata[i + 1]);
                }
                sum += h * at_range_zero * std::polar(1.0, user.ksx * 2 * std::numbers::pi * j * x / ni);
            }
            if (std::abs(sum) > most) {
                most = std::abs(sum);
                best = x;
            }
        }
        return best;
    }
    static std::vector<float> shown() { return {user.dpdata.begin(), user.dpdata.end()}; }
    // A parameter field; all three have arrows beside them.
    static void parameter(int i, const std::string& text) { type("NORVA: Doppler profile", i, text); }
};

TEST_F(doppler_on_screen, offset_and_rate_are_brought_to_rest_by_mouse) {
    EXPECT_FALSE(click("Rmv Drift")); // grey before the profiles stand
    EXPECT_FALSE(click("Center"));
    parameter(0, "32");
    parameter(2, "4");
    ASSERT_TRUE(click("INITIALIZE"));
    EXPECT_EQ(user.dp_ni, 32);
    EXPECT_EQ(user.dp_lag, 4);
    ASSERT_EQ(user.dp_nc, (RECORDS + 4 - 2) / 4);
    // The window of a row in the middle is full; its Doppler is that of its middle.
    const int row = user.dp_nc / 2, wdw = 32;
    const double time = user.dp_t0 + row * 4 * STEP;
    const float* profile = &user.dpdata[static_cast<std::size_t>(row) * dp.nf];
    const double peak =
        dp.d1 + dp.dd * static_cast<double>(std::max_element(profile, profile + dp.nf) - profile);
    EXPECT_NEAR(peak, -user.ksx * (OFFSET + RATE * time) * STEP * wdw, 0.5 * dp.dd + 0.02);

    ASSERT_TRUE(click("Rmv Drift"));
    EXPECT_EQ(user.mc.ptr, 1);
    const double early = direct_peak(0, wdw), late = direct_peak(RECORDS - wdw, wdw);
    EXPECT_NEAR(early, late, 0.01 * (RECORDS - wdw) / 4);

    const QImage before = look();
    press(at(early, 0.6), Qt::LeftButton); // no mode yet
    EXPECT_EQ(user.mc.ptr, 1);
    ASSERT_TRUE(click("Center"));
    press(at(early, 0.6), Qt::RightButton);
    EXPECT_EQ(user.mc.ptr, 1);
    press(at(early, 0.6), Qt::LeftButton);
    EXPECT_EQ(user.mc.ptr, 2);
    EXPECT_NE(look(), before);
    EXPECT_NEAR(direct_peak(40, wdw), 0, 0.1);
}

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
    ASSERT_TRUE(click("INITIALIZE"));
    ASSERT_TRUE(click("Rmv Drift"));
    ASSERT_TRUE(click("Center"));
    press(at(direct_peak(40, 16), 0.6), Qt::LeftButton);
    const QImage picture = look();
    const std::vector<float> profiles = shown();
    click("DISMISS");
    click("SAVE");
    const std::string command =
        std::string(NORVA_PROGRAM) + " --replay 'spin.jou;1' --out out >replay.txt 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << test::read_all("replay.txt");
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
