// Functions of two-dimensional grids, stored row by row.
#include "functions_int.h"
#include "zuvsys/bestint.h"

#include <vector>

namespace norva {

namespace {

// nx * ny elements, made from the column and row of each, both from 1. The sizes must be numbers as they
// stand: text is not read.
template <class F> sp_value grid(sp_args args, F element_of) {
    auto size_of = [](const sp_value& val) { return val.type == SP_SCALER ? bestint(val.scaler) : 0; };
    const int nx = size_of(args[0]), ny = size_of(args[1]);
    if (nx < 1 || ny < 1) return sp_mkerror("Bad argument in X2DINDX.");
    sp_value result = sp_new_array(static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny));
    if (result.type == SP_ERROR) return result;
    double* out = result.ary.own().data();
    for (int iy = 1; iy <= ny; iy++)
        for (int ix = 1; ix <= nx; ix++) *out++ = element_of(ix, iy);
    return result;
}

// Is the element strictly greater than its eight neighbours? `p` points at it, rows have ny elements.
bool is_peak(const double* p, std::ptrdiff_t ny) {
    const double x = *p;
    return x > p[-1] && x > p[1] && x > p[-ny - 1] && x > p[-ny] && x > p[-ny + 1] && x > p[ny - 1] &&
           x > p[ny] && x > p[ny + 1];
}

} // namespace

sp_value fn_x2dindx(sp_args args) {
    return grid(args, [](int ix, int) { return ix; });
}

sp_value fn_y2dindx(sp_args args) {
    return grid(args, [](int, int iy) { return iy; });
}

sp_value fn_find2dpks(sp_args args) {
    double one = 0.0;
    std::span<const double> data = sp_elements(args[0], one);
    const int ny = bestint(sp_number(args[1]));
    if (ny < 1) return sp_mkerror("Bad argument in FIND2DPKS.");
    const std::size_t row = static_cast<std::size_t>(ny), rows = data.size() / row;
    if (rows < 3 || ny < 3) return sp_mkerror("Not enough data to find peaks in FIND2DPKS.");
    std::vector<double> peaks; // 1-based positions
    for (std::size_t i = 1; i + 1 < rows; i++)
        for (std::size_t k = i * row + 1; k + 1 < (i + 1) * row; k++)
            if (is_peak(&data[k], ny)) peaks.push_back(static_cast<double>(k + 1));
    if (peaks.empty()) return sp_mkerror("No peaks found in FIND2DPKS.");
    return sp_scaler_or_array(peaks);
}

} // namespace norva
