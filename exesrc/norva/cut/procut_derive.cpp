// New cuts and motion compensation from a cut of an image. One-dimensional data have neither.
#include "procut_int.h"
#include "signal/interp.h"
#include "signal/peak.h"
#include "state/image_cut.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace norva {

namespace {

constexpr const char* no_image = "***Action not activated";

struct point {
    float x, y; // crossrange, range
};

// The point of the image at a position along the cut.
point image_point(double position) {
    const cut_state& s = cut();
    const double k = (position - s.c1) / s.dc;
    return {static_cast<float>(k * img.dxc + img.xc1), static_cast<float>(k * img.dyc + img.yc1)};
}

// The position of the peak reached from a crosshair; false when there is none.
bool snap_to_peak(float* position) {
    const cut_state& s = cut();
    const float pk = pkpos(s.cut.a.data(), s.nc, std::clamp(cut_sample(*position), 1, s.nc));
    if (!(pk > 0)) return false;
    *position = (pk - 1) * s.dc + s.c1;
    return true;
}

float cut_angle() {
    return static_cast<float>(std::atan2(img.dyc, img.dxc) * 180 / std::numbers::pi);
}

void put_new_cut(cut_action& run, int action, float position, point pivot, float angle) {
    const cut_state& s = cut();
    run.begin_own(action);
    for (float v : {position, static_cast<float>(s.nc) * s.dc, s.dc, pivot.x, pivot.y, angle}) run.put(v);
    cut().il = action;
}

bool put_delays(cut_action& run, int action, const std::vector<float>& delays, const char* bad) {
    for (float d : delays) {
        if (!std::isfinite(d)) return run.fail(bad);
    }
    run.begin_own(action);
    run.put(static_cast<std::int32_t>(delays.size()));
    run.put(delays.data(), static_cast<int>(delays.size()));
    cut().il = action;
    return true;
}

// The delays, microseconds, that move a point of the image to its origin: a constant for its range, and a
// line over the records for its crossrange, zero in the middle of the run.
std::vector<float> centring_delays(point p, float fc, float bw) {
    const double xn = static_cast<double>(img.ksx) * p.x / (static_cast<double>(img.nt) * fc);
    const double yn = static_cast<double>(img.ksy) * p.y / bw;
    std::vector<float> delays(static_cast<std::size_t>(img.nt) + 1);
    for (std::size_t k = 0; k < delays.size(); k++)
        delays[k] = static_cast<float>(yn + (static_cast<double>(k) - 0.5 * (img.nt - 1)) * xn);
    return delays;
}

// A crossrange cut's transform is the dwell, -0.5 to 0.5, backwards when the cut runs towards falling
// crossrange: there the phase spline at the times of the records.
std::vector<float> spline_delays(float fc) {
    const cut_spline& p = cut().spline;
    std::vector<float> cycles(p.ph.begin(), p.ph.begin() + p.nph),
        delays(static_cast<std::size_t>(img.nt) + 1);
    for (float& c : cycles) c = static_cast<float>(c * static_cast<double>(kss) / fc);
    if (cycles.size() < 2) cycles.resize(2, cycles[0]);
    const float turn = img.dxc < 0 ? -1.0F : 1.0F;
    resamp(cycles.data(), static_cast<int>(cycles.size()), img.nt + 1, 1 - (p.x1 + 0.5F * turn) / p.dx,
           turn / (static_cast<float>(img.nt) * p.dx), delays.data());
    return delays;
}

// There is an image behind the cut, and its number of records is one that a result can carry.
bool has_image() {
    return cut().kin == PC_INIT && img.nt >= 1 && img.nt < PC_RESULT_WORDS - 8;
}

} // namespace

bool act_parallel(cut_action& run) {
    const cut_state& s = cut();
    if (!has_image()) return run.fail(no_image);
    if (!run.accept(2)) return false;
    const float dsh = run.real(1);
    const auto half = static_cast<float>(s.nc / 2);
    const point pivot = {img.xc1 + half * img.dxc - img.dyc * dsh / s.dc,
                         img.yc1 + half * img.dyc + img.dxc * dsh / s.dc};
    put_new_cut(run, PC_PARALLEL, dsh, pivot, cut_angle());
    return true;
}

bool act_perpendicular(cut_action& run) {
    if (!has_image()) return run.fail(no_image);
    if (!run.accept(3) || !show_cut(run)) return false;
    float ch1 = run.real(1);
    if (run.integer(2) > 0 && !snap_to_peak(&ch1))
        return run.fail("***Error 114...Invalid crosshair position");
    float angle = cut_angle() + 90;
    if (angle > 135) angle -= 180;
    put_new_cut(run, PC_PERPENDICULAR, ch1, image_point(ch1), angle);
    return true;
}

bool act_shift(cut_action& run) {
    if (!has_image()) return run.fail(no_image);
    if (cut().edited) return run.fail("***Error 121a...Cannot perform M/C on this data");
    if (!run.accept(5) || !show_cut(run)) return false;
    float cs = run.real(1);
    if (run.integer(4) > 0 && !snap_to_peak(&cs))
        return run.fail("***Error 121b...Invalid crosshair position");
    return put_delays(run, PC_SHIFT, centring_delays(image_point(cs), run.real(2), run.real(3)),
                      "***Error 121c...Delays are not finite");
}

bool act_mocomp(cut_action& run) {
    const cut_state& s = cut();
    if (!has_image()) return run.fail(no_image);
    if (s.edited) return run.fail("***Error 122a...Cannot perform M/C on this data");
    if (s.kmc == subtracted::slope_in_image)
        return run.fail("***Error 122b...M/C slope must be in transform domain");
    if (s.kmc == subtracted::spline_in_image)
        return run.fail("***Error 122c...M/C spline must be in transform domain");
    if (s.kmc == subtracted::spline && s.kc != 2)
        return run.fail("***Error 122d...M/C spline only for crossrange cut");
    // The subtraction may have been backed up over.
    if (s.kmc == subtracted::none && s.slope == 0)
        return run.fail("Must subtract phase slope or phase spline first!");
    if (!run.accept(3)) return false;
    const float fc = run.real(1);
    return put_delays(run, PC_MOCOMP,
                      s.kmc == subtracted::spline ? spline_delays(fc)
                                                  : centring_delays(image_point(s.slope), fc, run.real(2)),
                      "***Error 122e...Delays are not finite");
}

} // namespace norva
