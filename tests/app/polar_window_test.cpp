// The polar format window: values from the file, an image from it, refusals.
#include "workstation.h"

#include "image/ximag.h"
#include "mocomp/polar_keywords.h"
#include "mocomp/polar_window.h"

#include <cmath>

namespace norva {
namespace {

using test::gate_scene;
using test::write_gate;

class polar_window : public test::workstation {
protected:
    static constexpr int nf = 32, nt = 48;
    static constexpr double f0 = 9000, df = 25, da = 0.006, rc = 30, x = 1.3, y = -0.6;

    void SetUp() override { start(); }

    // A point of a turntable that turns by 0.29 radians.
    static void write_scene(const std::string& name) {
        const gate_scene scene = {
            .nf = nf, .nt = nt, .f0 = f0, .df = df, .t0 = 0, .wfri = 1, .delay = [](double time) {
                const double th = (time - 0.5 * (nt - 1)) * da;
                const double along = y * std::cos(th) - x * std::sin(th);
                const double way = std::sqrt(rc * rc + 2 * rc * along + x * x + y * y) - rc;
                return 2 * way / 300;
            }};
        write_gate(name, scene, [](_gatfile* file) {
            u_kwput_i(file, "DTYPE", 0);
            u_kwput_d(file, "XEX", 2.5);
            u_kwput_d(file, "YEX", 3);
            u_kwput_d(file, "RC", rc);
            u_kwput_d(file, "DE", 0);
            u_kwput_d(file, "DA", da);
        });
    }
    port_win window() const { return rec->find(port_kind::top, "NORVA: polar format"); }
    void click_here(const std::string& text) {
        rec->click(rec->find(port_kind::button, text, window()));
        rec->run_pending();
    }
    static void expect_point() {
        image_gate gate;
        ASSERT_TRUE(strongest_image_gate(gate));
        const double fc = f0 + 0.5 * df * (nf - 1);
        EXPECT_NEAR(gate.crossrange, x / (0.5 * 300 / fc / da / nt), 0.3);
        EXPECT_NEAR(gate.range, y / (0.5 * 300 / df / nf), 0.3);
    }
};

TEST_F(polar_window, forms_the_image_from_the_keywords_of_the_file) {
    write_scene("turn.pfx");
    open("turn.pfx");
    ASSERT_TRUE(click("Polar Format"));
    EXPECT_EQ(plr_kw_stat(), 1);
    EXPECT_EQ(eoj, 0); // nothing is journaled yet
    std::vector<std::string> shown;
    for (port_win field : rec->all(port_kind::field, window()))
        if (rec->visible(field)) shown.push_back(rec->get_text(field));
    EXPECT_EQ(shown, (std::vector<std::string>{"2.500", "3.000", "30.000", "0.000000", "0.006000"}));
    click_here("Image");
    EXPECT_EQ(messages, std::vector<std::string>());
    ASSERT_TRUE(imgwinon);
    expect_point();
    ximag_bttn(ximag_window(), 19);
    rec->run_pending();
    EXPECT_EQ(plr_kw_stat(), 0);
}

TEST_F(polar_window, refuses_values_that_give_no_image_and_writes_good_ones_to_the_file) {
    write_gate("plain.pfx", {});
    open("plain.pfx");
    ASSERT_TRUE(messages.empty());
    EXPECT_EQ(get_pkw()->eflag, 2);
    ASSERT_TRUE(click("Polar Format"));
    click_here("Image");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find("crossrange extent"), std::string::npos);
    EXPECT_FALSE(imgwinon);
    const std::vector<port_win> fields = rec->all(port_kind::field, window());
    ASSERT_GE(fields.size(), 5U);
    const char* values[] = {"1e30", "3", "nan", "0", "0.006"};
    for (std::size_t i = 0; i < 5; i++) rec->enter(fields[i], values[i]);
    click_here("Image");
    EXPECT_FALSE(imgwinon);
    EXPECT_EQ(messages.size(), 2U);
    click_here("Cancel");
    EXPECT_EQ(plr_kw_stat(), 0);
}

TEST(rd_plr_kw, takes_what_the_geometry_has_and_tells_what_is_missing) {
    const test::temp_dir dir;
    const auto read = [&](int dtyp, std::vector<std::pair<const char*, double>> keywords) {
        const std::string name = dir.file("x.gat");
        gatfile_ptr file = opengat_opt(name, 4, GAT_FLOAT, 0);
        if (dtyp >= 0) u_kwput_i(file.get(), "DTYPE", dtyp);
        for (const auto& [key, value] : keywords) u_kwput_d(file.get(), key, value);
        rd_plr_kw(file.get());
        return *get_pkw();
    };
    const plr_kws turntable = read(0, {{"XEX", 1}, {"YEX", 2}, {"RC", 3}, {"DE", 4}, {"DA", 5}, {"SA", 6}});
    EXPECT_EQ(turntable.eflag, 1);
    EXPECT_EQ(turntable.de, 4);
    EXPECT_EQ(turntable.da, 5);
    EXPECT_EQ(turntable.sa, 0);
    const plr_kws rail = read(1, {{"XEX", 1}, {"YEX", 2}, {"RC", 3}, {"DU", 4}, {"DA", 5}, {"SA", 6}});
    EXPECT_EQ(rail.eflag, 1);
    EXPECT_EQ(rail.du, 4);
    EXPECT_EQ(rail.sa, 6);
    EXPECT_EQ(rail.da, 0);
    const plr_kws partial = read(-1, {{"XEX", 1}, {"YEX", 2}, {"DE", 4}, {"DA", 5}});
    EXPECT_EQ(partial.eflag, 2);
    EXPECT_EQ(partial.yex, 2);
    EXPECT_EQ(partial.rc, 0);
}

} // namespace
} // namespace norva
