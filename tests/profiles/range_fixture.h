#pragma once
// The range profile window on the recording port, over a scene of point targets, with a journal in a folder
// of its own.

#include "journal/journal.h"
#include "journal/store.h"
#include "port_record/port_record.h"
#include "profiles/plot_window.h"
#include "profiles/range_window.h"
#include "range_int.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "support/temp_dir.h"
#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <vector>

namespace norva::test {

inline std::vector<std::string> messages; // shown since the test began

struct point_target {
    double range = 0, drift = 0, amplitude = 1; // gates, gates per record
};

class range_test : public testing::Test {
protected:
    range_test() {
        wi_reset_for_tests();
        xrp_reset_for_tests();
        reset_run_state();
        set_port(&rec);
        char name[] = "norva";
        char* argv[] = {name, nullptr};
        WinMain(1, argv, [](int, char**) {});
        messages.clear();
        app_hooks.popmsg = [](const std::string& text) { messages.push_back(text); };
    }
    ~range_test() override {
        std::vector<std::int32_t> out;
        journal(std::vector<std::int32_t>{95}, out);
        app_hooks = calls_before;
        journal_hooks = hooks_before;
        xrp_reset_for_tests();
        wi_reset_for_tests();
        set_port(nullptr);
    }

    // nt records of nf frequencies: X band, records 10 ms apart from 1 s on.
    void load(int nf, int nt, int ksy, const std::vector<point_target>& targets) {
        user.nf0 = user.nt0 = 1;
        user.nf = gp.nf = nf;
        user.nt = gp.nrec = nt;
        user.ksy = ksy;
        user.f0 = gp.f0 = 9000;
        user.df = gp.df = 2.0f * ksy;
        user.bw = nf * user.df;
        user.t0 = gp.t0 = 1;
        user.dt = user.wfri = gp.wfri = 0.01f;
        user.dwell = nt * user.dt;
        user.rh = 0;
        user.pfdata.reset(2 * static_cast<std::size_t>(nf) * nt);
        for (int j = 0; j < nt; j++) {
            for (int k = 0; k < nf; k++) {
                std::complex<double> sum;
                for (const point_target& t : targets)
                    sum += std::polar(t.amplitude, -ksy * 2 * M_PI * k * (t.range + t.drift * j) / nf);
                user.pfdata[2 * (static_cast<std::size_t>(j) * nf + k)] = static_cast<float>(sum.real());
                user.pfdata[2 * (static_cast<std::size_t>(j) * nf + k) + 1] = static_cast<float>(sum.imag());
            }
        }
    }
    void begin_journal() {
        user.rdfile = "raw.pfx";
        user.jfile = "test.jou";
        jrnl(90);
        jrnl(0);
    }
    void open() {
        begin_journal();
        xrp(1);
        rec.run_pending();
    }

    // Power of record j (from 0) at a range in gates, summed directly over the present data.
    static double direct_power(int j, double range) {
        std::complex<double> sum;
        for (int k = 0; k < user.nf; k++) {
            const double w = 0.54 + 0.46 * std::cos(2 * M_PI * ((k + 0.5) / user.nf - 0.5));
            const float* a = &user.pfdata[2 * (static_cast<std::size_t>(j) * user.nf + k)];
            sum += w * std::complex<double>(a[0], a[1]) *
                   std::polar(1.0, user.ksy * 2 * M_PI * k * range / user.nf);
        }
        return std::norm(sum);
    }
    // Range of the strongest sample of record j in user.rpdata.
    static double peak_range(int j) {
        const float* row = &user.rpdata[static_cast<std::size_t>(j) * user.nr];
        return rp.r1 + rp.dr * static_cast<double>(std::max_element(row, row + user.nr) - row);
    }
    // Tags of the journal's steps, from record 0 on.
    static std::vector<int> steps() {
        std::vector<int> tags;
        for (int i = 0; i <= eoj; i++) {
            std::vector<std::int32_t> out;
            journal(std::vector<std::int32_t>{JOURNAL_GOTO, i}, out);
            tags.push_back(out.at(1));
        }
        return tags;
    }

    port_win top() { return getparenthandle(xrp_window()); }
    port_win plot_top() { return getparenthandle(plotwin_window()); }
    port_win area() { return rec.all(port_kind::draw, top()).at(0); }
    port_win toggle(const std::string& text) { return rec.find(port_kind::toggle, text, top()); }
    bool press_button(const std::string& text) {
        port_win b = toggle(text);
        return rec.click(b ? b : rec.find(port_kind::button, text, top()));
    }
    port_point pixel(double range, double time) {
        const _vgdataframe& df = rp.picture.rp_df;
        return vg_to_pixel(*rp.disp, vg_x_loc(df, range), vg_y_loc(df, time));
    }
    void press_pixel(port_win on, port_point p, int button) {
        rec.press(on, p.x, p.y, button);
        rec.release(on, p.x, p.y, button);
    }
    void press_at(double range, double time, int button = 0) {
        press_pixel(area(), pixel(range, time), button);
    }
    void press_inches(float x, float y, int button) {
        press_pixel(area(), vg_to_pixel(*rp.disp, x, y), button);
    }
    void move_to(double range, double time) {
        const port_point p = pixel(range, time);
        rec.free_move(area(), p.x, p.y);
    }
    double gates_per_pixel() { return 1 / (rp.picture.rp_df.xscale * rp.disp->xpinch); }
    double seconds_per_pixel() { return 1 / (rp.picture.rp_df.yscale * rp.disp->ypinch); }

    record_port rec;
    temp_dir dir;
    current_dir cwd{dir.path()};
    app_calls calls_before = app_hooks;
    journal_calls hooks_before = journal_hooks;
};

} // namespace norva::test
