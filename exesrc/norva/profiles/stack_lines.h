#pragma once
// From rows of samples to the visible part of a stack of curves. Numbers only: positions in plot inches.

#include "vgph/vgph.h"

#include <span>
#include <vector>

namespace norva {

// Largest finite value of a row span; 0 when none is above 0.
float largest_power(std::span<const float> power);

// A row of n samples reduced to at most `columns` values, the largest of each run of neighbours. Column c
// stands for the samples (from 0) c*n/columns up to before (c+1)*n/columns.
void reduce_row(std::span<const float> row, std::span<float> columns);

// Where column c stands on the sample axis: the middle of its samples, counted from 0.
double column_centre(int c, int ncol, int n);

// Draws curves from the front of the stack to the back, leaving out what lies under an earlier one.
class hidden_lines {
public:
    // x: positions of the columns. Curves are cut off above `top`.
    hidden_lines(_vgobject& obj, std::vector<float> x, float top);
    void add(std::span<const float> y); // one curve: a height for every column

private:
    void segment(float x0, float y0, float x1, float y1);

    _vgobject& obj_;
    std::vector<float> x_, horizon_;
    float top_;
    float pen_x_ = 0, pen_y_ = 0;
    bool pen_down_ = false; // the object's pen stands at pen_x_, pen_y_
};

} // namespace norva
