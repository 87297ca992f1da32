// A picture of each window, as a user meets it. With NORVA_PICTURES set to a folder they are written there
// (the ones in doc/pictures are made so); a window that comes out empty or does not come up fails.
#include "screen.h"

#include <QSet>

#include <cstdlib>

namespace norva {
namespace {

const std::filesystem::path start_folder =
    std::filesystem::current_path(); // each test has a folder of its own

class pictures : public test::screen {
protected:
    void SetUp() override {
        scene s;
        s.nf = 128;
        s.nt = 200;
        s.points = {{.amplitude = 1, .delay = -20 * scene_gate(s)},
                    {.amplitude = 0.6, .delay = 4 * scene_gate(s)},
                    {.amplitude = 0.4, .delay = 17 * scene_gate(s)}};
        s.motion = scene_motion(s, 0.1, 0);
        s.noise = 0.3;
        ASSERT_EQ(write_scene(s, {}, "drift.pfx"), 1);
        scene_file lacking;
        lacking.omit = {"WFRI", "STEP_FREQ"};
        ASSERT_EQ(write_scene(s, lacking, "lacking.pfx"), 1);
        // An outline on a turntable.
        scene table;
        table.nt = 128;
        table.table = {.da = 4 * std::numbers::pi / 180 / 127, .de = 0, .rc = 0};
        const double gate = scene_light / 2 / scene_bandwidth(table);
        const double cross = scene_light / scene_centre(table) / 2 / (128 * table.table.da);
        for (auto [x, y, amplitude] : {std::array{0.0, -17.0, 1.0},
                                       {0, -8.5, 0.6},
                                       {0, 0, 0.8},
                                       {0, 8.5, 0.6},
                                       {0, 17, 0.9},
                                       {-30, 3, 0.7},
                                       {30, 3, 0.7},
                                       {-13, 17, 0.4},
                                       {15, -2, 1.0}})
            table.points.push_back({.amplitude = amplitude, .x = x * cross, .y = y * gate});
        table.noise = 0.05;
        ASSERT_EQ(write_scene(table, {}, "outline.pfx"), 1);
        test::write_all("pattern.cdf",
                        "@D\nNUMBER OF FREQUENCY STEPS = 2\nPOLARIZATION = HH VV\n"
                        "BASE FREQUENCY = 9000\nDELTA FREQUENCY = 4\nSTART SCAN = 0\nSTOP SCAN = 1\n"
                        "DELTA SCAN = 1\n@E\n0 0 0 0 0 0 0 0\n0 0 0 0 0 0 0 0\n");
        const char* folder = std::getenv("NORVA_PICTURES");
        folder_ = folder ? start_folder / folder : dir.path();
        start();
    }

    void open(const std::string& name) {
        select_raw_file(name);
        filewin_cb(main_window().rdfil, 1);
        turn();
    }

    void take(const std::string& title, const std::string& name) {
        turn();
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!top->isVisible() || top->windowTitle().toStdString() != title) continue;
            const QImage image = top->grab().toImage();
            QSet<QRgb> colours;
            for (int y = 0; y < image.height(); y += 3)
                for (int x = 0; x < image.width(); x += 3) colours.insert(image.pixel(x, y));
            EXPECT_GT(colours.size(), 4) << title;
            EXPECT_TRUE(image.save(QString::fromStdString((folder_ / (name + ".png")).string())));
            return;
        }
        ADD_FAILURE() << "no window " << title;
    }

private:
    std::filesystem::path folder_;
};

TEST_F(pictures, of_every_window) {
    open("drift.pfx");
    take("NORVA: main", "main");
    ASSERT_TRUE(click("Range Prof"));
    take("NORVA: range profile", "range_profile");
    click("Rmv Line");
    press(at(-20, 0), Qt::LeftButton);
    hover(at(0, 1.9));
    take("NORVA: range profile", "range_line");
    press(at(0, 1), Qt::RightButton);
    click("Plot");
    take("NORVA: profile plotting", "profile_plotting");
    click("Rmv Ambs");
    take("Remove Doppler Ambs", "remove_ambs");
    click("Cancel");
    click("Rmv Drift");
    take("NORVA: range profile", "range_drift_removed");
    click("Center");
    press(at(-20, 1), Qt::LeftButton);
    click("DISMISS");
    while (rpwinon && click("DISMISS")) {
    }
    click("See Journal Info");
    take("NORVA: main", "journal_listing");
    ASSERT_TRUE(click("Doppler Prof"));
    ASSERT_TRUE(click("INITIALIZE"));
    take("NORVA: Doppler profile", "doppler_profile");
    while (dpwinon && click("DISMISS")) {
    }
    open("outline.pfx");
    ASSERT_TRUE(click("Image"));
    take("NORVA: image", "image_peaks");
    click("Plot Scaling");
    take("NORVA: image: peak scaling", "peak_scaling");
    style_cb(nullptr, 1);
    click("Plot Scaling");
    type("NORVA: image: contour scaling", 2, "2");
    take("NORVA: image: contour scaling", "contour_scaling");
    take("NORVA: image", "image_contours");
    style_cb(nullptr, 2);
    click("Plot Scaling");
    click("Scale in dB");
    type("NORVA: image: color intensity", 0, "-35");
    take("NORVA: image: color intensity", "color_intensity");
    click("Center Image");
    hover(at(15, -2));
    take("NORVA: image", "image_color");
    click("Zoom");
    press(at(-8, -24), Qt::LeftButton);
    hover(at(36, 12));
    take("NORVA: image", "image_zoom_box");
    press(at(0, 0), Qt::MiddleButton);
    ximag_bttn(ximag_window(), PI_EXPORT);
    turn();
    click("Polar Format");
    take("NORVA: polar format", "polar_format");
    click("Cancel");
    click("User Defaults");
    take("NORVA: defaults", "user_defaults");
    while (click("DISMISS")) {
    }
    click("QUIT");
    take("NORVA: quit", "quit");
    click("Cancel");
    app_hooks.popmsg(
        "The first frequency sample must be within the current frequency interval.  To specify a first "
        "frequency outside the current interval,backup in the journal and specify a new interval.");
    app_hooks.popmsg("A second message in the same handler shows below the first, behind an empty line.");
    take("Message", "message");
    click("ACKNOWLEDGE");
    open("lacking.pfx");
    take("NORVA: manual kw input", "keyword_window");
    click("CANCEL");
    open("pattern.cdf");
    take("NORVA: polarization", "polarization");
    click("Done");
    click("WRITE");
    take("NORVA: write output data file", "write");
    click("Cancel");
    app_hooks.computing(true);
    app_hooks.rpt_progress(1, 100);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
    while (std::chrono::steady_clock::now() < end) app_hooks.rpt_progress(60, 100);
    take("Processing...", "progress");
    app_hooks.computing(false);
}

} // namespace
} // namespace norva
