// The range profile picture.
#include "profiles/draw_vg_rp.h"

#include "draw_stack.h"

namespace norva {

void draw_vg_rp(const _vgdisplay& disp, rp_picture& p) {
    stack_picture s;
    s.x1 = p.r1;
    s.dx = p.dr;
    s.n = p.nr;
    s.t0 = p.t0;
    s.dt = p.dt;
    s.data = p.rpdata;
    s.root = p.scaling != PLOT_POWER;
    s.height = p.height;
    s.truncation = p.truncation;
    s.x_label = "Range (gates)";
    s.far_label = "Meters";
    s.far_unit = p.gate_metres;
    s.time_label = "Time (sec)";
    s.stime = p.stime;
    s.etime = p.etime;
    draw_stack(disp, s);
    const std::string notes[] = {formatted("PEAK= %g", s.peak), formatted("PRF= %7.3f", p.prf),
                                 formatted("XLAM= %f", p.xlam), formatted("NSAMP= %d", p.nsamp),
                                 formatted("R0= %7.3f", p.r0)};
    add_stack_notes(disp, *s.frame, notes);
    p.stime = s.stime;
    p.etime = s.etime;
    p.rp_df = s.df;
    p.frame = std::move(s.frame);
    p.peak = s.peak;
    p.every = s.every;
}

} // namespace norva
