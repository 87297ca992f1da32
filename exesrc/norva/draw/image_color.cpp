// The colour map: cells of the samples, and the scale bar.
#include "image_int.h"

#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace norva {

// The bar beside the frame, plot inches.
constexpr float BAR_GAP = 0.36f, BAR_WIDTH = 0.13f, LEAST_BAR = 1.2f;
constexpr float TEXT_HEIGHT = 0.08f, TIC = 0.04f;
constexpr float LEAST_STEP = 0.13f; // between two numbers

// --- Colours

namespace {
// From an amplitude, as a part of the largest one, to its colour.
struct color_scale {
    double low, span; // in the unit that is shown
    bool db;
    std::vector<std::uint32_t> colors;

    explicit color_scale(const image_scaling& s) : low(s.low_clip), span((s.db ? 0 : 1) - low), db(s.db) {
        const int n = std::max(s.grd, 1);
        for (int k = 0; k < n; k++) colors.push_back(get_img_color((k + 0.5) / n));
    }
    std::uint32_t operator()(float amplitude) const {
        const float v = db ? (amplitude > 0 ? 20 * std::log10(amplitude) : -HUGE_VALF) : amplitude;
        const double last = static_cast<double>(colors.size()) - 1;
        // Without a range there are two kinds of samples, below the clip and not.
        const double u = span > 0 ? (v - low) / span * (last + 1) : (v >= low ? last : 0);
        return colors[static_cast<std::size_t>(std::clamp(u, 0.0, last))];
    }
};
} // namespace

// --- Cells

// For each of n steps from v0 to v1 along an axis, the samples it shows: the nearest to its middle, or, where
// samples lie closer than steps, those whose places it covers, so that none is lost.
static std::vector<sample_range> share_samples(double first, double step, int count, double v0, double v1,
                                               int n) {
    std::vector<sample_range> shares(static_cast<std::size_t>(n));
    const double s0 = (v0 - first) / step, per = (v1 - v0) / step / n;
    const double last = count - 1.0;
    for (int k = 0; k < n; k++) {
        const double a = s0 + k * per, b = a + per;
        double low = std::round((a + b) / 2), high = low;
        if (std::fabs(per) > 1) {
            constexpr double slack = 1e-3; // the samples at the limits belong to the first and the last step
            low = std::ceil(std::min(a, b) - slack);
            high = std::max(low, std::floor(std::max(a, b) + slack));
        }
        sample_range& s = shares[static_cast<std::size_t>(k)];
        s.first = static_cast<int>(std::clamp(low, 0.0, last));
        s.last = static_cast<int>(std::clamp(high, 0.0, last));
    }
    return shares;
}

// w by h colours for the data limits x0 to x1, y1 (top row) to y0.
static std::vector<std::uint32_t> color_cells(const kept_image& img, const image_scaling& s,
                                              const _vgdrect& at, int w, int h) {
    const std::vector<sample_range> cols = share_samples(img.x1, img.dx, img.nx0, at.x0, at.x1, w);
    const std::vector<sample_range> rows = share_samples(img.y1, img.dy, img.ny0, at.y1, at.y0, h);
    const color_scale scale(s);
    std::vector<std::uint32_t> cells;
    cells.reserve(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
    std::vector<float> column(static_cast<std::size_t>(img.nx0)); // largest of the rows of a step
    for (std::size_t k = 0; k < rows.size(); k++) {
        const sample_range r = rows[k];
        if (k > 0 && r.first == rows[k - 1].first && r.last == rows[k - 1].last) {
            const std::size_t above = cells.size() - static_cast<std::size_t>(w);
            for (std::size_t i = 0; i < static_cast<std::size_t>(w); i++) cells.push_back(cells[above + i]);
            continue;
        }
        const int c0 = std::min(cols.front().first, cols.back().first);
        const int c1 = std::max(cols.front().last, cols.back().last);
        const float* row = img.asav.data() + static_cast<std::size_t>(r.first) * img.nx0;
        std::copy(row + c0, row + c1 + 1, column.begin() + c0);
        for (int j = r.first + 1; j <= r.last; j++) {
            row = img.asav.data() + static_cast<std::size_t>(j) * img.nx0;
            for (int i = c0; i <= c1; i++) column[i] = std::max(column[i], row[i]);
        }
        for (const sample_range& c : cols)
            cells.push_back(scale(*std::max_element(column.begin() + c.first, column.begin() + c.last + 1)));
    }
    return cells;
}

// On the display one cell for each pixel between the axes.
static void cells_to_display(const _vgdisplay& disp, const _vgdataframe& df, const kept_image& img,
                             const image_scaling& s) {
    const port_point low = vg_to_pixel(disp, df.x0, df.y0);
    const port_point high = vg_to_pixel(disp, df.x0 + df.xlen, df.y0 + df.ylen);
    const int w = high.x - low.x - 1, h = low.y - high.y - 1;
    if (w < 1 || h < 1) return;
    // Half a pixel on, so that rounding does not move the corners.
    const auto xplace = [&](int k) { return (static_cast<float>(k - disp.xorig) + 0.5f) / disp.xpinch; };
    const auto yplace = [&](int k) { return (static_cast<float>(disp.yorig - k) - 0.5f) / disp.ypinch; };
    vg_render_cells(disp, {xplace(low.x + 1), yplace(low.y), xplace(high.x), yplace(high.y + 1)},
                    color_cells(img, s, {df.vx0, df.vy0, df.vx1, df.vy1}, w, h), w, h);
}

// On paper all samples: two cells each way for a sample, so that those on the rim have half.
static void cells_to_paper(_vghardcopy& hc, const _vgdataframe& df, const kept_image& img,
                           const image_scaling& s) {
    const auto cells = [](double span, double step, int n) {
        return static_cast<int>(std::clamp(std::round(2 * span / step), 1.0, 2.0 * n));
    };
    const int w = cells(df.vx1 - df.vx0, img.dx, img.nx0), h = cells(df.vy1 - df.vy0, img.dy, img.ny0);
    vg_hc_cells(hc, {df.x0, df.y0, df.x0 + df.xlen, df.y0 + df.ylen},
                color_cells(img, s, {df.vx0, df.vy0, df.vx1, df.vy1}, w, h), w, h);
}

// --- Scale bar

static _vgrect bar_place(const _vgdataframe& df) {
    const float middle = df.y0 + df.ylen / 2, half = std::max(df.ylen, LEAST_BAR) / 2;
    const float x = df.x0 + df.xlen + BAR_GAP;
    return {x, middle - half, x + BAR_WIDTH, middle + half};
}

void draw_color_cells(const _vgdisplay& disp, const _vgdataframe& df, const kept_image& img,
                      const image_scaling& s, _vghardcopy* hc) {
    std::vector<std::uint32_t> bar = color_scale(s).colors;
    std::reverse(bar.begin(), bar.end());
    const int n = static_cast<int>(bar.size());
    if (hc) {
        cells_to_paper(*hc, df, img, s);
        vg_hc_cells(*hc, bar_place(df), bar, 1, n);
    } else {
        cells_to_display(disp, df, img, s);
        vg_render_cells(disp, bar_place(df), bar, 1, n);
    }
}

// The step of 1, 2 or 5 times a power of ten that makes three to seven of a span.
static double round_step(double span) {
    const double ten = std::pow(10, std::floor(std::log10(span / 3)));
    for (double step : {5 * ten, 2 * ten})
        if (span / step >= 3) return step;
    return ten;
}

// Values with a number at the bar, the largest first.
static std::vector<double> bar_values(const image_scaling& s, float length) {
    const double low = s.low_clip, high = s.db ? 0 : 1, span = high - low;
    std::vector<double> values{high};
    if (!(span > 0)) return values;
    const double least = span * LEAST_STEP / length;
    double step = s.db ? std::max(static_cast<double>(s.delta), 0.1) : round_step(span);
    for (int k = 2; step < least; k++) step *= k;
    for (int k = 1; high - k * step > low + least; k++) values.push_back(high - k * step);
    values.push_back(low);
    return values;
}

void add_scale_bar(_vgframe& frame, const _vgdisplay& disp, const _vgdataframe& df, const image_scaling& s) {
    const _vgrect bar = bar_place(df);
    const float length = bar.y1 - bar.y0;
    vgobject_ptr obj = vg_new_object();
    vg_plot_object(*obj, bar.x0, bar.y0, 0);
    vg_plot_object(*obj, bar.x1, bar.y0, 1);
    vg_plot_object(*obj, bar.x1, bar.y1, 1);
    vg_plot_object(*obj, bar.x0, bar.y1, 1);
    vg_plot_object(*obj, bar.x0, bar.y0, 1);
    vg_obj_sym(*obj, bar.x0, bar.y1 + 0.06f, TEXT_HEIGHT, 0, "High");
    vg_obj_sym(*obj, bar.x0, bar.y0 - 0.06f - TEXT_HEIGHT, TEXT_HEIGHT, 0, "Low");

    const double high = s.db ? 0 : 1, span = high - s.low_clip;
    float right = bar.x1 + TIC;
    for (double v : bar_values(s, length)) {
        const float y = span > 0 ? bar.y1 - static_cast<float>((high - v) / span) * length : bar.y1;
        vg_plot_object(*obj, bar.x1, y, 0);
        vg_plot_object(*obj, bar.x1 + TIC, y, 1);
        char text[32];
        std::snprintf(text, sizeof text, "%.4g", v == 0 ? 0.0 : v);
        vg_obj_sym(*obj, bar.x1 + TIC + 0.03f, y - TEXT_HEIGHT / 2, TEXT_HEIGHT, 0, text);
        right = std::max(right, bar.x1 + TIC + 0.03f + vg_symlen(TEXT_HEIGHT, text));
    }
    const std::string caption = s.db ? "Amplitude (dB)" : "Amplitude";
    const float width = vg_symlen(TEXT_HEIGHT, caption);
    const float x = std::min(right + 0.05f + TEXT_HEIGHT, disp.xsize - 0.02f);
    vg_obj_sym(*obj, x, (bar.y0 + bar.y1 - width) / 2, TEXT_HEIGHT, 90, caption);
    vg_add_object(frame, std::move(obj));
}

} // namespace norva
