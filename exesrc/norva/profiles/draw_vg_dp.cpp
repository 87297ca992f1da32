// The Doppler profile picture.
#include "profiles/draw_vg_dp.h"

#include "draw_stack.h"

namespace norva {

void draw_vg_dp(const _vgdisplay& disp, dp_picture& p) {
    stack_picture s;
    s.x1 = p.d1;
    s.dx = p.dd;
    s.n = p.nf;
    s.t0 = p.t0;
    s.dt = p.dt;
    s.data = p.dpdata;
    s.root = p.scaling != PLOT_POWER;
    s.height = p.height;
    s.truncation = p.truncation;
    s.x_label = "Doppler (gates)";
    s.far_label = "Hz";
    s.far_unit = p.gate_hertz;
    s.time_label = "Time (s)";
    s.stime = p.stime;
    s.etime = p.etime;
    draw_stack(disp, s);
    const std::string notes[] = {formatted("PEAK= %g", s.peak), formatted("WDW= %d", p.wdw),
                                 formatted("IFACT= %d", p.ifact), formatted("LAG= %d", p.lag)};
    add_stack_notes(disp, *s.frame, notes);
    p.stime = s.stime;
    p.etime = s.etime;
    p.dp_df = s.df;
    p.frame = std::move(s.frame);
    p.peak = s.peak;
    p.every = s.every;
}

} // namespace norva
