// Places of contour labels, and the gaps that they make.
#include "contour_labels.h"

#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace norva {

constexpr float HEIGHT = 0.07f;
constexpr float MARGIN = 0.03f;            // between a text and the lines around it
constexpr float LEAST_LENGTH = 4;          // of a line that is labelled, in widths of the label
constexpr float LEAST_STRAIGHTNESS = 0.8f; // of the stretch under a label: its chord over its length

namespace {
// How many points of contours lie in each small square of the frame.
class crowd {
public:
    crowd(const _vgrect& box, std::span<const plot_level> levels) : box_(box) {
        nx_ = 1 + static_cast<int>((box.x1 - box.x0) / SIDE);
        ny_ = 1 + static_cast<int>((box.y1 - box.y0) / SIDE);
        counts_.assign(static_cast<std::size_t>(nx_) * static_cast<std::size_t>(ny_), 0);
        for (const plot_level& level : levels)
            for (plot_point p : level.pts) counts_[at(p)]++;
    }
    float around(plot_point p) const { return static_cast<float>(counts_[at(p)]); }

private:
    static constexpr float SIDE = 0.04f; // inches
    std::size_t at(plot_point p) const {
        const int i = std::clamp(static_cast<int>((p.x - box_.x0) / SIDE), 0, nx_ - 1);
        const int j = std::clamp(static_cast<int>((p.y - box_.y0) / SIDE), 0, ny_ - 1);
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(nx_) + static_cast<std::size_t>(i);
    }
    _vgrect box_;
    int nx_, ny_;
    std::vector<std::uint32_t> counts_;
};
} // namespace

static float step(plot_point p, plot_point q) {
    return std::hypot(q.x - p.x, q.y - p.y);
}

static float length(std::span<const plot_point> line) {
    float sum = 0;
    for (std::size_t i = 1; i < line.size(); i++) sum += step(line[i - 1], line[i]);
    return sum;
}

static plot_point along(const contour_label& l, float u, float v) {
    return {l.middle.x + l.cos * u - l.sin * v, l.middle.y + l.sin * u + l.cos * v};
}

static bool inside(const _vgrect& box, const contour_label& l) {
    const float u = l.half + MARGIN, v = HEIGHT / 2 + MARGIN;
    for (plot_point p : {along(l, u, v), along(l, u, -v), along(l, -u, v), along(l, -u, -v)})
        if (!vg_inrect(box, p.x, p.y)) return false;
    return true;
}

// What speaks against a label: lines of all levels under and beside it.
static float crowding(const crowd& lines, const contour_label& l) {
    float sum = 0;
    for (float u : {-1.0f, -0.5f, 0.0f, 0.5f, 1.0f})
        for (float v : {-1.0f, 1.0f}) sum += lines.around(along(l, u * l.half, v * (HEIGHT / 2 + MARGIN)));
    return sum;
}

static bool clear_of(std::span<const contour_label> others, const contour_label& l) {
    return std::all_of(others.begin(), others.end(), [&](const contour_label& o) {
        return step(o.middle, l.middle) > o.half + l.half + 2 * (HEIGHT + MARGIN);
    });
}

// The best stretch of a line for its label; false when none will do.
static bool find_place(const _vgrect& box, std::span<const plot_point> line, const crowd& lines,
                       std::span<const contour_label> others, contour_label& label) {
    const float need = 2 * (label.half + MARGIN);
    float best = HUGE_VALF, way = 0; // way: from point a to point b
    contour_label trial = label;
    for (std::size_t a = 0, b = 0; a < line.size(); a++) {
        while (way < need && b + 1 < line.size()) {
            way += step(line[b], line[b + 1]);
            b++;
        }
        if (way < need) break;
        const plot_point p = line[a], q = line[b];
        const float chord = step(p, q);
        if (chord >= LEAST_STRAIGHTNESS * way) {
            const float turn = q.x < p.x ? -1.0f : 1.0f; // reads from left to right
            trial.middle = {(p.x + q.x) / 2, (p.y + q.y) / 2};
            trial.cos = turn * (q.x - p.x) / chord;
            trial.sin = turn * (q.y - p.y) / chord;
            const float against = crowding(lines, trial) + 20 * (1 - chord / way);
            if (against < best && inside(box, trial) && clear_of(others, trial)) {
                best = against;
                label = trial;
            }
        }
        way = std::max(0.0f, way - (a + 1 < line.size() ? step(line[a], line[a + 1]) : 0));
    }
    return best < HUGE_VALF;
}

// The lines of a level that are long enough for its label, longest first.
static std::vector<std::size_t> lines_to_label(const plot_level& level, float width) {
    std::vector<std::pair<float, std::size_t>> found;
    for (std::size_t k = 0; k < level.ends.size(); k++) {
        const float len = length(level.line(k));
        if (len > LEAST_LENGTH * width) found.push_back({-len, k});
    }
    std::sort(found.begin(), found.end());
    std::vector<std::size_t> order;
    for (auto [len, k] : found) order.push_back(k);
    return order;
}

std::vector<contour_label> place_labels(const _vgrect& box, std::span<const plot_level> levels, int kc) {
    std::vector<contour_label> labels;
    if (kc < 1) return labels;
    const crowd lines(box, levels);
    for (const plot_level& level : levels) {
        const float width = vg_symlen(HEIGHT, level.text);
        int left = kc, tries = 4 * kc;
        for (std::size_t k : lines_to_label(level, width)) {
            if (left == 0 || tries-- == 0) break;
            contour_label label{{}, 1, 0, width / 2, level.text};
            if (!find_place(box, level.line(k), lines, labels, label)) continue;
            labels.push_back(label);
            left--;
        }
    }
    return labels;
}

void draw_label(_vgobject& obj, const contour_label& l) {
    const plot_point foot = along(l, -l.half, -HEIGHT / 2);
    vg_obj_sym(obj, foot.x, foot.y, HEIGHT, std::atan2(l.sin, l.cos) * 180 / std::numbers::pi_v<float>,
               l.text);
}

bool gapped_lines::covered(plot_point p) const {
    return std::any_of(labels_.begin(), labels_.end(), [p](const contour_label& l) {
        const float dx = p.x - l.middle.x, dy = p.y - l.middle.y;
        return std::fabs(l.cos * dx + l.sin * dy) < l.half + MARGIN &&
               std::fabs(l.cos * dy - l.sin * dx) < HEIGHT / 2 + MARGIN;
    });
}

void gapped_lines::draw(std::span<const plot_point> line) {
    bool down = false;
    for (plot_point p : line) {
        const bool gap = !labels_.empty() && covered(p);
        if (!gap) vg_plot_object(obj_, p.x, p.y, down);
        down = !gap;
    }
}

} // namespace norva
