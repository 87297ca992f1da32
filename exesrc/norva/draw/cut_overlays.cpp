// Measured values as texts.
#include "draw/cut_overlays.h"

#include "state/user.h"
#include "vgph/vgsym.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace norva {

float xproc_bias = 0;

constexpr float LINE_PITCH = 1.6f, COLUMN_GAP = 1.5f; // in heights of a letter

// Rows of columns, each column as wide as its widest text.
static vgobject_ptr table(float x, float y, float h, const std::vector<std::vector<std::string>>& rows) {
    vgobject_ptr obj = vg_new_object();
    for (std::size_t column = 0;; column++) {
        float width = 0, foot = y - h;
        bool any = false;
        for (const auto& row : rows) {
            if (column < row.size()) {
                any = true;
                vg_obj_sym(*obj, x, foot, h, 0, row[column]);
                if (row.size() > 1) width = std::max(width, vg_symlen(h, row[column])); // no titles
            }
            foot -= LINE_PITCH * h;
        }
        if (!any) return obj;
        x += width + COLUMN_GAP * h;
    }
}

static std::string value6(double v) {
    return strprintf("%6.3f", v);
}

static std::string value8(double v) {
    return strprintf("%8.3f", v);
}

static double shown_slope(double slope, int domain) {
    if (user.nt == 1)
        return domain == 1 ? slope * user.bw : user.f0 + user.bw / 2.0 + (slope + 1.5) * user.bw;
    if (user.nf == 1)
        return domain == 1 ? slope * user.dwell : user.t0 + user.dwell / 2.0 + (slope + 1.5) * user.dwell;
    return slope;
}

phase_slope measure_phase_slope(const fitted_phase& line) {
    const double slope = line.x1 == line.x0 ? 0 : (line.p2 - line.p1) / (line.x1 - line.x0);
    const auto [low, high] = std::minmax(line.x0, line.x1);
    const double slack = 1e-3 * std::fabs(line.step); // crosshairs stand on samples
    phase_slope found{.slope = shown_slope(slope, line.domain), .bias = line.p1 - slope * line.x0};
    double sum = 0;
    int count = 0;
    for (std::size_t i = 0; i < line.phase.size(); i++) {
        const double xp = line.first + static_cast<double>(i) * line.step;
        if (xp < low - slack || xp > high + slack) continue;
        const double d = static_cast<double>(line.phase[i]) - ((xp - line.x0) * slope + line.p1);
        if (std::fabs(d) > std::fabs(found.pk_dev)) found.pk_dev = d;
        sum += d * d;
        count++;
    }
    if (count > 0) found.rms = std::sqrt(sum / count);
    return found;
}

vgobject_ptr draw_vg_ps(float x, float y, float h, const fitted_phase& line) {
    const phase_slope found = measure_phase_slope(line);
    xproc_bias = static_cast<float>(found.bias);
    return table(x, y, h,
                 {{"xhr0", value6(line.x0)},
                  {"xhr1", value6(line.x1)},
                  {"slope", value6(found.slope)},
                  {"rms", value6(found.rms)},
                  {"pk dev", value6(found.pk_dev)},
                  {"bias", value6(found.bias)}});
}

vgobject_ptr draw_vg_ppsyms(float x, float y, float h, std::span<const peak_shape> peaks) {
    std::vector<std::vector<std::string>> rows{{"Position", "Width", "Skewness"}};
    for (const peak_shape& p : peaks)
        rows.push_back({value6(p.position), value6(p.width), value6(p.skewness)});
    return table(x, y, h, rows);
}

vgobject_ptr draw_vg_tsa(float x, float y, float h, const scatterer_pair& found) {
    return table(x, y, h,
                 {{"TSA results:"},
                  {"Location of strongest scatterer:", value8(found.strong_place)},
                  {"Amplitude of strongest scatterer:", value8(found.strong_amplitude)},
                  {"Location of weakest scatterer:", value8(found.weak_place)},
                  {"Amplitude of weakest scatterer:", value8(found.weak_amplitude)}});
}

vgobject_ptr draw_vg_cinfo(float x, float y, float h, const cut_geometry& cut) {
    return table(x, y, h,
                 {{"Image Cut Information"},
                  {"Length of cut (gates)", value6(cut.length)},
                  {"Sample spacing (gates)", value6(cut.spacing)},
                  {"Crossrange pivot point (gates)", value6(cut.crossrange_pivot)},
                  {"Range pivot point (gates)", value6(cut.range_pivot)},
                  {"Angle (deg)", value6(cut.angle)},
                  {"Bias ", value6(cut.bias)}});
}

vgobject_ptr draw_vg_meas(float x, float y, float h, int origin) {
    return table(x, y, h,
                 {{std::string("Measurements are relative to the ") +
                   (origin ? "image origin." : "pivot point in image.")}});
}

} // namespace norva
