// Images on real widgets: boxes, crosshair, centering and scaling by mouse, an analysis saved and replayed to
// the same pictures, and the replay without a display.
#include "screen.h"

#include "journal/listing.h"
#include "journal/store.h"
#include "state/defaults.h"

#include <QAction>
#include <QMenu>

#include <filesystem>
#include <map>

namespace norva {
namespace {

class image_on_screen : public test::screen {
protected:
    void SetUp() override {
        scene s;
        const double dwell = s.nt * s.dt, middle = 0.5 * (s.nt - 1) * s.dt;
        for (auto [crossrange, range, amplitude] :
             {std::array{10.0, 5.0, 1.0}, {-14.0, 12.0, 0.6}, {3.0, -17.0, 0.4}}) {
            const double doppler = crossrange / dwell;
            s.points.push_back({.amplitude = amplitude,
                                .delay = range * scene_gate(s) + doppler / scene_centre(s) * middle,
                                .doppler = doppler});
        }
        ASSERT_EQ(write_scene(s, {}, "raw.pfx"), 1);
        start();
        type("NORVA: main", 0, "raw.pfx");
        ASSERT_TRUE(click("Image"));
        ASSERT_EQ(imgwinon, 1);
    }

    void left(double x, double y) { press(at(x, y), Qt::LeftButton); }
    void middle(double x, double y) { press(at(x, y), Qt::MiddleButton); }
    void right(double x, double y) { press(at(x, y), Qt::RightButton); }
    void step(Qt::MouseButton which) { press({5, 5}, which); }

    // Opens the pulldown and chooses by keys.
    static void choose_style(int n) {
        click("Image type");
        for (QWidget* top : QApplication::topLevelWidgets()) {
            auto* menu = qobject_cast<QMenu*>(top);
            if (!menu || !menu->isVisible()) continue;
            menu->setActiveAction(menu->actions().at(n));
            key(menu, Qt::Key_Return);
        }
    }

    int number() const { return 100 * (user.count + (jary ? 0 : 1)) + ximag_count(); }
    void remember() { seen_[number()] = look(); }
    void expect_as_seen() {
        ASSERT_EQ(imgwinon, 1);
        ASSERT_TRUE(seen_.contains(number())) << number();
        EXPECT_EQ(look(), seen_[number()]) << number();
    }

    std::map<int, QImage> seen_;
};

TEST_F(image_on_screen, overlays_leave_the_picture_as_it_was) {
    for (int style : {0, 1, 2}) {
        choose_style(style);
        ASSERT_EQ(xi.pip.imgtype, style);
        const QImage before = look();
        for (const char* mode : {"Edit Image", "Zoom"}) {
            ASSERT_TRUE(click(mode));
            left(-20, -20);
            for (int i = 0; i < 25; i++) hover(at(-20 + i, -20 + 1.3 * i));
            EXPECT_NE(look(), before) << mode << style;
            middle(0, 0);
            EXPECT_EQ(look(), before) << mode << style;
        }
        for (const char* mode : {"Peak Parameters", "Center Image"}) {
            ASSERT_TRUE(click(mode));
            for (int i = 0; i < 42; i++) hover(at(-31 + 1.5 * i, 30 - 1.5 * i));
            EXPECT_NE(look(), before) << mode << style;
            ASSERT_TRUE(click("Zoom"));
            EXPECT_EQ(look(), before) << mode << style;
        }
    }
}

TEST_F(image_on_screen, saved_and_replayed_to_the_same_pictures) {
    remember();
    ASSERT_TRUE(click("Flop (h)"));
    remember();
    ASSERT_TRUE(click("Edit Image"));
    left(25, -25);
    left(-25, 25);
    left(0, 0);
    remember();
    ASSERT_TRUE(click("Plot Scaling"));
    type("NORVA: image: peak scaling", 3, "0.4");
    type("NORVA: image: peak scaling", 4, "0.3");
    ASSERT_TRUE(click("APPLY"));
    remember();
    type("NORVA: image", 4, "4");
    ASSERT_TRUE(click("Interpolate"));
    remember();
    ASSERT_TRUE(click("Peak Parameters"));
    right(-10, 5);
    remember();
    ASSERT_TRUE(click("Flop (v)"));
    remember();
    ASSERT_TRUE(click("Flop (h)"));
    remember();
    ASSERT_TRUE(click("Flop (v)"));
    remember();
    ASSERT_TRUE(click("Center Image"));
    right(10, 5);
    ASSERT_TRUE(click("Image"));
    remember();
    ASSERT_TRUE(click("Edit Image"));
    left(-30, -25);
    left(12, 20);
    right(0, 0);
    remember();
    const QSize size = plot()->size();
    ASSERT_TRUE(click("DISMISS"));
    ASSERT_EQ(user.count, 4);
    ASSERT_TRUE(click("SAVE"));

    replay("raw.jou;1");
    for (const char* name : {"step_001", "step_001_01", "step_001_08", "step_003", "step_003_01"}) {
        EXPECT_FALSE(QImage(QString("out/") + name + ".png").isNull()) << name;
        EXPECT_EQ(test::read_all(std::string("out/") + name + ".pdf").substr(0, 5), "%PDF-") << name;
    }
    EXPECT_FALSE(std::filesystem::exists("out/step_002.png"));
    EXPECT_NE(test::read_all("out/summary.txt").find("Change Peak Scaling"), std::string::npos);

    start(); // a new run
    def.pi_npmx = 5;
    select_journal_file("raw.jou;1");
    filewin_cb(main_window().jfil, 2);
    turn();
    ASSERT_EQ(user.count, 4);
    std::vector<std::int32_t> list;
    journal(std::vector<std::int32_t>{JOURNAL_LIST, 1000000}, list);
    const journal_listing listing = list_journal(list);
    EXPECT_TRUE(listing.messages.empty());
    std::size_t found = 0;
    for (const char* text :
         {"Flop Image", "Edit", "Change Peak Scaling", "Interpolate", "Peak Parameters", "Center",
          "Dismiss Image Window (to main window)", "Edit", "Dismiss Image Window (to main window)"}) {
        found = listing.text.find(text, found + 1);
        ASSERT_NE(found, std::string::npos) << text << "\n" << listing.text;
    }
    for (int position : {1, 3}) {
        user.count = position;
        mng_jrnl(nullptr, 0);
        turn();
        ASSERT_EQ(plot()->size(), size);
        expect_as_seen();
        const int last = position == 1 ? 8 : 1;
        for (int i = 1; i <= last; i++) {
            step(Qt::LeftButton);
            expect_as_seen();
        }
        for (int i = last; i > 0; i--) {
            i % 2 ? step(Qt::MiddleButton) : key(plot(), Qt::Key_Z, Qt::ControlModifier);
            expect_as_seen();
        }
        key(plot(), Qt::Key_Y, Qt::ControlModifier);
        expect_as_seen();
        for (int i = 0; imgwinon && i < 10; i++) step(Qt::LeftButton);
        EXPECT_EQ(imgwinon, 0); // its end: the journal has gone on
        EXPECT_EQ(user.count, position + 1);
    }
}

} // namespace
} // namespace norva
