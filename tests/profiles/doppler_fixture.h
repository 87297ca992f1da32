#pragma once
// The Doppler profile window on the recording port, over closed-form scenes.

#include "doppler_int.h"
#include "mocomp/mocomp.h"
#include "range_fixture.h"
#include "scene/scene.h"

namespace norva::test {

class doppler_test : public range_test {
protected:
    doppler_test() { xdp_reset_for_tests(); }
    ~doppler_test() override { xdp_reset_for_tests(); }

    void load_scene(const scene& s, int ksx) {
        user.nf0 = user.nt0 = 1;
        user.nf = gp.nf = s.nf;
        user.nt = gp.nrec = s.nt;
        user.ksx = ksx;
        user.ksy = s.df > 0 ? 1 : -1;
        user.f0 = gp.f0 = static_cast<float>(s.f0);
        user.df = gp.df = static_cast<float>(s.df);
        user.bw = s.nf * user.df;
        user.t0 = gp.t0 = static_cast<float>(s.t0);
        user.dt = user.wfri = gp.wfri = static_cast<float>(s.dt);
        user.dwell = s.nt * user.dt;
        user.rh = static_cast<float>(s.duty);
        put_data(scene_data(s));
    }
    static void put_data(const std::vector<float>& data) {
        if (user.pfdata.size() != data.size()) user.pfdata.reset(data.size());
        std::copy(data.begin(), data.end(), user.pfdata.begin());
    }
    void parameters(int wdw, int ifact, int lag) {
        user.dp_ni = wdw;
        user.dp_ip = ifact;
        user.dp_lag = lag;
    }
    void open_doppler() {
        begin_journal();
        xdp();
        rec.run_pending();
    }
    // Opened, and the profiles are shown.
    void show(int wdw, int ifact, int lag) {
        parameters(wdw, ifact, lag);
        open_doppler();
        press("INITIALIZE");
    }

    port_win top() { return getparenthandle(xdp_window()); }
    port_win area() { return rec.all(port_kind::draw, top()).at(0); }
    port_win control(const std::string& text) {
        const port_win toggle = rec.find(port_kind::toggle, text, top());
        return toggle ? toggle : rec.find(port_kind::button, text, top());
    }
    bool press(const std::string& text) { return rec.click(control(text)); }
    bool usable(const std::string& text) { return rec.window(control(text)).enabled; }
    port_win field(int k) { return rec.all(port_kind::field, top()).at(k); } // WDW, IFACT, LAG
    double value(int k) { return std::stod(rec.window(field(k)).text); }
    void press_at(double doppler, double time, int button = 0) {
        const _vgdataframe& df = dp.picture.dp_df;
        press_pixel(area(), vg_to_pixel(*dp.disp, vg_x_loc(df, doppler), vg_y_loc(df, time)), button);
    }
    void press_inches(float x, float y, int button) {
        press_pixel(area(), vg_to_pixel(*dp.disp, x, y), button);
    }
    static std::vector<float> shown() { return {user.dpdata.begin(), user.dpdata.end()}; }

    // Power at a Doppler position (gates) of a window of the present data, summed directly: ni records from
    // `first` (from 0) on, at range 0.
    static double direct_power(int first, int ni, double x) {
        std::complex<double> sum;
        for (int j = 0; j < ni; j++) {
            const double h = 0.54 + 0.46 * std::cos(2 * M_PI * ((j + 0.5) / ni - 0.5));
            for (int k = 0; k < user.nf; k++) {
                const double w = 0.54 + 0.46 * std::cos(2 * M_PI * ((k + 0.5) / user.nf - 0.5));
                const float* a = &user.pfdata[2 * (static_cast<std::size_t>(first + j) * user.nf + k)];
                sum += h * w * std::complex<double>(a[0], a[1]) *
                       std::polar(1.0, user.ksx * 2 * M_PI * j * x / ni);
            }
        }
        return std::norm(sum);
    }
    // Doppler of the strongest return in a window: the top of the parabola through the best of a grid.
    static double direct_peak(int first, int ni) {
        const double step = 0.125;
        double best = 0, most = -1;
        for (double x = -0.5 * ni; x < 0.5 * ni; x += step) {
            const double p = direct_power(first, ni, x);
            if (p > most) {
                most = p;
                best = x;
            }
        }
        const double left = direct_power(first, ni, best - step),
                     right = direct_power(first, ni, best + step);
        return best + 0.5 * step * (left - right) / (left - 2 * most + right);
    }
    // The same in a row of user.dpdata, to a sample.
    static double row_peak(int row) {
        const float* p = &user.dpdata[static_cast<std::size_t>(row) * dp.nf];
        return dp.d1 + dp.dd * static_cast<double>(std::max_element(p, p + dp.nf) - p);
    }
};

} // namespace norva::test
