// The initial actions: a cut from an image, or one-dimensional data.
#include "procut_int.h"
#include "state/image_cut.h"

namespace norva {

namespace {

void copy_words(const cut_action& run, int first, int n, float* to) {
    std::memcpy(to, &run.words[first], sizeof(float) * static_cast<std::size_t>(n));
}

// The spacing as samples a gate; 0 for one that is not the reciprocal of 2, 3, 4, ...
int samples_a_gate(float dc) {
    const double n = 1.0 / static_cast<double>(dc) + 0.01;
    return n >= 2 ? static_cast<int>(std::min(n, 1e6)) : 0;
}

// What both initial actions leave.
void begin_cut(cut_action& run, int kin) {
    cut_state& s = cut();
    fill_axis(s.cut.u.data(), s.nc, s.c1, s.dc);
    fill_axis(s.transform.u.data(), s.nx, s.x1, s.dx);
    s.psla = 0;
    s.slope = 0;
    s.il = 0;
    s.kmc = subtracted::none;
    s.edited = s.moved = false;
    s.kin = kin;
    s.spline.ids = -1;
    s.kdd = s.kps = s.id = 0;
    s.shown = false;
    for (float v : {img.xc1, img.yc1, img.dxc, img.dyc, img.xpv, img.ypv, img.ang}) run.add(v);
}

} // namespace

bool act_init(cut_action& run) {
    const int lw = run.integer(1), kc = run.integer(2), nc = run.integer(3);
    const float c1 = run.real(4), dc = run.real(5);
    const int ls = samples_a_gate(dc);
    if (ls < 2) return run.fail("***Error 100a");
    if (ls != iradx2(ls)) return run.fail("***Error 100b");
    const int nx = std::max(iradx2(nc), 128 * ls);
    if (nc < 1 || nx > PC_MAX_SAMPLES) return run.fail("***Error 100c");
    if (lw < 0 || lw > 3) return run.fail("***Error 101a...Invalid weighting");
    if (!run.accept(PC_DATA_WORD + 2 * nc)) return false;

    cut_state& s = cut();
    s.nc = nc;
    s.nx = nx;
    s.c1 = c1;
    s.dc = dc;
    s.kc = kc;
    s.ls = ls;
    s.x1 = -static_cast<float>(ls / 2);
    s.dx = static_cast<float>(ls) / static_cast<float>(nx);
    s.ish = nint(-static_cast<double>(c1) / dc) % nx;
    const int nw = nx / ls + 1;
    s.kw1 = (nx - nw + 1) / 2 + 1;
    s.kw2 = (nw + nx - 1) / 2 + 1;
    copy_words(run, PC_DATA_WORD, 2 * nc, s.c.data());
    std::fill(s.c.begin() + 2 * nc, s.c.begin() + 2 * nx, 0.0F);
    set_weighting(lw, s.kw1, s.kw2);
    cut_to_transform();
    begin_cut(run, PC_INIT);
    return true;
}

bool act_init_1d(cut_action& run) {
    const int lw = run.integer(1), kc = run.integer(2), nw = run.integer(3);
    if (lw == 1) return run.fail("***Error 130a");
    if (lw < 0 || lw > 3) return run.fail("***Error 101a...Invalid weighting");
    if (nw < 1 || nw > PC_MAX_RAW) return run.fail("***Error 130b...Number of samples must be 1 to 2048");
    if (!run.accept(PC_DATA_WORD + 2 * nw)) return false;

    cut_state& s = cut();
    kss = kc < 0 ? -1 : 1;
    s.kc = kc < 0 ? -std::max(kc, -2) : kc;
    img.nt = nw;
    cutj.isi = 0; // no image stands behind it
    s.nx = s.nc = std::max(4 * iradx2(nw), 128);
    s.nw = nw;
    s.ls = 1;
    s.x1 = run.real(4);
    s.dx = run.real(5);
    s.dc = static_cast<float>(nw) / static_cast<float>(s.nc);
    s.c1 = -static_cast<float>(s.nc) * s.dc / 2;
    s.ish = s.nc / 2;
    s.kw1 = 1;
    s.kw2 = nw;
    copy_words(run, PC_DATA_WORD, 2 * nw, s.x.data());
    std::fill(s.x.begin() + 2 * nw, s.x.begin() + 2 * s.nx, 0.0F);
    set_weighting(lw, 1, nw);
    weigh(s.x.data(), s.w.data(), s.nx, s.x.data());
    transform_to_cut();
    begin_cut(run, PC_INIT_1D);
    return true;
}

} // namespace norva
