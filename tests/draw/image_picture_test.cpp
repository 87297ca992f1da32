// The picture of an image on a raster, and what is laid over it.
#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "port_record/port_record.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "vgph/vgsym.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace norva {
namespace {

constexpr int types[] = {IMG_PEAKS, IMG_CONTOURS, IMG_COLOR};
constexpr std::uint32_t BLUE = 0xff0000;

std::string message;

class image_picture_test : public testing::Test {
protected:
    record_port rec;
    port_win area = 0;
    vgdisplay_ptr disp;

    void SetUp() override {
        reset_run_state();
        set_port(&rec);
        rec.rasters = true;
        message.clear();
        app_hooks.popmsg = [](const std::string& text) { message = text; };
        drop_vg_img();
        xi_picture = {};
        open(500, 480);
    }
    void TearDown() override { set_port(nullptr); }

    void open(int w, int h) {
        const port_win top = rec.create(port_kind::top, 0, 0, "");
        area = rec.create(port_kind::draw, top, 0, "");
        rec.move(top, {0, 0, w, h});
        rec.move(area, {0, 0, w, h});
        rec.show(area, true);
        rec.show(top, true);
        rec.run_pending();
        disp = vg_xw_init(area, 6, 6, 0);
    }
    // A new image of nx by ny samples, one gate apart, from 0 or from the given gates on.
    void show(int type, const std::vector<float>& a, int nx, int ny, double x1 = 0, double y1 = 0,
              std::vector<float> d = {}, std::vector<float> x = {}, std::vector<float> y = {}) {
        draw_vg_img(*disp, IMG_NEW, type, x1, y1, x1 + nx - 1, y1 + ny - 1, d.data(), x.data(), y.data(),
                    static_cast<int>(d.size()), a.data(), nx, ny);
        render(type);
    }
    void render(int type) {
        vg_clear(*disp);
        if (type == IMG_COLOR) draw_vg_img(*disp, IMG_REDRAW, type);
        vg_render_frame(*disp, xi_picture.frame.get());
    }
    const std::vector<std::uint32_t>& pixels() { return rec.window(area).pixels; }
    port_point place(double x, double y) {
        const _vgdataframe& df = xi_picture.xy_df;
        return vg_to_pixel(*disp, vg_x_loc(df, x), vg_y_loc(df, y));
    }
    std::uint32_t at(double x, double y) {
        const port_point p = place(x, y);
        return pixels().at(static_cast<std::size_t>(p.y * rec.window(area).picture.w + p.x));
    }
    std::size_t count(std::uint32_t rgb) {
        return static_cast<std::size_t>(std::count(pixels().begin(), pixels().end(), rgb));
    }
};

TEST_F(image_picture_test, one_scale_inside_the_display) {
    const struct {
        int w, h, nx, ny;
        float ascale;
    } cases[] = {{500, 480, 32, 32, 1},  {500, 480, 256, 512, 1},   {300, 700, 512, 128, 1},
                 {1800, 900, 64, 64, 3}, {500, 480, 40, 30, 0.01f}, {60, 40, 40, 30, 100}};
    for (const auto& c : cases) {
        open(c.w, c.h);
        xi_picture.xi_ascale = c.ascale;
        show(IMG_COLOR, std::vector<float>(static_cast<std::size_t>(c.nx) * c.ny, 1.0f), c.nx, c.ny);
        const _vgdataframe& df = xi_picture.xy_df;
        EXPECT_NEAR(df.xscale / df.yscale, 1, 1e-5);
        EXPECT_EQ(df.xlabel, "Crossrange (gates)");
        EXPECT_EQ(df.ylabel, "Range (gates)");
        float x0 = 1e9f, y0 = 1e9f, x1 = -1e9f, y1 = -1e9f;
        for (const vgobject_ptr& obj : xi_picture.frame->objptr) {
            float a, b, e, f;
            vg_obj_extent(*obj, a, b, e, f);
            x0 = std::min(x0, a), y0 = std::min(y0, b), x1 = std::max(x1, e), y1 = std::max(y1, f);
        }
        EXPECT_GE(x0, 0);
        EXPECT_GE(y0, 0);
        EXPECT_LE(x1, disp->xsize) << "scale bar and all";
        EXPECT_LE(y1, disp->ysize - def.cbox_ysz) << "below the control box";
    }
}

TEST_F(image_picture_test, peaks_are_spots_at_their_places) {
    show(IMG_PEAKS, std::vector<float>(400, 0.1f), 20, 20, -10, -10, {0.2f, 0.1f, 0.1f}, {-4, 5, 9},
         {6, -5, 9});
    EXPECT_EQ(at(-4, 6), BLUE);
    EXPECT_EQ(at(5, -5), BLUE);
    EXPECT_NE(at(5, 6), BLUE);
    const double area_inches = static_cast<double>(count(BLUE)) / disp->xpinch / disp->xpinch;
    EXPECT_NEAR(area_inches, M_PI / 4 * (0.04 + 0.01 + 0.01), 0.008);
    draw_vg_img(*disp, IMG_ZOOM, IMG_PEAKS, 8, -9, 2, 0);
    render(IMG_PEAKS);
    EXPECT_EQ(at(5, -5), BLUE);
    EXPECT_NEAR(static_cast<double>(count(BLUE)), M_PI / 4 * 0.01 * disp->xpinch * disp->xpinch, 25);
    // New peaks under the zoom that is set; then none.
    const float a[4] = {}, d[1] = {0.1f}, x[1] = {3}, y[1] = {-1};
    draw_vg_img(*disp, IMG_SAME_ZOOM, IMG_PEAKS, -10, -10, 9, 9, d, x, y, 1, a, 2, 2);
    render(IMG_PEAKS);
    EXPECT_EQ(xi_picture.izoom, 1);
    EXPECT_EQ(at(3, -1), BLUE);
    EXPECT_NE(at(5, -5), BLUE);
    draw_vg_img(*disp, IMG_SAME_ZOOM, IMG_PEAKS, -10, -10, 9, 9, d, x, y, 0, a, 2, 2);
    render(IMG_PEAKS);
    EXPECT_EQ(count(BLUE), 0u);
}

TEST_F(image_picture_test, a_colour_stands_where_its_sample_is) {
    // Amplitudes that rise with x and y differ everywhere; the largest is not 1.
    std::vector<float> a;
    for (int j = 0; j < 9; j++)
        for (int i = 0; i < 16; i++) a.push_back(static_cast<float>(2 * (1 + i + 16 * j)) / 144);
    const struct {
        bool db;
        float low;
        int grd;
    } cases[] = {{false, 0, 256}, {false, 0.4f, 256}, {false, 0, 7}, {true, -30, 256}, {true, -6, 64}};
    for (const auto& c : cases) {
        xi_picture.scaling = {.low_clip = c.low, .db = c.db, .grd = c.grd};
        show(IMG_COLOR, a, 16, 9, -8, -4);
        for (int zoom = 0; zoom < 2; zoom++) {
            const int i0 = zoom ? 3 : 0, i1 = zoom ? 9 : 15, j0 = zoom ? 2 : 0, j1 = zoom ? 6 : 8;
            if (zoom) {
                draw_vg_img(*disp, IMG_ZOOM, IMG_COLOR, i0 - 8, j0 - 4, i1 - 8, j1 - 4);
                render(IMG_COLOR);
            }
            for (int j = j0; j <= j1; j++)
                for (int i = i0; i <= i1; i++) {
                    const double amplitude = (1 + i + 16 * j) / 144.0;
                    const double v = c.db ? 20 * std::log10(amplitude) : amplitude;
                    const double t = std::clamp((v - c.low) / ((c.db ? 0 : 1) - c.low), 0.0, 1.0);
                    const double step = std::min(std::floor(t * c.grd + 1e-6), c.grd - 1.0);
                    // A little inside the frame at its rim.
                    const double x = std::clamp(i - 8.0, i0 - 7.8, i1 - 8.2);
                    const double y = std::clamp(j - 4.0, j0 - 3.8, j1 - 4.2);
                    ASSERT_EQ(at(x, y), get_img_color((step + 0.5) / c.grd)) << i << ' ' << j << ' ' << zoom;
                }
        }
        draw_vg_img(*disp, IMG_UNZOOM, IMG_COLOR);
    }
    EXPECT_FLOAT_EQ(image_amplitude(-8 + 5.4, -4 + 1.6), 2 * (1 + 5 + 16 * 2) / 144.0f);
    EXPECT_EQ(image_amplitude(-9, 0), 0);
    EXPECT_EQ(image_amplitude(NAN, 0), 0);
}

TEST_F(image_picture_test, single_bright_samples_survive_a_small_display) {
    std::vector<float> a(2000 * 1500);
    a[1500 * 700 + 3] = a[2000 * 7 + 1999] = a[2000 * 1499] = 1;
    show(IMG_COLOR, a, 2000, 1500);
    EXPECT_GE(count(get_img_color(1)), 3u);
    EXPECT_EQ(rec.count("image", area), 2u) << "one for the cells, one for the scale bar";
    EXPECT_EQ(rec.count("fill", area), 0u);
}

TEST_F(image_picture_test, contours_lie_at_their_level) {
    // 20 log10 exp(-r*r/(2*s*s)) = -L dB at r = s sqrt(L ln 10 / 10).
    const double s = 9;
    std::vector<float> a;
    for (int j = 0; j < 80; j++)
        for (int i = 0; i < 90; i++)
            a.push_back(
                3 * static_cast<float>(std::exp(-(std::pow(i - 45, 2) + std::pow(j - 38, 2)) / 2 / s / s)));
    xi_picture.scaling.dc = 3;
    xi_picture.scaling.nc = 4;
    show(IMG_CONTOURS, a, 90, 80, -45, -38);
    const _vgdataframe& df = xi_picture.xy_df;
    std::set<int> met;
    for (const _vgvec& v : xi_picture.frame->objptr.at(0)->veclst) {
        const double r = std::hypot(vg_x_val(df, v.x), vg_y_val(df, v.y));
        const double level = 10 / std::log(10.0) * r * r / s / s;
        EXPECT_NEAR(level, 3 * std::round(level / 3), 0.02);
        met.insert(static_cast<int>(std::round(level / 3)));
    }
    EXPECT_EQ(met, (std::set<int>{1, 2, 3, 4}));
}

TEST_F(image_picture_test, odd_data_are_drawn) {
    const float nan = NAN, inf = INFINITY, tiny = std::numeric_limits<float>::denorm_min();
    const struct {
        int nx, ny;
        std::vector<float> a;
    } cases[] = {{1, 1, {1}},
                 {1, 40, std::vector<float>(40, 0.5f)},
                 {700, 1, std::vector<float>(700, 0.5f)},
                 {30, 20, std::vector<float>(600)},
                 {4, 3, {nan, inf, -inf, 0.2f, 0.4f, nan, 1, 0, inf, 0, 0, nan}},
                 {2, 2, {tiny, 0, 0, 0}},
                 {2, 2, {-1, -2, 1e38f, 0}}};
    for (const auto& c : cases)
        for (int type : types)
            for (float low : {0.05f, 1.0f, -20.0f, 0.0f}) {
                xi_picture.scaling = {.kc = 3, .low_clip = low, .db = low <= 0};
                show(type, c.a, c.nx, c.ny, 0, 0, {nan, 0.1f, inf, -1}, {0, nan, 0, 0}, {0, 0, inf, 0});
                const _vgdataframe& df = xi_picture.xy_df;
                EXPECT_TRUE(df.xok && df.yok);
                EXPECT_GE(std::min(df.xlen, df.ylen), 0.4f) << "wide enough to be seen";
                for (const vgobject_ptr& obj : xi_picture.frame->objptr)
                    for (const _vgvec& v : obj->veclst) ASSERT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
            }
    xi_picture.scaling = {};
    show(IMG_COLOR, std::vector<float>(600), 30, 20);
    EXPECT_EQ(at(10, 10), get_img_color(0)) << "nothing there";
    show(IMG_COLOR, cases[4].a, 4, 3);
    EXPECT_EQ(at(2, 1), get_img_color(1)) << "what is no number does not scale the rest";
    EXPECT_EQ(at(0.2, 0.2), get_img_color(0));
    EXPECT_EQ(message, "");
    // Odd boxes: outside the image, a single point, no numbers.
    draw_vg_img(*disp, IMG_ZOOM, IMG_COLOR, 500, 500, 600, 600);
    draw_vg_img(*disp, IMG_ZOOM, IMG_COLOR, 3, 3, 3, 3);
    draw_vg_img(*disp, IMG_ZOOM, IMG_COLOR, NAN, 0, 1, INFINITY);
    EXPECT_GT(xi_picture.xy_df.xscale, 0);
    EXPECT_TRUE(std::isfinite(image_limits().x0));
    // No data: as before.
    const _vgframe* before = xi_picture.frame.get();
    draw_vg_img(*disp, IMG_NEW, IMG_PEAKS, 0, 0, 1, 1);
    EXPECT_EQ(xi_picture.frame.get(), before);
    drop_vg_img();
    draw_vg_img(*disp, IMG_REDRAW, IMG_COLOR);
    EXPECT_FALSE(xi_picture.frame);
}

TEST_F(image_picture_test, what_cannot_be_drawn_is_told_and_the_picture_stays) {
    show(IMG_PEAKS, std::vector<float>(4097 * 2, 1.0f), 4097, 2);
    const _vgframe* before = xi_picture.frame.get();
    const struct {
        int type, nc, grd;
        const char* text;
    } cases[] = {{IMG_CONTOURS, 5, 256, "Crossrange dimension too large for contour plot."},
                 {IMG_COLOR, 5, 257, "Error: not enough colors for color intensity image!"}};
    for (const auto& c : cases) {
        message.clear();
        xi_picture.scaling.nc = c.nc;
        xi_picture.scaling.grd = c.grd;
        draw_vg_img(*disp, IMG_REDRAW, c.type);
        EXPECT_EQ(message, c.text);
        EXPECT_EQ(xi_picture.frame.get(), before);
        EXPECT_EQ(xi_picture.plot_type, 0);
    }
    message.clear();
    draw_vg_img(*disp, IMG_ZOOM, IMG_CONTOURS, 0, 0, 4095, 1);
    EXPECT_EQ(message, "") << "4096 columns pass";
    xi_picture.scaling.nc = 51;
    draw_vg_img(*disp, IMG_REDRAW, IMG_CONTOURS);
    EXPECT_EQ(message, "Too many contours specified.  Must be < 51.");
}

TEST_F(image_picture_test, paper_gets_every_sample_in_one_picture) {
    std::vector<float> a(600 * 900);
    a[600 * 450 + 300] = 1;
    show(IMG_COLOR, a, 600, 900);
    const auto shown = pixels();
    rec.log.clear();
    const vghardcopy_ptr hc = vg_hc_init("image", 0, 1, 1, 0.5f, 0.5f, 1);
    xi_picture.chc = hc.get();
    draw_vg_img(*disp, IMG_REDRAW, IMG_COLOR);
    xi_picture.chc = nullptr;
    vg_hc_done(*hc);
    EXPECT_EQ(pixels(), shown) << "the display is left alone";
    std::vector<record_call> images;
    for (const record_call& call : rec.pages.at(0).calls)
        if (call.op == "image") images.push_back(call);
    ASSERT_EQ(images.size(), 2u);
    EXPECT_EQ(images[0].pixel_size, (port_size{2 * 599, 2 * 899})) << "half a sample at the rim";
    EXPECT_EQ(std::count(images[0].pixels.begin(), images[0].pixels.end(), get_img_color(1)), 4);
    EXPECT_EQ(images[0].pixels.at(2 * 599 * (2 * 899 - 2 * 450) + 2 * 300), get_img_color(1));
}

TEST_F(image_picture_test, overlays_leave_no_trace) {
    std::vector<float> a(64 * 64);
    for (std::size_t i = 0; i < a.size(); i++) a[i] = static_cast<float>(i * 7919 % 1009) / 1009;
    for (int type : types) {
        show(type, a, 64, 64, -32, -32, {0.3f, 0.2f}, {0, 10}, {0, -5});
        const auto before = pixels();
        const _vgdataframe& df = xi_picture.xy_df;
        vgobject_ptr shown;
        const auto show_and_look = [&](vgobject_ptr next) {
            put_overlay(*disp, shown, std::move(next));
            EXPECT_NE(pixels(), before);
        };
        float wct = 0, ang = 0;
        for (double x : {-32.0, 0.0, 9.7, 31.0}) {
            show_and_look(draw_vg_xhr(df, x, x / 2));
            show_and_look(draw_vg_syms(*disp, df, x, x / 2, 0.25));
            show_and_look(draw_vg_zmbox(df, x, -5, 500, 900));
            show_and_look(draw_vg_zmbox(df, x, -5, x, 10));
            wct = 0;
            show_and_look(draw_vg_cut(df, -3, 4, wct, ang, x, -x));
            show_and_look(draw_vg_cut(df, -3, 4, wct, ang, 0, 0));
        }
        put_overlay(*disp, shown, nullptr);
        EXPECT_EQ(pixels(), before) << type;
        EXPECT_FALSE(draw_vg_xhr(df, 40, 0));
        EXPECT_FALSE(draw_vg_zmbox(df, NAN, 0, 1, 1));
        EXPECT_FALSE(draw_vg_syms(*disp, df, 0, INFINITY, 1));
        EXPECT_FALSE(draw_vg_cut(df, 100, 100, wct = 5, ang, 0, 0));
    }
}

TEST_F(image_picture_test, a_new_cut_ends_at_the_pointer) {
    show(IMG_PEAKS, std::vector<float>(64 * 64, 1.0f), 64, 64, -32, -32);
    const _vgdataframe& df = xi_picture.xy_df;
    const double ends[][2] = {{8, 6}, {-10, 2}, {-6, -6}, {2, -12}};
    for (const auto& e : ends) {
        float wct = 0, ang = 0;
        const vgobject_ptr drawn = draw_vg_cut(df, 2, -2, wct, ang, e[0], e[1]);
        ASSERT_TRUE(drawn);
        EXPECT_NEAR(vg_x_val(df, drawn->veclst.at(0).x), 2, 1e-4) << "from the pivot";
        EXPECT_NEAR(vg_x_val(df, drawn->veclst.at(1).x), e[0], 1e-4);
        EXPECT_NEAR(wct, 2 * std::hypot(e[0] - 2, e[1] + 2), 1e-4);
        const vgobject_ptr fixed = draw_vg_cut(df, 2, -2, wct, ang, 0, 0);
        EXPECT_NEAR(vg_x_val(df, fixed->veclst.at(1).x), e[0], 1e-3) << "the other half on the other side";
        EXPECT_NEAR(vg_y_val(df, fixed->veclst.at(1).y), e[1], 1e-3);
        EXPECT_NEAR(vg_x_val(df, fixed->veclst.at(0).x), 4 - e[0], 1e-3);
    }
}

TEST_F(image_picture_test, the_readout_tells_gates_amplitude_and_level) {
    show(IMG_PEAKS, std::vector<float>(64 * 64, 1.0f), 64, 64, -32, -32);
    const auto strokes = [](const char* text) { return vg_symbol(0, 0, 0.1f, 0, text)->veclst.size(); };
    const struct {
        double x, y, amplitude, ref;
        const char *range, *crossrange, *level;
    } cases[] = {
        {3.25, -7.5, 0.5, 1, "Range: -7.500", "Crossrange: 3.250", "Amplitude: 0.500  (-6.0 dB)"},
        {-20, 30.125, 1250, 2500, "Range: 30.125", "Crossrange: -20.000", "Amplitude: 1250.000  (-6.0 dB)"},
        {0, 0, 0, 1, "Range: 0.000", "Crossrange: 0.000", "Amplitude: 0.000"}};
    for (const auto& c : cases) {
        const vgobject_ptr obj = draw_vg_syms(*disp, xi_picture.xy_df, c.x, c.y, c.amplitude, c.ref);
        ASSERT_TRUE(obj);
        EXPECT_EQ(obj->veclst.size(), strokes(c.range) + strokes(c.crossrange) + strokes(c.level)) << c.range;
        float x0, y0, x1, y1;
        vg_obj_extent(*obj, x0, y0, x1, y1);
        EXPECT_GE(std::min(x0, y0), 0);
        EXPECT_LE(x1, disp->xsize);
        EXPECT_LE(y1, disp->ysize);
    }
}

TEST_F(image_picture_test, the_last_action_takes_the_place_of_the_one_before) {
    const auto strokes = [](const std::string& text) {
        return vg_symbol(0, 0, 0.1f, 0, text)->veclst.size();
    };
    const struct {
        int mode, tag;
        const char* name; // null: the line stays
    } cases[] = {{0, 1, "Initialization"},
                 {10, 1, "Polar Format Initialization"},
                 {11, 1, nullptr},
                 {4, 1, "Edit"},
                 {-1, 1, nullptr},
                 {9, 0, "restore differentiate"},
                 {23, 0, nullptr},
                 {25, 0, nullptr},
                 {30, 0, "1-D initialization"},
                 {31, 0, nullptr}};
    vgobject_ptr line;
    const _vgobject* before = nullptr;
    for (const auto& c : cases) {
        draw_vg_mdesc(*disp, line, c.mode, c.tag);
        if (!c.name) {
            EXPECT_EQ(line.get(), before) << c.mode;
            continue;
        }
        before = line.get();
        EXPECT_EQ(line->veclst.size(), strokes(std::string("last action: ") + c.name)) << c.mode;
        const auto replaced = pixels();
        vg_clear(*disp);
        vg_render_object(*disp, line.get());
        EXPECT_EQ(replaced, pixels()) << "nothing of the old one is left";
    }
}

} // namespace
} // namespace norva
