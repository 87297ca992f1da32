// The files that norva_sim writes, its command line, and the sample files that come with the program.
#include "direct_sums.h"
#include "fileio/gat.h"
#include "scene/scene_file.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace norva::test {
namespace {

namespace fs = std::filesystem;

// A file read back: what the raw data input would take from it.
struct contents {
    int nf = 0, nt = 0, ksx = 0;
    double f0 = 0.0, df = 0.0, t0 = 0.0, dt = 0.0;
    std::vector<float> data;
    int ksy() const { return df < 0.0 ? -1 : 1; }
};

contents read_file(const std::string& name) {
    gatfile_ptr p = opengat(name, "Old", 1);
    EXPECT_TRUE(p) << name;
    if (!p) return {};
    contents c;
    c.nf = u_kwget_i(p.get(), "NFREQ");
    c.nt = u_kwget_i(p.get(), "NREC");
    c.ksx = u_kwget_i(p.get(), "KSX");
    c.f0 = u_kwget_d(p.get(), "FIRST_FREQ") / 1e6;
    c.df = u_kwget_d(p.get(), "STEP_FREQ") / 1e6;
    c.t0 = u_kwget_d(p.get(), "T0");
    c.dt = u_kwget_d(p.get(), "WFRI");
    EXPECT_EQ(u_kwget_d(p.get(), "t0"), c.t0); // both places carry the same
    EXPECT_NEAR(u_kwget_d(p.get(), "prf") * c.dt, 1.0, 1e-12);
    EXPECT_EQ(u_nelem(p.get()), c.nt);
    EXPECT_EQ(u_nitems(p.get()), c.nf);
    c.data.resize(2 * static_cast<std::size_t>(c.nf) * static_cast<std::size_t>(c.nt));
    EXPECT_EQ(getgat_window(p.get(), 1, c.nt, 1, c.nf, c.data), ZUV_OK);
    return c;
}

TEST(write_scene, files_of_every_kind_hold_the_scene) {
    temp_dir dir;
    scene s{.nf = 6, .nt = 4, .f0 = 8000.0, .df = -2.5, .t0 = 1.5, .dt = 0.25, .noise = 1.0};
    s.points = {{.amplitude = 3.0, .delay = 0.01}};
    std::vector<float> data = scene_data(s);
    double largest = 0.0;
    for (float x : data) largest = std::max(largest, std::fabs(static_cast<double>(x)));
    for (int machine = 1; machine <= 5; machine++)
        for (int dattype : {4, 5, 6}) {
            SCOPED_TRACE(std::to_string(machine) + " " + std::to_string(dattype));
            scene_file form{.dattype = dattype, .machine = machine, .ranges = machine % 2 == 0};
            ASSERT_EQ(write_scene(s, form, dir.file("f.pfx")), 1);
            int written = 0;
            zuvfilemachine(dir.file("f.pfx"), written);
            EXPECT_EQ(written, machine);
            contents c = read_file(dir.file("f.pfx"));
            EXPECT_EQ(std::tie(c.nf, c.nt, c.ksx), std::make_tuple(6, 4, -1));
            EXPECT_EQ(std::tie(c.f0, c.df, c.t0, c.dt), std::make_tuple(8000.0, -2.5, 1.5, 0.25));
            double scale = dattype == 4 ? 120.0 / largest : dattype == 5 ? 30000.0 / largest : 1.0;
            for (std::size_t i = 0; i < data.size(); i++) // half a unit for integers, nothing for floats
                ASSERT_NEAR(c.data[i], data[i] * scale, dattype == 6 ? 0.0 : 0.51) << i;
        }
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
    EXPECT_NE(write_scene({.df = 0.0}, {}, dir.file("g.pfx")), 1);
}

int run_program(const std::string& program, const std::string& words) {
    int status = std::system((program + " " + words + " >sim.out 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int run(const std::string& words) {
    return run_program(NORVA_SIM, words);
}

TEST(norva_sim, named_scenes_show_what_the_help_says) {
    temp_dir dir;
    current_dir here(dir.path());
    for (std::string name : {"drift", "descending", "accel"}) {
        ASSERT_EQ(run("--scene " + name + " --point 1,-3 " + name), 0) << read_all("sim.out");
        contents c = read_file(name);
        EXPECT_EQ(c.df < 0.0, name == "descending");
        double expected = -3.0 + 0.05 * 160 + (name == "accel" ? 0.00025 * 160 * 160 : 0.0);
        EXPECT_NEAR(range_of_row(c.data, c.nf, 160, c.ksy()), expected, 0.07) << name;
    }
    ASSERT_EQ(run("--scene cw cw"), 0);
    contents c = read_file("cw");
    EXPECT_EQ(c.nf, 1);
    EXPECT_NEAR(doppler_of_column(c.data, 1, c.nt, 0, c.ksx) / (c.nt * c.dt), 20.0, 0.05); // Hz
    ASSERT_EQ(run("--scene onetime one"), 0);
    EXPECT_EQ(read_file("one").nt, 1);
    ASSERT_EQ(run("--scene turntable --rotation -5.5e-4 turn"), 0);
    EXPECT_EQ(read_file("turn").ksx, 1);
    gatfile_ptr p = opengat("turn", "Old", 1);
    EXPECT_EQ(u_kwget_d(p.get(), "DA"), -5.5e-4);
    EXPECT_EQ(u_kwget_i(p.get(), "DTYPE"), 0);
    EXPECT_EQ(u_error(), ZUV_OK);
    // Larger than the target, smaller than the ambiguities, which polar formatting refuses.
    double xex = u_kwget_d(p.get(), "XEX"), yex = u_kwget_d(p.get(), "YEX");
    EXPECT_TRUE(xex > 14.0 && xex < 0.5 * 300.0 / 9157.5 / 5.5e-4) << xex;
    EXPECT_TRUE(yex > 16.0 && yex < 30.0) << yex;
    ASSERT_EQ(run("--nf 4 --nt 4 --omit wfri --omit WAVEFORM_REP_INT --text NOTE=hello plain"), 0);
    p = opengat("plain", "Old", 1);
    EXPECT_EQ(u_kwexist(p.get(), "WFRI"), 0);
    EXPECT_EQ(u_kwget_s(p.get(), "note"), "hello");
}

TEST(norva_sim, mistakes_give_a_status_and_leave_nothing) {
    temp_dir dir;
    current_dir here(dir.path());
    EXPECT_EQ(run("--help"), 0);
    EXPECT_NE(read_all("sim.out").find("Exit status"), std::string::npos);
    for (const char* words :
         {"", "a b", "--nf", "--nf 0 f", "--nf 2.5 f", "--nf x f", "--nf nan f", "--df 0 f", "--df -200 f",
          "--point 1 f", "--point 1,2,3,4,5 f", "--point 1,,2 f", "--scene none f", "--nonsense 1 f",
          "--machine 6 f", "--dattype 7 f", "--text =x f", "--nf 60000 --nt 900000 f"}) {
        EXPECT_EQ(run(words), 2) << words;
        EXPECT_FALSE(read_all("sim.out").empty());
    }
    EXPECT_EQ(run("missing/f"), 1);
    write_all("f", "kept");
    EXPECT_EQ(run("--text NOTE=" + std::string(20, 'x') + " . "), 1);
    std::string many;
    for (int i = 0; i < 12; i++) many += "--text N" + std::to_string(i) + "=" + std::string(100, 'x') + " ";
    EXPECT_EQ(run(many + "f"), 1); // the keyword list is full
    EXPECT_EQ(read_all("f"), "kept");
    fs::remove("f");
    fs::remove("sim.out");
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST(addkw, stores_all_keywords_or_none) {
    temp_dir dir;
    current_dir here(dir.path());
    ASSERT_EQ(run("--nf 3 --nt 2 --omit WFRI f"), 0);
    ASSERT_EQ(run_program(
                  NORVA_ADDKW,
                  "f dtype=0 xex=12.500000 RC=1000 sig_type=7 wfri=0.01 NOTE='two words' COUNT=5 MOT_COMP="),
              0);
    gatfile_ptr p = opengat("f", "Old", 1);
    EXPECT_EQ(u_kwget_d(p.get(), "RC"), 1000.0); // a double, since it is read as one
    EXPECT_EQ(u_kwget_d(p.get(), "XEX"), 12.5);
    EXPECT_EQ(u_kwget_d(p.get(), "WFRI"), 0.01);
    EXPECT_EQ(u_kwget_i(p.get(), "DTYPE"), 0);
    EXPECT_EQ(u_error(), ZUV_OK);
    EXPECT_EQ(u_kwget_i(p.get(), "COUNT"), 5);
    EXPECT_EQ(u_kwget_s(p.get(), "SIG_TYPE"), "7");
    EXPECT_EQ(u_kwget_s(p.get(), "NOTE"), "two words");
    EXPECT_EQ(u_kwexist(p.get(), "MOT_COMP"), 0);
    p.reset();

    std::string before = read_all("f"), many;
    for (int i = 0; i < 12; i++) many += " N" + std::to_string(i) + "=" + std::string(100, 'x');
    EXPECT_EQ(run_program(NORVA_ADDKW, "f COUNT=6" + many), 1);
    EXPECT_EQ(run_program(NORVA_ADDKW, "missing A=1"), 1);
    EXPECT_EQ(run_program(NORVA_ADDKW, "f COUNT"), 2);
    EXPECT_EQ(run_program(NORVA_ADDKW, "f"), 2);
    EXPECT_EQ(read_all("f"), before);
}

// What data/README.md says of the sample files.
TEST(sample_files, show_what_is_said_of_them) {
    const std::string data = NORVA_DATA;
    for (auto [name, step] : {std::pair{"/drift.pfx", 2.0}, {"/descending.pfx", -2.0}}) {
        contents c = read_file(data + name);
        ASSERT_EQ(std::tie(c.nf, c.nt, c.df), std::make_tuple(128, 200, step));
        EXPECT_NEAR(range_of_row(c.data, c.nf, 0, c.ksy()), -8.0, 0.07) << name;
        EXPECT_NEAR(range_of_row(c.data, c.nf, 199, c.ksy()), -8.0 + 9.95, 0.13) << name;
    }
    contents c = read_file(data + "/turntable.pfx");
    ASSERT_EQ(std::tie(c.nf, c.nt, c.ksx), std::make_tuple(64, 128, -1));
}

} // namespace
} // namespace norva::test
