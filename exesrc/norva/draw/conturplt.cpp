// Contours of an image: the lines of each level, with labels in gaps of the lines.
#include "contours.h"

#include "contour_labels.h"

#include <cstdio>

namespace norva {

static plot_level to_inches(const _vgdataframe& df, const contour_grid& grid, const contour_lines& lines) {
    const float ax = vg_x_loc(df, grid.x1), ay = vg_y_loc(df, grid.y1);
    const float bx = static_cast<float>(grid.dx * df.xscale), by = static_cast<float>(grid.dy * df.yscale);
    plot_level level;
    level.ends = lines.ends;
    level.pts.reserve(lines.pts.size());
    for (const contour_lines::point p : lines.pts) level.pts.push_back({ax + bx * p.x, ay + by * p.y});
    return level;
}

void conturplt(_vgobject& obj, const _vgdataframe& df, const contour_grid& grid, double dc, int nc, int kc) {
    std::vector<plot_level> levels;
    contour_lines lines;
    std::size_t total = 0;
    for (int k = 1; k <= nc; k++) {
        trace_contours(grid.db, grid.nx, grid.ny, static_cast<float>(k * dc), lines);
        plot_level& level = levels.emplace_back(to_inches(df, grid, lines));
        char text[32];
        std::snprintf(text, sizeof text, "%g", -k * dc);
        level.text = text;
        total += level.pts.size();
    }
    obj.veclst.reserve(obj.veclst.size() + total);
    const std::vector<contour_label> labels = place_labels(df.pltbox, levels, kc);
    gapped_lines out(obj, labels);
    for (const plot_level& level : levels)
        for (std::size_t k = 0; k < level.ends.size(); k++) out.draw(level.line(k));
    for (const contour_label& label : labels) draw_label(obj, label);
}

} // namespace norva
