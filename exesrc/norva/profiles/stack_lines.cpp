#include "stack_lines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace norva {

float largest_power(std::span<const float> power) {
    float largest = 0;
    // The comparison is false for NaN; infinities are sorted out by the bound.
    for (float v : power)
        if (v > largest && v <= std::numeric_limits<float>::max()) largest = v;
    return largest;
}

void reduce_row(std::span<const float> row, std::span<float> columns) {
    const std::size_t n = row.size(), ncol = columns.size();
    for (std::size_t c = 0; c < ncol; c++) {
        const std::size_t begin = c * n / ncol, end = std::max((c + 1) * n / ncol, begin + 1);
        columns[c] = largest_power(row.subspan(begin, end - begin));
    }
}

double column_centre(int c, int ncol, int n) {
    const auto begin = static_cast<long long>(c) * n / ncol, end = (c + 1LL) * n / ncol;
    return 0.5 * static_cast<double>(begin + end - 1);
}

hidden_lines::hidden_lines(_vgobject& obj, std::vector<float> x, float top)
    : obj_(obj), x_(std::move(x)), horizon_(x_.size(), -std::numeric_limits<float>::max()), top_(top) {}

void hidden_lines::segment(float x0, float y0, float x1, float y1) {
    if (y0 > top_ && y1 > top_) return;
    if (y0 > top_ || y1 > top_) {
        const float x = x0 + (x1 - x0) * (top_ - y0) / (y1 - y0);
        (y0 > top_ ? x0 : x1) = x;
        (y0 > top_ ? y0 : y1) = top_;
    }
    if (!pen_down_ || x0 != pen_x_ || y0 != pen_y_) vg_plot_object(obj_, x0, y0, 0);
    vg_plot_object(obj_, x1, y1, 1);
    pen_x_ = x1;
    pen_y_ = y1;
    pen_down_ = true;
}

void hidden_lines::add(std::span<const float> y) {
    pen_down_ = false;
    for (std::size_t c = 1; c < x_.size(); c++) {
        // Heights of both ends over what has been drawn so far.
        const float before = y[c - 1] - horizon_[c - 1], after = y[c] - horizon_[c];
        if (before < 0 && after < 0) continue;
        float x0 = x_[c - 1], y0 = y[c - 1], x1 = x_[c], y1 = y[c];
        if (before < 0 || after < 0) { // one end is covered: cut where the curve leaves or enters
            const float u = before / (before - after);
            const float ux = x0 + u * (x1 - x0), uy = y0 + u * (y1 - y0);
            (before < 0 ? x0 : x1) = ux;
            (before < 0 ? y0 : y1) = uy;
        }
        segment(x0, y0, x1, y1);
    }
    for (std::size_t c = 0; c < x_.size(); c++) horizon_[c] = std::max(horizon_[c], y[c]);
}

} // namespace norva
