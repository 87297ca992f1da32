#pragma once
// Where the labels of contour lines stand.

#include "vgph/vggph.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace norva {

struct plot_point {
    float x, y; // plot inches
};

// All lines of one level.
struct plot_level {
    std::vector<plot_point> pts;
    std::vector<std::size_t> ends; // behind the last point of each line
    std::string text;

    std::span<const plot_point> line(std::size_t k) const {
        const std::size_t begin = k == 0 ? 0 : ends[k - 1];
        return std::span(pts).subspan(begin, ends[k] - begin);
    }
};

// A text along its line: a box around a middle, turned by an angle.
struct contour_label {
    plot_point middle;
    float cos, sin; // of the angle, which never turns the text upside down
    float half;     // half the width of the text
    std::string text;
};

// Up to kc labels for each level, on its longest lines, inside `box` and clear of one another; where there is
// a choice they stand on straight stretches with little of other lines around.
std::vector<contour_label> place_labels(const _vgrect& box, std::span<const plot_level> levels, int kc);

void draw_label(_vgobject& obj, const contour_label& label);

// Draws lines, except for what a label covers.
class gapped_lines {
public:
    gapped_lines(_vgobject& obj, std::span<const contour_label> labels) : obj_(obj), labels_(labels) {}
    void draw(std::span<const plot_point> line);

private:
    bool covered(plot_point p) const;

    _vgobject& obj_;
    std::span<const contour_label> labels_;
};

} // namespace norva
