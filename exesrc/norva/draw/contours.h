#pragma once
// Lines of equal height on a grid of samples.

#include "vgph/vggph.h"

#include <cstddef>
#include <span>
#include <vector>

namespace norva {

// Lines in sample positions, counted from 0: line k is pts[begin(k)] to pts[ends[k] - 1]. A closed one
// repeats its first point at its end.
struct contour_lines {
    struct point {
        float x, y;
    };
    std::vector<point> pts;
    std::vector<std::size_t> ends;

    std::size_t begin(std::size_t line) const { return line == 0 ? 0 : ends[line - 1]; }
};

// The lines of `level` over ny rows of nx finite values, linear along the sides of the cells. Each line
// either closes or runs from border to border, with the higher ground to its left. Where a cell could be cut
// in two ways, the mean of its corners decides.
void trace_contours(std::span<const float> v, int nx, int ny, float level, contour_lines& out);

// The samples that conturplt draws, and where they stand.
struct contour_grid {
    std::span<const float> db; // ny rows of nx, dB below the largest amplitude, finite
    int nx = 0, ny = 0;
    double x1 = 0, dx = 1, y1 = 0, dy = 1; // first sample and spacing, data units
};

// Adds nc contours to `obj`: dc, 2*dc ... nc*dc dB below the largest amplitude, each with up to kc labels
// that stand in gaps of its longest lines.
void conturplt(_vgobject& obj, const _vgdataframe& df, const contour_grid& grid, double dc, int nc, int kc);

} // namespace norva
