// Contour lines by marching squares: every cell of four samples is cut by its corner pattern, and the cuts
// are followed from cell to cell.
//
//        side 2                inside: at or above the level
//     01-------11              pattern: bit 0 for corner 00, bit 1 for 10, bit 2 for 11, bit 3 for 01
//      |       |
// side 3       side 1
//      |       |
//     00-------10
//        side 0
#include "contours.h"

#include <array>
#include <cstdint>
#include <utility>

namespace norva {

namespace {
// A cut: 16 + 4 times the side it enters by + the side it leaves by; the inside is to its left. 0: none.
using cut = std::uint8_t;
constexpr cut from_to(int from, int to) {
    return static_cast<cut>(16 | from << 2 | to);
}
constexpr int entry(cut c) {
    return c >> 2 & 3;
}
constexpr int way_out(cut c) {
    return c & 3;
}

struct cell {
    cut first = 0, second = 0;
};

constexpr std::array<cell, 16> cuts{{
    {},
    {from_to(0, 3), 0},
    {from_to(1, 0), 0},
    {from_to(1, 3), 0},
    {from_to(2, 1), 0},
    {from_to(0, 3), from_to(2, 1)}, // 00 and 11, with a low middle
    {from_to(2, 0), 0},
    {from_to(2, 3), 0},
    {from_to(3, 2), 0},
    {from_to(0, 2), 0},
    {from_to(1, 0), from_to(3, 2)}, // 10 and 01, with a low middle
    {from_to(1, 2), 0},
    {from_to(3, 1), 0},
    {from_to(0, 1), 0},
    {from_to(3, 0), 0},
    {},
}};
constexpr cell high_middle_5{from_to(0, 1), from_to(2, 3)}, high_middle_10{from_to(3, 0), from_to(1, 2)};

class tracer {
public:
    tracer(std::span<const float> v, int nx, int ny, float level, contour_lines& out)
        : v_(v), nx_(nx), ncol_(nx - 1), nrow_(ny - 1), level_(level), out_(out) {}

    void run() {
        classify();
        for (int i = 0; i < ncol_; i++) {
            start_at(i, 0, 0);
            start_at(i, nrow_ - 1, 2);
        }
        for (int j = 0; j < nrow_; j++) {
            start_at(0, j, 3);
            start_at(ncol_ - 1, j, 1);
        }
        for (int j = 0; j < nrow_; j++)
            for (int i = 0; i < ncol_; i++)
                while (at(i, j).first) follow(i, j, entry(at(i, j).first));
    }

private:
    cell& at(int i, int j) { return cells_[static_cast<std::size_t>(j) * ncol_ + i]; }
    float value(int i, int j) const { return v_[static_cast<std::size_t>(j) * nx_ + i]; }

    void classify() {
        cells_.assign(static_cast<std::size_t>(ncol_) * nrow_, {});
        for (int j = 0; j < nrow_; j++) {
            const float* low = v_.data() + static_cast<std::size_t>(j) * nx_;
            const float* high = low + nx_;
            cell* row = cells_.data() + static_cast<std::size_t>(j) * ncol_;
            int left = (low[0] >= level_) | (high[0] >= level_) << 3;
            for (int i = 0; i < ncol_; i++) {
                const int right = (low[i + 1] >= level_) << 1 | (high[i + 1] >= level_) << 2;
                const int pattern = left | right;
                left = (right >> 1 & 1) | (right << 1 & 8);
                if (pattern == 0 || pattern == 15) continue;
                row[i] = cuts[static_cast<std::size_t>(pattern)];
                if (pattern != 5 && pattern != 10) continue;
                const double mean = 0.25 * (static_cast<double>(low[i]) + low[i + 1] + high[i] + high[i + 1]);
                if (mean >= level_) row[i] = pattern == 5 ? high_middle_5 : high_middle_10;
            }
        }
    }

    void start_at(int i, int j, int side) {
        const cell& c = at(i, j);
        if ((c.first && entry(c.first) == side) || (c.second && entry(c.second) == side)) follow(i, j, side);
    }

    // Takes the cut that enters by `side` out of the cell; 0 when it is not there any more.
    static cut take(cell& c, int side) {
        if (c.first && entry(c.first) == side) {
            const cut found = c.first;
            c.first = c.second;
            c.second = 0;
            return found;
        }
        if (c.second && entry(c.second) == side) return std::exchange(c.second, cut{0});
        return 0;
    }

    void follow(int i, int j, int side) {
        add_point(i, j, side);
        while (i >= 0 && i < ncol_ && j >= 0 && j < nrow_) {
            const cut c = take(at(i, j), side);
            if (!c) break;
            const int out = way_out(c);
            add_point(i, j, out);
            j += out == 2 ? 1 : out == 0 ? -1 : 0;
            i += out == 1 ? 1 : out == 3 ? -1 : 0;
            side = out ^ 2;
        }
        out_.ends.push_back(out_.pts.size());
    }

    // Where the level crosses a side of a cell. Always reckoned from the same end, so that both cells of a
    // side find the same point.
    void add_point(int i, int j, int side) {
        const int i0 = side == 1 ? i + 1 : i, j0 = side == 2 ? j + 1 : j;
        const bool level_side = side == 0 || side == 2;
        const double a = value(i0, j0), b = level_side ? value(i0 + 1, j0) : value(i0, j0 + 1);
        const float t = static_cast<float>((level_ - a) / (b - a));
        out_.pts.push_back(
            {static_cast<float>(i0) + (level_side ? t : 0), static_cast<float>(j0) + (level_side ? 0 : t)});
    }

    std::span<const float> v_;
    int nx_, ncol_, nrow_;
    float level_;
    contour_lines& out_;
    std::vector<cell> cells_;
};
} // namespace

void trace_contours(std::span<const float> v, int nx, int ny, float level, contour_lines& out) {
    out.pts.clear();
    out.ends.clear();
    if (nx < 2 || ny < 2 || v.size() < static_cast<std::size_t>(nx) * ny) return;
    tracer(v, nx, ny, level, out).run();
}

} // namespace norva
