// The image picture from the call to the pixels, on the offscreen platform: what an analyst waits for when he
// changes the type of display, zooms, or moves the pointer. An image of 256 by 512 samples with 100 peaks.
#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "port_qt/port_qt.h"
#include "state/run.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <complex>
#include <memory>
#include <random>
#include <vector>

namespace norva::bench {
namespace {

struct no_events final : port_events {
    void on_size(port_win, int, int) override {}
    void on_paint(port_win) override {}
    void on_mouse(port_win, port_mouse, int, int, int) override {}
    void on_command(port_win) override {}
    void on_command_part(port_win, bool) override {}
    void on_select(port_win, int) override {}
    bool on_char(port_win, char32_t) override { return true; }
    void on_return(port_win) override {}
    void on_tab(port_win, bool) override {}
    void on_help(port_win) override {}
    void on_menu(int) override {}
    bool on_close(port_win) override { return false; }
    bool on_shortcut(port_win, char) override { return false; }
};

// Draw areas of the window's first size, and of a large screen's.
constexpr port_size areas[] = {{487, 500}, {1240, 960}};

struct stage {
    no_events events;
    std::unique_ptr<port> screen = make_qt_port({true});
    vgdisplay_ptr displays[2];

    stage() {
        set_port(screen.get());
        screen->set_events(&events);
        reset_run_state();
        for (int k = 0; k < 2; k++) {
            const auto [w, h] = areas[k];
            const port_win top = screen->create(port_kind::top, 0, 0, "");
            const port_win area = screen->create(port_kind::draw, top, 0, "");
            screen->move(top, {0, 0, w, h});
            screen->move(area, {0, 0, w, h});
            screen->show(area, true);
            screen->show(top, true);
            displays[k] = vg_xw_init(area, 6, 6, 0);
        }
        screen->later([this] { screen->quit(0); });
        screen->run();
    }
};

_vgdisplay& display(const benchmark::State& state) {
    static stage the_stage;
    return *the_stage.displays[state.range(0)];
}

// 100 scatterers in noise; or noise alone, whose contours cover everything.
void new_image(_vgdisplay& disp, int type, bool scatterers) {
    constexpr int nx = 256, ny = 512;
    std::mt19937 random(11);
    std::normal_distribution<float> noise;
    const float level = scatterers ? 0.01f : 1;
    std::vector<float> a, x, y;
    for (int k = 0; k < 100; k++) {
        x.push_back(static_cast<float>(random() % 240 + 8));
        y.push_back(static_cast<float>(random() % 496 + 8));
    }
    for (int k = 0; k < nx * ny; k++)
        a.push_back(level * std::abs(std::complex<float>(noise(random), noise(random))));
    for (std::size_t k = 0; scatterers && k < x.size(); k++)
        for (int j = -4; j <= 4; j++)
            for (int i = -4; i <= 4; i++)
                a[static_cast<std::size_t>((static_cast<int>(y[k]) + j) * nx + static_cast<int>(x[k]) + i)] +=
                    static_cast<float>(std::exp(-0.4 * (i * i + j * j)));
    const std::vector<float> d(x.size(), 0.1f);
    xi_picture.scaling = {};
    draw_vg_img(disp, IMG_NEW, type, 0, 0, nx - 1, ny - 1, d.data(), x.data(), y.data(), 100, a.data(), nx,
                ny);
}

void render(_vgdisplay& disp, int type) {
    vg_clear(disp);
    if (type == IMG_COLOR) draw_vg_img(disp, IMG_REDRAW, type);
    vg_render_frame(disp, xi_picture.frame.get());
}

void switch_type(benchmark::State& state, int type, bool scatterers, bool db) {
    _vgdisplay& disp = display(state);
    new_image(disp, type, scatterers);
    if (db) {
        xi_picture.scaling.db = true;
        xi_picture.scaling.low_clip = -40;
    }
    for (auto _ : state) {
        draw_vg_img(disp, IMG_REDRAW, type);
        render(disp, type);
    }
}
BENCHMARK_CAPTURE(switch_type, peaks, IMG_PEAKS, true, false)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(switch_type, contours, IMG_CONTOURS, true, false)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(switch_type, contours_of_noise, IMG_CONTOURS, false, false)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(switch_type, color, IMG_COLOR, true, false)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(switch_type, color_db, IMG_COLOR, true, true)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond);

void zoom_and_unzoom(benchmark::State& state) {
    _vgdisplay& disp = display(state);
    new_image(disp, IMG_COLOR, true);
    for (auto _ : state) {
        draw_vg_img(disp, IMG_ZOOM, IMG_COLOR, 60, 120, 180, 400);
        render(disp, IMG_COLOR);
        draw_vg_img(disp, IMG_UNZOOM, IMG_COLOR);
        render(disp, IMG_COLOR);
    }
}
BENCHMARK(zoom_and_unzoom)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

// Crosshair and readout, box, cut line: each taken away and drawn at the next place.
void follow_pointer(benchmark::State& state) {
    _vgdisplay& disp = display(state);
    new_image(disp, IMG_COLOR, true);
    render(disp, IMG_COLOR);
    const _vgdataframe& df = xi_picture.xy_df;
    vgobject_ptr xhr, syms, box, cut;
    double x = 0;
    for (auto _ : state) {
        x = x < 250 ? x + 1.3 : 0;
        put_overlay(disp, xhr, draw_vg_xhr(df, x, 2 * x));
        put_overlay(disp, syms, draw_vg_syms(disp, df, x, 2 * x, image_amplitude(x, 2 * x)));
        put_overlay(disp, box, draw_vg_zmbox(df, 100, 200, x, 2 * x));
        float wct = 0, ang = 0;
        put_overlay(disp, cut, draw_vg_cut(df, 100, 200, wct, ang, x, x));
    }
}
BENCHMARK(follow_pointer)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace norva::bench

BENCHMARK_MAIN();
