// The "WRITE" button: the gate file and the text file, and the way back through both.
#include "workstation.h"

#include "app/gpf.h"
#include "fileio/pfxtext.h"
#include "state/defaults.h"
#include "state/write_out.h"
#include "zuvsys/strprintf.h"

#include <sstream>

namespace norva {
namespace {

using test::gate_scene;
using test::write_gate;

class output_file : public test::workstation {
protected:
    void SetUp() override { start(); }

    // A file whose numbers have few binary digits, so that six decimals hold them.
    void open_scene() {
        write_gate("raw.pfx", {.nf = 8, .nt = 6, .f0 = 9000, .df = 4, .t0 = 0.5, .wfri = 0.0078125},
                   [](_gatfile* file) {
                       u_kwput_s(file, "TARGET_TYPE", "corner reflector");
                       u_kwput_s(file, "Operator", "N. N.");
                       u_kwput_i(file, "RUN", 7);
                       u_kwput_d(file, "tilt", 0.25);
                       u_kwput_d(file, "R0", 12);
                       u_kwput_d(file, "PRF", 1);
                   });
        open("raw.pfx");
        ASSERT_TRUE(messages.empty());
    }
    void load(int nf0, int nf, int nt0, int nt) {
        rec->run_pending();
        chg_parmstyle(nullptr, 0);
        const int window[4] = {nf0, nf, nt0, nt};
        for (int i = 0; i < 4; i++) wi_numfld_putval(main_window().numfld[i], window[i]);
        ASSERT_TRUE(click("Range Prof"));
        ASSERT_TRUE(click("DISMISS"));
        for (std::size_t k = 0; k < user.pfdata.size(); k++)
            user.pfdata[k] = static_cast<float>(k % 127) / 64 - 0.75f;
    }
    void write(const std::string& name) {
        messages.clear();
        ASSERT_TRUE(
            rec->click(rec->find(port_kind::button, "WRITE", rec->find(port_kind::top, "NORVA: main"))));
        const port_win window = rec->find(port_kind::top, "NORVA: write output data file");
        EXPECT_TRUE(rec->visible(window));
        rec->enter(rec->all(port_kind::field, window)[0], name); // the return key writes, as the button does
        rec->run_pending();
        EXPECT_FALSE(rec->visible(window));
    }
    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator("."), std::filesystem::directory_iterator()));
    }
};

TEST_F(output_file, text_and_gate_file_hold_the_window) {
    open_scene();
    load(3, 4, 2, 3);
    user.mc.ptr = 1; // as after a correction
    write("out.pfx");
    EXPECT_TRUE(messages.empty()) << messages[0];
    std::ostringstream expected;
    expected
        << "This file was written by the routine write_pfx in NORVA as a sample file \n"
           "to be tested by norva_fmt which reads an ascii file with i and q and kw's and \n"
           " writes a new pfx file to be read by NORVA\n"
           "BEGIN_KW\nDATA_SOURCE=raw.pfx (written from norva)\nTARGET_TYPE=corner reflector\nTRACK_INFO=\n"
           "MOT_COMP=yes\nSIG_TYPE=frequency stepping\nNREC=3\nT0=0.507812\nWAVEFORM_REP_INT=0.007812\n"
           "WFRI=0.007812\nPRF=128.000000\nPULSE_LENGTH=0.000000\nNFREQ=4\nSTEP_FREQ=4000000.000000\n"
           "FIRST_FREQ=9008000000.000000\nKSX=1\nEND_KW\n\nBEGIN_DATA\n";
    for (int k = 0; k < 12; k++)
        expected << strprintf("%f\t%f\n", 2 * k / 64. - 0.75, (2 * k + 1) / 64. - 0.75);
    expected << "END_DATA\n";
    EXPECT_EQ(test::read_all("out.asc"), expected.str());

    const std::vector<float> written = samples();
    const gatfile_ptr gate = opengat("out.pfx", "Old", 0);
    ASSERT_TRUE(gate);
    const std::string names[] = {"DATA_SOURCE", "TARGET_TYPE", "MOT_COMP",     "SIG_TYPE", "NREC",
                                 "T0",          "WFRI",        "PULSE_LENGTH", "NFREQ",    "STEP_FREQ",
                                 "FIRST_FREQ",  "KSX",         "Operator",     "RUN",      "tilt"};
    for (const std::string& name : names) EXPECT_TRUE(u_kwexist(gate.get(), name)) << name;
    EXPECT_FALSE(u_kwexist(gate.get(), "R0")); // one of the known names
    EXPECT_EQ(u_kwget_d(gate.get(), "PRF"), 128);
    EXPECT_EQ(u_kwget_d(gate.get(), "tilt"), 0.25);
    EXPECT_EQ(u_firsttime(gate.get()), 0.5078125); // by the header alone
    EXPECT_EQ(u_lasttime(gate.get()), 0.5078125 + 2 * 0.0078125);

    click("SAVE");
    open("out.pfx");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(gp.t0, 0.5078125f);
    EXPECT_EQ(gp.f0, 9008);
    chg_parmstyle(nullptr, 0);
    load(1, 4, 1, 3);
    get_gpf_data(0, 0, 0, 0);
    EXPECT_EQ(samples(), written);
}

TEST_F(output_file, text_leads_to_the_same_gate_file) {
    write_gate("raw.pfx", {.nf = 8, .nt = 6, .t0 = 0.5, .wfri = 0.0078125}); // nothing but known keywords
    open("raw.pfx");
    load(1, 8, 1, 6);
    write("out.pfx");
    const pfx_text_result again = pfx_from_text("out.asc", "again.pfx");
    EXPECT_EQ(again.fault, "");
    EXPECT_EQ(test::read_all("again.pfx"), test::read_all("out.pfx"));
}

TEST_F(output_file, nothing_to_write) {
    open_scene();
    const std::size_t before = files();
    write("out.pfx");
    EXPECT_EQ(messages, std::vector<std::string>{"No data to write!"});
    imgwinon = 1;
    write("out.pfx");
    EXPECT_EQ(messages, std::vector<std::string>{"Error (write_pfx): no data to write!"});
    imgwinon = 0;
    EXPECT_EQ(files(), before);
}

TEST_F(output_file, edited_image) {
    open_scene();
    load(1, 8, 1, 6);
    write_hooks.image_hands_over = [] { write_pfx_out(4, 3, -1, std::vector<float>(24, 0.5f)); };
    imgwinon = 1;
    write("image.pfx");
    imgwinon = 0;
    write_hooks.image_hands_over = [] {};
    EXPECT_TRUE(messages.empty());
    EXPECT_FALSE(reduced.samples);
    const gatfile_ptr gate = opengat("image.pfx", "Old", 0);
    ASSERT_TRUE(gate);
    EXPECT_EQ(u_kwget_s(gate.get(), "DATA_SOURCE"), "raw.pfx (reduced after image edit in norva)");
    EXPECT_EQ(u_kwget_i(gate.get(), "NREC"), 3);
    EXPECT_EQ(u_kwget_i(gate.get(), "NFREQ"), 4);
    EXPECT_EQ(u_kwget_i(gate.get(), "KSX"), -1);
    EXPECT_EQ(u_kwget_d(gate.get(), "WFRI"), 2 * 0.0078125); // same span, half the records
    EXPECT_EQ(u_kwget_d(gate.get(), "STEP_FREQ"), 8e6);
    EXPECT_EQ(u_kwget_s(gate.get(), "MOT_COMP"), "no");
}

// An image of the data as they are, written and read back: the data again, but for their scale and the
// corners that the round weighting cuts off.
TEST_F(output_file, open_image_window) {
    gate_scene scene{.nf = 32, .nt = 16}; // powers of two: the image has no zeros around it
    scene.delay = [](double t) { return 0.03 + 0.002 * t; };
    write_gate("raw.pfx", scene);
    open("raw.pfx");
    def.pi_ifx = def.pi_ify = 1;
    ASSERT_TRUE(click("Image"));
    ASSERT_EQ(imgwinon, 1);
    const std::vector<float> before = samples();
    write("image.pfx");
    EXPECT_TRUE(messages.empty()) << messages[0];
    ASSERT_TRUE(click("DISMISS"));
    ASSERT_EQ(imgwinon, 0);
    click("SAVE");
    open("image.pfx");
    ASSERT_EQ(gp.nf, 32);
    ASSERT_EQ(gp.nrec, 16);
    EXPECT_FLOAT_EQ(gp.wfri, 0.01f);
    EXPECT_FLOAT_EQ(gp.df, 4);
    ASSERT_TRUE(click("Range Prof"));
    std::complex<double> product;
    double a2 = 0, b2 = 0;
    for (std::size_t k = 0; k < before.size(); k += 2) {
        const std::complex<double> a(before[k], before[k + 1]), b(user.pfdata[k], user.pfdata[k + 1]);
        if (std::abs(b) == 0) continue;
        product += std::conj(a) * b;
        a2 += std::norm(a);
        b2 += std::norm(b);
    }
    EXPECT_GT(std::abs(product) / std::sqrt(a2 * b2), 0.9999);
    EXPECT_NEAR(a2 / (16 * 32), std::numbers::pi / 4, 0.05);
}

// A window that was typed and refused, or not used yet, is not the one the data in memory have.
TEST_F(output_file, follows_the_data_and_not_the_fields) {
    open_scene();
    load(1, 8, 1, 6);
    wi_numfld_putval(main_window().numfld[0], 5);
    wi_numfld_putval(main_window().numfld[1], 3);
    chg_parmstyle(nullptr, 0); // reads the fields
    ASSERT_EQ(user.nf, 3);
    write("out.pfx");
    EXPECT_EQ(user.nf, 3);
    const gatfile_ptr gate = opengat("out.pfx", "Old", 0);
    ASSERT_TRUE(gate);
    EXPECT_EQ(gate->hd.ngat, 8);
    EXPECT_EQ(u_kwget_d(gate.get(), "FIRST_FREQ"), 9e9);
    std::vector<float> row(16);
    double t = 0, r = 0;
    ASSERT_EQ(getgat(gate.get(), t, r, row), ZUV_OK);
    EXPECT_EQ(row, std::vector<float>(user.pfdata.begin(), user.pfdata.begin() + 16));
}

TEST_F(output_file, refusals_leave_all_files_as_they_were) {
    open_scene();
    load(1, 8, 1, 6);
    const std::string raw = test::read_all("raw.pfx");
    test::write_all("kept.pfx", "kept");
    test::write_all("kept.asc", "kept");
    std::filesystem::create_directory("folder.pfx");
    const std::size_t before = files();
    const struct {
        const char *name, *message;
    } cases[] = {
        {"", "Unable to open  for writing!"},
        {"none/out.pfx", "Unable to open none/out.pfx for writing!"},
        {"folder.pfx", "Unable to open folder.pfx for writing!"},
        {"raw.pfx", "The raw data file raw.pfx cannot be written over; choose another name!"},
        {"./raw.pfx", "The raw data file raw.pfx cannot be written over; choose another name!"},
        {"out.asc", "The name out.asc is that of the text file beside the data; choose another one!"},
    };
    for (const auto& c : cases) {
        write(c.name);
        EXPECT_EQ(messages, std::vector<std::string>{c.message});
    }
    const auto kept = safefile_system;
    safefile_system.write = [](int, const void*, std::size_t) -> ssize_t { return errno = ENOSPC, -1; };
    write("kept.pfx");
    safefile_system = kept;
    EXPECT_EQ(messages, std::vector<std::string>{"Unable to write kept.asc: No space left on device"});
    std::filesystem::rename("raw.pfx", "moved.pfx");
    write("kept.pfx");
    EXPECT_EQ(messages, std::vector<std::string>{"Unable to open raw.pfx for reading!"});
    std::filesystem::rename("moved.pfx", "raw.pfx");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(test::read_all("raw.pfx"), raw);
    EXPECT_EQ(test::read_all("kept.pfx"), "kept");
    EXPECT_EQ(test::read_all("kept.asc"), "kept");
    messages.clear();
    click("WRITE");
    EXPECT_TRUE(click("Write File")); // and now it can
    EXPECT_TRUE(messages.empty());
    EXPECT_NE(test::read_all("kept.pfx"), "kept");
}

// A long path does not push other keywords out of the list.
TEST_F(output_file, long_names) {
    const std::string folder(120, 'd');
    std::filesystem::create_directory(folder);
    write_gate(folder + "/raw.pfx", {.nf = 4, .nt = 4});
    open(folder + "/raw.pfx");
    load(1, 4, 1, 4);
    write("out.pfx");
    EXPECT_TRUE(messages.empty());
    const gatfile_ptr gate = opengat("out.pfx", "Old", 0);
    ASSERT_TRUE(gate);
    EXPECT_EQ(u_kwget_s(gate.get(), "DATA_SOURCE"), "raw.pfx (written from norva)");
}

} // namespace
} // namespace norva
