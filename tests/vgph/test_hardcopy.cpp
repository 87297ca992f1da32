// Hardcopy on the recording port's page.
#include "draw_area_test.h"

#include "support/temp_dir.h"
#include "vgph/vgsym.h"
#include "vgph/winplot.h"

#include <cstdlib>

using namespace norva;
using namespace norva::test;

namespace {

class vg_hardcopy_test : public draw_area_test {
protected:
    void SetUp() override {
        draw_area_test::SetUp();
        for (const char* name :
             {"QELMHCTYPE", "QELMHCQUEUE", "QELMHCPATH", "QELMHCPRINT", "QELMHCDELETE", "QELMHCUSER"})
            ::unsetenv(name);
        vg_hc_presets() = {};
    }
    const record_page& page() { return rec.pages.at(0); }
    std::vector<record_call> on_page(const std::string& op) { return calls(op, port_page); }
    std::string said() {
        std::string all;
        for (const record_dialog& d : rec.dialogs) all += d.title + ' ' + d.text + '\n';
        return all;
    }
};

TEST_F(vg_hardcopy_test, PointsGoToTheirPlaceOnThePaper) {
    const struct {
        port_size paper;
        int invxy;
        port_point origin, x_end, y_end; // of 0, 0; of 4 inches along x; of 2 inches along y
    } cases[] = {
        // Offsets 1 and 0.5, scale 2 and 1: x goes to 1 and 9 inches, y to 0.5 and 2.5.
        {{1100, 850}, 1, {100, 799}, {900, 799}, {100, 599}},
        {{850, 1100}, 0, {100, 1049}, {900, 1049}, {100, 849}},
        {{850, 1100}, 1, {799, 999}, {799, 199}, {599, 999}}, // the picture is turned on the paper
        {{1100, 850}, 0, {1049, 749}, {1049, -51}, {849, 749}},
        {{1654, 2339}, 0, {195, 2241}, {1751, 2241}, {195, 1852}}, // A4: the short side counts as 8.5 inches
    };
    for (const auto& c : cases) {
        rec.caps.paper = c.paper;
        auto hc = vg_hc_init("p", 0, 2, 1, 1, 0.5f, c.invxy);
        ASSERT_NE(hc->context, 0);
        EXPECT_EQ(vg_mover(*hc, 0, 0), c.origin);
        EXPECT_EQ(vg_mover(*hc, 4, 0), c.x_end);
        EXPECT_EQ(vg_mover(*hc, 0, 2), c.y_end);
        EXPECT_EQ(rec.pages.back().job.landscape, c.invxy != 0);
        vg_hc_done(*hc);
    }
}

TEST_F(vg_hardcopy_test, DrawsWhatADisplayDraws) {
    auto d = display(1100, 850, 11, 8.5f); // its scale is that of the paper below
    vg_set_overcolor(0, 1, 1);
    rec.caps.paper = {1100, 850};
    vgframe_ptr frame = vg_new_frame();
    vg_add_object(*frame, line({{1, 1}, {4, 2}, {3, 5}}, 2));
    vg_add_object(*frame, line({{0, 0}, {1, 1}}, 3))->visible = 0;
    vgobject_ptr shapes = vg_symbol(2, 2, 0.2f, 0, "Ab");
    vg_attr_object(*shapes, 2, 4, 3);
    vg_circle_clip(*shapes, 0.5f, 5, 5, 4.8f, 4, 6, 6);
    vg_add_object(*frame, std::move(shapes));
    vg_add_object(*frame, line({{0, 1}, {2, 1}}, vg_overlay_color));
    vg_render_frame(*d, frame.get());

    auto hc = vg_hc_init("p", 0, 1, 1, 0, 0, 1);
    vg_hc_frame(*hc, frame.get());
    vg_hc_done(*hc);
    EXPECT_TRUE(page().ended);
    const auto shown = calls("polyline_to", area), printed = on_page("polyline_to");
    ASSERT_EQ(shown.size(), printed.size());
    for (std::size_t i = 0; i < shown.size(); i++) {
        ASSERT_EQ(shown[i].points.size(), printed[i].points.size());
        for (std::size_t k = 0; k < shown[i].points.size(); k++) { // rounded here, truncated there
            EXPECT_NEAR(shown[i].points[k].x, printed[i].points[k].x, 1);
            EXPECT_NEAR(shown[i].points[k].y, printed[i].points[k].y, 1);
        }
    }
    const auto pens = on_page("pen");
    ASSERT_EQ(pens.size(), 3u) << "a pen for each change, none for what is not visible";
    EXPECT_EQ(pens[0].rgb, 0x0000ffu);
    EXPECT_EQ(pens[1].style, 4);
    EXPECT_EQ(pens[1].width, 2);
    EXPECT_EQ(pens[2].rgb, 0xffff00u) << "the overlay prints in its own colour";
    EXPECT_EQ(hc->nstroke, static_cast<int>(on_page("move_to").size()));
    EXPECT_TRUE(rec.dialogs.empty());
}

TEST_F(vg_hardcopy_test, ThePensFollowThePalette) {
    auto d = display(10, 10, 1, 1);
    vg_set_palette(4, 1, 0.5, 1);
    vg_set_overcolor(0, 0, 1);
    vghc_newcolor(16, 1, 1, 1);
    vghc_newcolor(-1, 1, 1, 1);
    auto hc = vg_hc_init("p", 0, 1, 1, 0, 0, 0);
    for (int color : {0, 4, 9, 15}) vg_hc_object(*hc, line({{0, 0}, {1, 1}}, color).get());
    std::vector<std::uint32_t> colours;
    for (const record_call& pen : on_page("pen")) colours.push_back(pen.rgb);
    // Printing colours are switches: orange (255, 128, 0) prints as red.
    EXPECT_EQ(colours, (std::vector<std::uint32_t>{0xffffff, 0xff00ff, 0x0000ff, 0xff0000}));
}

TEST_F(vg_hardcopy_test, CancelAndFailuresAreToldOnceAndDrawNothing) {
    rec.printer_cancelled = true;
    auto hc = vg_hc_init("p", 0, 1, 1, 0, 0, 1);
    EXPECT_EQ(hc->context, 0);
    vg_hc_object(*hc, line({{0, 0}, {1, 1}}).get());
    vg_hc_date(*hc, 0, 0, 0.1f, "");
    vg_hc_cells(*hc, {0, 0, 1, 1}, std::vector<std::uint32_t>{1}, 1, 1);
    vg_hc_drawvec(*hc, line({{0, 0}, {1, 1}})->veclst);
    vg_hc_done(*hc);
    EXPECT_EQ(said(), "Message: Print Canceled.\n");
    EXPECT_EQ(rec.drawn(port_page).size(), 0u);
    EXPECT_EQ(rec.count("page_end"), 0u);

    rec.dialogs.clear();
    rec.printer_cancelled = false;
    rec.begin_fails = true;
    vg_hardcopy(vg_new_frame().get());
    EXPECT_EQ(said(), "Message: Print Error.\n");

    rec.dialogs.clear();
    rec.begin_fails = false;
    rec.end_fails = true;
    hc = vg_hc_init("p", 0, 1, 1, 0, 0, 1);
    vg_hc_done(*hc);
    vg_hc_done(*hc);
    EXPECT_EQ(said(), "Message: Print Error.\n");
    EXPECT_EQ(rec.count("page_end"), 1u);
}

TEST_F(vg_hardcopy_test, SettingsComeFromTheEnvironment) {
    const struct {
        const char* word;
        int type;
    } types[] = {
        {"cps", vg_hc_cps}, {"HPGL", vg_hc_hpgl}, {"Tek", vg_hc_tek}, {"LASER", vg_hc_ps}, {"", vg_hc_ps}};
    for (auto [word, type] : types) {
        ::setenv("QELMHCTYPE", word, 1);
        _vghardcopy hc;
        vg_hc_getenv(hc);
        EXPECT_EQ(hc.type, type) << word;
        EXPECT_EQ(hc.queue, "lp");
        EXPECT_EQ(hc.doprt + hc.del, 2);
        EXPECT_EQ(hc.dousr, 0);
    }
    ::setenv("QELMHCQUEUE", "laser2", 1);
    ::setenv("QELMHCPATH", " \tplots ", 1);
    ::setenv("QELMHCPRINT", "no", 1);
    ::setenv("QELMHCDELETE", "NO", 1);
    ::setenv("QELMHCUSER", "lpr -h", 1);
    auto hc = vg_hc_init("p", vg_hc_cps, 1, 1, 0, 0, 1);
    EXPECT_EQ(hc->type, vg_hc_cps) << "the caller's type stands above the environment";
    EXPECT_EQ(hc->queue, "laser2");
    EXPECT_EQ(hc->path, "plots");
    EXPECT_EQ(hc->doprt + hc->del, 0);
    EXPECT_EQ(hc->usrcmd, "lpr -h");
    EXPECT_FALSE(page().job.ask) << "no printing: to the file";
    EXPECT_TRUE(page().job.file.starts_with("plots/p_")) << page().job.file;
}

TEST_F(vg_hardcopy_test, ThePdfIsNamedAfterTheWindowAndTheTime) {
    temp_dir dir;
    ::setenv("QELMHCPATH", dir.path().c_str(), 1);
    auto begin = [&](const char* name) {
        auto hc = vg_hc_init(name, 0, 1, 1, 0, 0, 1);
        vg_hc_done(*hc);
        return rec.pages.back().job;
    };
    const port_page_job job = begin("NORVA: range/../profile");
    EXPECT_EQ(job.title, "NORVA: range/../profile");
    EXPECT_TRUE(job.ask);
    std::string file = job.file;
    EXPECT_EQ(file.substr(0, file.size() - 19), dir.file("NORVA__range_.._profile_"))
        << "plain characters only";
    EXPECT_TRUE(file.ends_with(".pdf"));
    // Every name that the next seconds could give is taken: the copy gets a name of its own.
    std::set<std::string> names;
    for (int i = 0; i < 5; i++) {
        const std::string name = begin("x").file;
        EXPECT_TRUE(names.insert(name).second) << name;
        write_all(name, "taken");
    }

    vg_hc_presets().dir = dir.file("out");
    EXPECT_TRUE(begin("y").file.starts_with(dir.file("out") + "/y_"));
    vg_hc_preset_file("here.pdf");
    EXPECT_EQ(begin("y").file, "here.pdf");
    EXPECT_FALSE(rec.pages.back().job.ask);
    EXPECT_NE(begin("y").file, "here.pdf") << "used up";
    EXPECT_FALSE(rec.pages.back().job.ask);
}

} // namespace
