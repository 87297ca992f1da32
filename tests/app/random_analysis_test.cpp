// Random analyses of fixed seeds: whatever the order of windows, corrections, decimations, narrower windows
// and jumps in the journal, every position gives the samples back that stood there when the step was made.
#include "workstation.h"

#include "profiles/plot_window.h"

#include <map>
#include <random>

namespace norva {
namespace {

using test::gate_scene;
using test::write_gate;

struct position_state {
    std::vector<float> data, axes; // axes: f0, df, t0, dt
    std::vector<int> window, doppler;
    bool operator==(const position_state&) const = default;
};

class random_analysis : public test::workstation, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        gate_scene scene;
        scene.nf = 40;
        scene.nt = 50;
        scene.t0 = 3;
        scene.plen = 0.004;
        scene.delay = [bw = scene.bw()](double t) { return (4 + 9 * (t - 3) + 11 * (t - 3) * (t - 3)) / bw; };
        write_gate("any.pfx", scene);
        start();
        open("any.pfx");
        random_.seed(static_cast<unsigned>(GetParam()));
    }

    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    double real(double from, double to) { return std::uniform_real_distribution<double>(from, to)(random_); }

    static position_state state() {
        const bool profiles = xdp_initialized() && dpwinon;
        const std::vector<int> parameters = {user.dp_ni, user.dp_ip, user.dp_lag};
        return {samples(),
                {user.f0, user.df, user.t0, user.dt},
                {user.nf0, user.nf, user.nt0, user.nt, user.mc.ptr, rpwinon, dpwinon, imgwinon},
                profiles ? parameters : std::vector<int>()};
    }

    void narrow_window() {
        if (user.pstyle == 0) click("Input Parameter Style");
        const int nf = std::max(3, user.nf - pick(0, 4)), nt = std::max(12, user.nt - pick(0, 4));
        const int values[4] = {user.nf0 + pick(0, std::max(0, user.nf - nf)), nf,
                               user.nt0 + pick(0, std::max(0, user.nt - nt)), nt};
        for (int i = 0; i < 4; i++) wi_numfld_putval(main_window().numfld[i], values[i]);
        if (pick(0, 2) == 0) click("Input Parameter Style"); // there and back, or left in units
    }
    void in_main_window() {
        switch (pick(0, 7)) {
        case 0:
        case 1: click("Range Prof"); break;
        case 2:
        case 3: click("Doppler Prof"); break;
        case 4: narrow_window(); break;
        case 5:
            for (wi_obj* field : main_window().decimation) wi_set_value(field, pick(1, 2));
            if (user.nt > 20 && user.nf > 8) click("Decimate");
            break;
        case 6: click("Input Parameter Style"); break;
        case 7: click("Image"); break;
        }
    }
    void plot_setting() {
        switch (pick(0, 3)) {
        case 0: click("Zoom"); break;
        case 1: click("Unzoom"); break;
        case 2: plotwin_cb(plotwin_window(), pick(15, 17)); break; // interpolation
        case 3:
            plotwin_put_times(real(0, user.nt * user.dt), user.t0 + real(0, user.nt * user.dt));
            plotwin_cb(plotwin_window(), 12);
            if (pick(0, 3) == 0 && user.nt > 25) click("Downsize");
            break;
        }
    }
    void in_range_window() {
        switch (pick(0, 6)) {
        case 0: click("Rmv Drift"); break;
        case 1: xrp_mocomp(0, real(-4, 4)); break;
        case 2: xrp_mocomp(2, real(-0.1, 0.1)); break;
        case 3: {
            click("Rmv Ambs");
            const port_win dialog = rec->find(port_kind::top, "Remove Doppler Ambs");
            rec->enter(rec->all(port_kind::field, dialog).at(0), std::to_string(pick(-5, 5)));
            break;
        }
        case 4:
            click("Plot");
            plot_setting();
            break;
        default: click("DISMISS");
        }
    }
    void in_doppler_window() {
        const std::vector<port_win> fields =
            rec->all(port_kind::field, rec->find(port_kind::top, "NORVA: Doppler profile"));
        switch (pick(0, 7)) {
        case 0:
            rec->enter(fields.at(static_cast<std::size_t>(pick(0, 2))), std::to_string(pick(-1, 20)));
            break;
        case 1:
        case 2: click("INITIALIZE"); break;
        case 3: click("Rmv Drift"); break;
        case 4:
            xdp_set_position(real(-4, 4));
            if (click("Center")) xdp_mocomp(0);
            break;
        case 5:
            click("Plot");
            plot_setting();
            break;
        default: click("DISMISS");
        }
    }
    void jump() {
        if (eoj == 0) return;
        switch (pick(0, 2)) {
        case 0: go_to(pick(1, eoj)); break;
        case 1: mng_jrnl(nullptr, 1); break;
        case 2:
            if (user.count > 1) mng_jrnl(nullptr, 2);
            break;
        }
    }
    // Does something that may be a step, and keeps what stands there now.
    template <class Action> void step(Action action) {
        const int eoj_before = eoj, count_before = user.count;
        action();
        rec->run_pending();
        if (eoj == eoj_before && user.count == count_before) return;
        seen_.erase(seen_.upper_bound(count_before), seen_.end());
        if (user.count > 0) seen_[user.count] = state();
    }
    void act() {
        if (pick(0, 7) == 0)
            jump();
        else
            step([this] {
                if (rpwinon)
                    in_range_window();
                else if (dpwinon)
                    in_doppler_window();
                else if (imgwinon)
                    click("DISMISS");
                else
                    in_main_window();
            });
        ASSERT_EQ(managing, 0);
        ASSERT_LE(user.count, eoj);
        ASSERT_LE(user.mc.ptr, user.mc.nrecs);
    }
    void expect_position(int position) {
        const auto found = seen_.find(position);
        if (found == seen_.end()) return; // two steps came at once
        go_to(position);
        ASSERT_EQ(user.count, position);
        ASSERT_TRUE(state() == found->second) << "position " << position << " of " << eoj;
    }
    void expect_every_position() {
        for (int position = 1; position <= eoj; position++) expect_position(position);
        for (int position = eoj; position >= 1; position--) expect_position(position);
        for (int i = 0; i < 20; i++) expect_position(pick(1, eoj));
    }

    std::mt19937 random_;
    std::map<int, position_state> seen_;
};

TEST_P(random_analysis, gives_every_position_back) {
    for (int i = 0; i < 120; i++) ASSERT_NO_FATAL_FAILURE(act());
    ASSERT_GT(eoj, 1);
    ASSERT_NO_FATAL_FAILURE(expect_every_position());
    go_to(eoj);
    if (analysis_window_open()) step([this] { click("DISMISS"); });
    const int last = eoj;
    ASSERT_TRUE(click("SAVE"));
    start();
    open_journal("any.jou;1");
    EXPECT_TRUE(messages.empty());
    ASSERT_EQ(eoj, last);
    ASSERT_NO_FATAL_FAILURE(expect_every_position());
}
INSTANTIATE_TEST_SUITE_P(seeds, random_analysis, testing::Range(1, 5));

} // namespace
} // namespace norva
