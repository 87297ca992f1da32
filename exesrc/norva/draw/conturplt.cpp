// Contours of an image: the lines of each level, with labels in gaps of the line.
#include "contours.h"

#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace norva {

constexpr float LABEL_HEIGHT = 0.07f;
constexpr float LABEL_MARGIN = 0.04f;     // between a label and the ends of its line
constexpr double LEAST_LENGTH = 3;        // of a line that is labelled, in label widths
constexpr double LEAST_STRAIGHTNESS = .9; // of the stretch that a label replaces: its chord over its length

namespace {
struct spot {
    float x, y;
};
// A line on the plot, in inches, with the way from its start to each point.
struct plot_line {
    std::vector<spot> pts;
    std::vector<float> way;
};
struct label {
    std::size_t first, last; // the points it stands between
    spot middle;
    float angle; // degrees, never upside down
};
} // namespace

static void to_inches(const _vgdataframe& df, const contour_grid& grid, const contour_lines& lines,
                      std::size_t k, plot_line& out) {
    const float ax = vg_x_loc(df, grid.x1), ay = vg_y_loc(df, grid.y1);
    const float bx = static_cast<float>(grid.dx * df.xscale), by = static_cast<float>(grid.dy * df.yscale);
    out.pts.clear();
    out.way.clear();
    for (std::size_t i = lines.begin(k); i < lines.ends[k]; i++) {
        const spot p{ax + bx * lines.pts[i].x, ay + by * lines.pts[i].y};
        const float step = out.pts.empty() ? 0 : std::hypot(p.x - out.pts.back().x, p.y - out.pts.back().y);
        out.way.push_back(out.way.empty() ? 0 : out.way.back() + step);
        out.pts.push_back(p);
    }
}

static void draw_line(_vgobject& obj, std::span<const spot> pts) {
    for (std::size_t i = 0; i < pts.size(); i++) vg_plot_object(obj, pts[i].x, pts[i].y, i > 0);
}

static bool clear_of(std::span<const spot> taken, spot at, float gap) {
    return std::all_of(taken.begin(), taken.end(),
                       [&](spot t) { return std::hypot(t.x - at.x, t.y - at.y) > gap; });
}

// The straightest stretch for a text of this width, in the frame and clear of the labels that stand already.
static bool find_place(const _vgdataframe& df, const plot_line& line, float width,
                       std::span<const spot> taken, label& out) {
    const float need = width + 2 * LABEL_MARGIN;
    double best = LEAST_STRAIGHTNESS;
    bool found = false;
    for (std::size_t a = 0, b = 0; a < line.pts.size(); a++) {
        while (b < line.pts.size() && line.way[b] - line.way[a] < need) b++;
        if (b == line.pts.size()) break;
        const spot p = line.pts[a], q = line.pts[b], mid{(p.x + q.x) / 2, (p.y + q.y) / 2};
        const double straight = std::hypot(q.x - p.x, q.y - p.y) / (line.way[b] - line.way[a]);
        if (straight <= best) continue;
        const _vgrect& box = df.pltbox;
        const float room = need / 2;
        if (mid.x < box.x0 + room || mid.x > box.x1 - room || mid.y < box.y0 + room || mid.y > box.y1 - room)
            continue;
        if (!clear_of(taken, mid, 1.5f * need)) continue;
        best = straight;
        found = true;
        const float rad = std::atan2(q.y - p.y, q.x - p.x);
        const float deg = rad * 180 / std::numbers::pi_v<float>;
        out = {a, b, mid, deg > 90 ? deg - 180 : deg < -90 ? deg + 180 : deg};
    }
    return found;
}

static void draw_label(_vgobject& obj, const label& at, float width, const std::string& text) {
    const float rad = at.angle * std::numbers::pi_v<float> / 180, c = std::cos(rad), s = std::sin(rad);
    const float u = -width / 2, v = -LABEL_HEIGHT / 2; // from the middle to the lower left corner
    vg_obj_sym(obj, at.middle.x + c * u - s * v, at.middle.y + s * u + c * v, LABEL_HEIGHT, at.angle, text);
}

// The lines that are long enough to carry a label, longest first.
static std::vector<std::size_t> lines_to_label(const contour_lines& lines, const contour_grid& grid,
                                               const _vgdataframe& df, float width) {
    std::vector<std::pair<float, std::size_t>> by_length;
    plot_line line;
    for (std::size_t k = 0; k < lines.ends.size(); k++) {
        to_inches(df, grid, lines, k, line);
        if (line.way.back() > LEAST_LENGTH * width) by_length.push_back({-line.way.back(), k});
    }
    std::sort(by_length.begin(), by_length.end());
    std::vector<std::size_t> order;
    for (auto [length, k] : by_length) order.push_back(k);
    return order;
}

static void draw_level(_vgobject& obj, const _vgdataframe& df, const contour_grid& grid,
                       const contour_lines& lines, int labels, const std::string& text,
                       std::vector<spot>& taken) {
    plot_line line;
    std::vector<bool> done(lines.ends.size(), false);
    if (labels > 0) {
        const float width = vg_symlen(LABEL_HEIGHT, text);
        for (std::size_t k : lines_to_label(lines, grid, df, width)) {
            if (labels == 0) break;
            to_inches(df, grid, lines, k, line);
            label at{};
            if (!find_place(df, line, width, taken, at)) continue;
            draw_label(obj, at, width, text);
            draw_line(obj, std::span(line.pts).first(at.first + 1));
            draw_line(obj, std::span(line.pts).subspan(at.last));
            taken.push_back(at.middle);
            done[k] = true;
            labels--;
        }
    }
    for (std::size_t k = 0; k < lines.ends.size(); k++) {
        if (done[k]) continue;
        to_inches(df, grid, lines, k, line);
        draw_line(obj, line.pts);
    }
}

void conturplt(_vgobject& obj, const _vgdataframe& df, const contour_grid& grid, double dc, int nc, int kc) {
    contour_lines lines;
    std::vector<spot> taken; // middles of the labels
    for (int k = 1; k <= nc; k++) {
        trace_contours(grid.db, grid.nx, grid.ny, static_cast<float>(k * dc), lines);
        char text[32];
        std::snprintf(text, sizeof text, "%g", -k * dc);
        draw_level(obj, df, grid, lines, kc, text, taken);
    }
}

} // namespace norva
