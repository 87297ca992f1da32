// One action from the window's block to the block brought up to date, and the correction of the main data.
#include "cut/pc_apply.h"

#include "cut/scatterer.h"
#include "mocomp/mocomp.h"
#include "signal/numbers.h"
#include "state/calls.h"
#include "state/user.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace norva {

namespace {

// Sends one record. The result's words are large, and one cut is open at a time.
bool send(std::span<const std::int32_t> record, pc_result& result) {
    static std::vector<std::int32_t> out(PC_RESULT_WORDS);
    procut(record, out);
    return pc_unpack(out, result);
}

bool is_measurement(const pc_result& r) {
    return r.what != pc_result::COMMON && r.what != pc_result::ENDED;
}

// A back-up that ended at a measurement: the signal it belongs to, and the measurement again.
void show_under_measurement(pc_outcome& o) {
    const std::array<std::int32_t, 2> back = {PC_BACKUP, 1};
    const std::array<std::int32_t, 1> on = {PC_FORWARD};
    int steps = 0;
    pc_result r = o.result;
    while (is_measurement(r) && send(back, r)) steps++;
    if (r.what != pc_result::COMMON) return;
    o.display = r;
    for (; steps > 0; steps--) {
        if (!send(on, r)) return;
    }
    o.result = r;
}

// The stored cut to its end.
void play_back(pc_session& session, pc_outcome& o) {
    const std::array<std::int32_t, 1> on = {PC_FORWARD};
    pc_result r;
    while (send(on, r)) {
        o.result = r;
        if (r.what == pc_result::ENDED) break;
    }
    session.playback = true;
}

void follow_signal(procut_parms& pc, const pc_result& common) {
    const auto& u = common.cut.u;
    const auto& xu = common.transform.u;
    pc.n = static_cast<int>(u.size());
    pc.xn = static_cast<int>(xu.size());
    if (!u.empty()) pc.u0 = u.front(), pc.du = u.back() - u.front();
    if (!xu.empty()) pc.xu0 = xu.front(), pc.xdu = xu.back() - xu.front();
    if (pc.lims.auto_phs) {
        phslim(common.cut.a.data(), common.cut.p.data(), pc.n, &pc.lims.g1y0, &pc.lims.g1y1);
        phslim(common.transform.a.data(), common.transform.p.data(), pc.xn, &pc.lims.g3y0, &pc.lims.g3y1);
    }
    std::array<std::int32_t, 4> par{};
    procutpar(par);
    pc.dwt = par[0];
    pc.lw = par[1];
    pc.id = par[2];
}

void follow(procut_parms& pc, pc_session& session, const pc_result& r) {
    if (r.what == pc_result::COMMON) follow_signal(pc, r);
    if (r.what == pc_result::SLOPE) {
        pc.p1 = r.p1;
        pc.p2 = r.p2;
        pc.phs_msrd = 1;
    }
    if (r.what == pc_result::SPLINE) pc.spl_msrd = 1;
    if (r.mode == PC_SUB_SLOPE || r.mode == PC_SUB_SPLINE) session.mc_ok = true;
}

// A new cut knows nothing of the one before.
void begin(procut_parms& pc, pc_session& session) {
    session = {};
    session.init30 = pc.mode == PC_INIT_1D;
    if (pc.xhrs) pc.xhrs->cnt = 0;
    pc.phs_msrd = pc.spl_msrd = 0;
}

} // namespace

pc_outcome pc_perform(procut_parms& pc, pc_session& session, const pc_surroundings& around) {
    pc_outcome o;
    const int asked = pc.mode;
    if (asked == PC_INIT || asked == PC_INIT_1D) begin(pc, session);
    if (asked == PC_ABORT) {
        play_back(session, o);
    } else {
        pc.fc = cfreq(around.f0, around.df, around.nf);
        pc.bw = around.bw;
        const pc_packed packed = pc_pack(pc, session, around);
        if (packed.record.empty()) { // what is set may be completed
            o.message = packed.refusal;
            return o;
        }
        if (!send(packed.record, o.result)) o.message = o.result.message;
    }
    if (!o.message.empty()) {
        pc.mode = session.last_mode;
        if (pc.xhrs) pc.xhrs->cnt = 0;
        return o;
    }
    if (asked == PC_INIT_1D) pc.kc = std::abs(pc.kc);
    if (asked == PC_BACKUP && is_measurement(o.result)) show_under_measurement(o);
    if (o.display.what == pc_result::COMMON) follow(pc, session, o.display);
    follow(pc, session, o.result);
    pc.mode = session.last_mode = o.result.mode;
    return o;
}

bool pc_correct_data(const pc_result& delays) {
    mcfile& mc = user.mc;
    const auto n = static_cast<std::size_t>(user.nt) + 1;
    if (mc.ptr >= MC_LAST_PTR) {
        popmsg("No more memory for user.mc (maxrecs=)");
        return false;
    }
    if (delays.what != pc_result::DELAYS || delays.delays.size() != n ||
        user.pfdata.size() < 2 * (n - 1) * user.nf) {
        popmsg("The delays of the cut do not fit the data.");
        return false;
    }
    jbuf<double> t(n);
    std::ranges::copy(delays.delays, t.begin());
    mocomp(user.pfdata.data(), user.nf, user.nt, user.f0, user.df, user.rh, t.data());
    mc.t[mc.ptr] = std::move(t);
    mc.flag[mc.ptr] = MC_DELAY;
    mc.nf[mc.ptr] = user.nf;
    mc.nt[mc.ptr] = user.nt;
    mc.nf0[mc.ptr] = user.nf0;
    mc.nt0[mc.ptr] = user.nt0;
    mc.nrecs = ++mc.ptr;
    return true;
}

} // namespace norva
