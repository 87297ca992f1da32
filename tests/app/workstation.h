#pragma once
// A running workstation on the recording port, in a folder of its own, with gate files made to measure.

#include "app/main_window.h"
#include "app/start.h"
#include "fileio/gat.h"
#include "image/ximag.h"
#include "journal/journal.h"
#include "port_record/port_record.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "support/temp_dir.h"
#include "toolkit/toolkit.h"
#include "zuvsys/safefile.h"

#include <gtest/gtest.h>

#include <complex>
#include <functional>
#include <numbers>
#include <stdexcept>
#include <unistd.h>

namespace norva::test {

// What a made file holds: frequencies in MHz, times in seconds.
struct gate_scene {
    int nf = 32, nt = 24;
    double f0 = 9000, df = 4, t0 = 0, wfri = 0.01, plen = 0;
    // Delay of the one scatterer, in microseconds, at a time.
    std::function<double(double)> delay = [](double) { return 0.0; };
    double bw() const { return nf * df; }
};

inline void write_gate(const std::string& name, const gate_scene& scene,
                       const std::function<void(_gatfile*)>& keywords = {}) {
    gatfile_ptr file = opengat_opt(name, scene.nf, GAT_FLOAT, 0);
    ASSERT_TRUE(file);
    u_kwput_s(file.get(), "DATA_SOURCE", "test scene");
    u_kwput_s(file.get(), "SIG_TYPE", "frequency stepping");
    u_kwput_i(file.get(), "NREC", scene.nt);
    u_kwput_d(file.get(), "T0", scene.t0);
    u_kwput_d(file.get(), "WFRI", scene.wfri);
    u_kwput_d(file.get(), "STEP_FREQ", scene.df * 1e6);
    u_kwput_d(file.get(), "FIRST_FREQ", scene.f0 * 1e6);
    u_kwput_i(file.get(), "NFREQ", scene.nf);
    u_kwput_d(file.get(), "PULSE_LENGTH", scene.plen);
    u_kwput_i(file.get(), "KSX", 1);
    if (keywords) keywords(file.get());
    std::vector<float> row(2 * static_cast<std::size_t>(scene.nf));
    for (int j = 0; j < scene.nt; j++) {
        const double delay = scene.delay(scene.t0 + j * scene.wfri);
        for (int k = 0; k < scene.nf; k++) {
            const auto z = std::polar(1.0, -2 * std::numbers::pi * (scene.f0 + k * scene.df) * delay);
            row[2 * static_cast<std::size_t>(k)] = static_cast<float>(z.real());
            row[2 * static_cast<std::size_t>(k) + 1] = static_cast<float>(z.imag());
        }
        ASSERT_EQ(putgat(file.get(), 0, row), ZUV_OK);
    }
    ASSERT_EQ(zuvfileclose(std::move(file)), ZUV_OK);
}

// Permissions bind for the length of a scope, also where the tests run as root.
class unprivileged {
public:
    unprivileged() : root_(geteuid() == 0) {
        if (root_ && seteuid(65534) != 0) throw std::runtime_error("cannot give up privileges");
    }
    ~unprivileged() {
        if (root_ && seteuid(0) != 0) std::abort();
    }
    unprivileged(const unprivileged&) = delete;
    unprivileged& operator=(const unprivileged&) = delete;

private:
    bool root_;
};

class workstation : public testing::Test {
protected:
    workstation() : here_(dir.path()) {
        write_all("norva.env", "# test\n");
        safefile_system.fsync = [](int) { return 0; }; // nothing here has to survive the machine
    }

    // The program as just started. A second call is a new run in the same folder.
    void start() {
        rec = std::make_unique<record_port>();
        set_port(rec.get());
        wi_reset_for_tests();
        xrp_reset_for_tests();
        xdp_reset_for_tests();
        ximag_reset_for_tests();
        messages.clear();
        said_ = &messages;
        char name[] = "norva";
        char* argv[] = {name, nullptr};
        norva_start_with({});
        WinMain(1, argv, [](int argc, char** words) {
            norva_main(argc, words);
            app_hooks.popmsg = [](const std::string& text) { said_->push_back(text); };
        });
        rec->run_pending();
        if (msgwinon) click("ACKNOWLEDGE"); // told about a crash file
    }

    // What kill -9 leaves: the files as they are, nothing of the memory.
    void killed() {
        const std::string crash = read_all("norva.mc.sav"), journal = user.jfile, bytes = read_all(journal);
        jrnl(95);
        if (!journal.empty() && !bytes.empty()) write_all(journal, bytes);
        if (!crash.empty()) write_all("norva.mc.sav", crash);
        start();
    }

    void open(const std::string& name) {
        wi_filesel_putstr(main_window().rdfil, name);
        filewin_cb(main_window().rdfil, 1);
    }
    void open_journal(const std::string& name) {
        wi_filesel_putstr(main_window().jfil, name);
        filewin_cb(main_window().jfil, 2);
    }
    bool click(const std::string& text) {
        const bool clicked = rec->click(text);
        rec->run_pending();
        return clicked;
    }
    void go_to(int position) {
        user.count = position;
        mng_jrnl(nullptr, 0);
        rec->run_pending();
    }
    static std::string page() { return wi_editpage_getstr(main_window().epg); }
    // A line of the page that tells about a raw file.
    static std::string line(std::string label, const std::string& value) {
        label.resize(50, '.');
        return label + value + "\n";
    }
    static std::vector<float> copy(const jbuf<float>& block) { return {block.begin(), block.end()}; }
    // The samples in use, without what an earlier and larger window left behind them.
    static std::vector<float> samples() {
        return {user.pfdata.begin(), user.pfdata.begin() + 2 * user.nf * user.nt};
    }

    temp_dir dir;
    std::unique_ptr<record_port> rec;
    std::vector<std::string> messages;

private:
    current_dir here_;
    static inline std::vector<std::string>* said_ = nullptr;
};

} // namespace norva::test
