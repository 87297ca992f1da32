// Opening raw files: the header text, refusals, the keyword window, the window of data in memory.
#include "workstation.h"

#include "app/gpf.h"

#include <algorithm>
#include <cmath>

namespace norva {
namespace {

using test::gate_scene;
using test::write_gate;

class raw_input : public test::workstation {
protected:
    void SetUp() override { start(); }
};

TEST_F(raw_input, header_text_line_by_line) {
    gate_scene scene;
    scene.t0 = 1.5;
    scene.plen = 0.02; // more than the interval: shown as it is, used as 1
    write_gate("a.pfx", scene, [](_gatfile* file) {
        u_kwput_s(file, "TARGET_TYPE", "corner reflector");
        u_kwput_s(file, "Operator", "N. N.");
        u_kwput_i(file, "RUN", 7);
        u_kwput_d(file, "tilt", 0.25);
    });
    open("a.pfx");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(
        page(),
        "File Parameters for a.pfx\n" + std::string(50, '-') + "\n\n" + line("Data source", "test scene") +
            line("Target type", "corner reflector") + line("Tracking info", "") + line("Motion comp", "") +
            line("Signal type", "frequency stepping") + line("Start time (sec)", "1.500000") +
            line("End time (sec)", "1.730000") + line("Waveform repetition interval (sec)", "0.010000") +
            line("Number of time samples", "24") + line("Center frequency (MHz)", "9062.000000") +
            line("Bandwidth (MHz)", "128.000000") + line("Frequency sample spacing (MHz)", "4.000000") +
            line("Number of frequency samples", "32") + line("Duty Ratio", "2.000000") +
            line("KSX (-1 or 1)", "1") + "\nOther Keywords\n" + line("Operator", "N. N.") + line("RUN", "7") +
            line("tilt", "0.250000"));
    EXPECT_EQ(user.rh, 1);
    EXPECT_EQ(user.ksx, 1);
    EXPECT_EQ(user.ksy, 1);
    EXPECT_EQ(wi_numfld_getstr(main_window().numfld[0]), "9000.000000");
    EXPECT_EQ(wi_filesel_getstr(main_window().jfil), "a.jou;1");
}

TEST_F(raw_input, refusals) {
    const struct {
        const char* message;
        std::function<void(_gatfile*)> keyword;
    } cases[] = {
        {"Error: number of pulses < 1!", [](_gatfile* f) { u_kwput_i(f, "NREC", 0); }},
        {"Error: number of freq samples < 1!", [](_gatfile* f) { u_kwput_i(f, "NFREQ", -5); }},
        {"Error: step frequency cannot be 0.!", [](_gatfile* f) { u_kwput_d(f, "STEP_FREQ", 0); }},
        {"Error: step frequency cannot be 0.!", [](_gatfile* f) { u_kwput_d(f, "STEP_FREQ", NAN); }},
        {"Error: first freq < 10 MHz!", [](_gatfile* f) { u_kwput_d(f, "FIRST_FREQ", 9.9e6); }},
        {"Error: first freq < 10 MHz!", [](_gatfile* f) { u_kwput_d(f, "FIRST_FREQ", INFINITY); }},
        {"Error: waveform rep. interval < 0.!", [](_gatfile* f) { u_kwput_d(f, "WFRI", 0); }},
        {"Error: start time is not a number!", [](_gatfile* f) { u_kwput_d(f, "T0", NAN); }},
        {"Error: number of pulses is 1000000000, but the file holds 24!",
         [](_gatfile* f) { u_kwput_i(f, "NREC", 1000000000); }},
        {"Error: number of freq samples is 33, but the file holds 32!",
         [](_gatfile* f) { u_kwput_i(f, "NFREQ", 33); }},
    };
    for (const auto& c : cases) {
        write_gate("bad.pfx", {}, c.keyword);
        messages.clear();
        open("bad.pfx");
        EXPECT_NE(std::find(messages.begin(), messages.end(), c.message), messages.end()) << c.message;
        EXPECT_TRUE(user.rdfile.empty());
        EXPECT_FALSE(click("Range Prof"));
    }
}

TEST_F(raw_input, files_that_are_none) {
    test::write_all("empty.pfx", "");
    test::write_all("text.pfx", "D@ no pattern file\n");
    std::filesystem::create_directory("folder.pfx");
    write_gate("whole.pfx", {});
    const std::string bytes = test::read_all("whole.pfx");
    test::write_all("short.pfx", bytes.substr(0, bytes.size() - 1));
    const struct {
        const char* name;
        int status;
    } cases[] = {
        {"empty.pfx", -6}, {"text.pfx", -5}, {"folder.pfx", -4}, {"missing.pfx", -4}, {"short.pfx", -6}};
    for (const auto& c : cases) {
        messages.clear();
        open(c.name);
        ASSERT_EQ(messages.size(), 1u) << c.name;
        EXPECT_EQ(messages[0].find("ERROR("), 0u);
        EXPECT_NE(messages[0].find(std::string(") in get_gpf_hdr()/get_gpf -- Unable to open file ") +
                                   c.name + " for reading!"),
                  std::string::npos);
        EXPECT_FALSE(click("Range Prof")); // grey
    }
    // Every flipped byte of the head and the list ends in a message, the keyword window or a file that opens.
    for (std::size_t i = 0; i < 400; i++) {
        std::string damaged = bytes;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x5a);
        test::write_all("damaged.pfx", damaged);
        open("damaged.pfx");
        if (kwinon) click("CANCEL");
        if (!user.rdfile.empty() && data_type == raw_kind::gate) {
            click("Range Prof");
            if (rpwinon) click("DISMISS");
        }
    }
}

TEST_F(raw_input, other_machines_and_descending_frequencies) {
    gate_scene scene;
    scene.f0 = 9124;
    scene.df = -4;
    write_gate("down.pfx", scene);
    open("down.pfx");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(user.ksy, -1);
    EXPECT_FLOAT_EQ(gp.bw, -128);
}

TEST_F(raw_input, keyword_window_completes_the_file) {
    write_gate("part.pfx", {}, [](_gatfile* file) {
        u_kwdelete(file, "WFRI");
        u_kwdelete(file, "NFREQ");
    });
    open("part.pfx");
    EXPECT_EQ(kwinon, 1);
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(page(), "");
    const port_win top = rec->find(port_kind::top, "NORVA: manual kw input");
    const std::vector<port_win> fields = rec->all(port_kind::field, top);
    ASSERT_EQ(fields.size(), 12u); // and the list of signal types
    EXPECT_EQ(rec->window(fields[6]).text, "24");
    rec->enter(fields[5], "0.01");
    rec->enter(fields[9], "32");
    rec->enter(fields[0], "typed in");
    EXPECT_TRUE(click("SAVE KWS"));
    EXPECT_EQ(kwinon, 0);
    EXPECT_TRUE(messages.empty());
    EXPECT_NE(page().find("typed in"), std::string::npos);

    // They are in the file now.
    open("part.pfx");
    EXPECT_EQ(kwinon, 0);
    EXPECT_EQ(gp.nf, 32);
    EXPECT_NEAR(gp.wfri, 0.01, 1e-9);
}

TEST_F(raw_input, keyword_window_stays_with_its_file) {
    write_gate("part.pfx", {}, [](_gatfile* file) { u_kwdelete(file, "NREC"); });
    write_gate("good.pfx", {});
    const std::string bytes = test::read_all("good.pfx");
    open("part.pfx");
    ASSERT_EQ(kwinon, 1);
    open("good.pfx");
    EXPECT_EQ(kwinon, 0);
    EXPECT_FALSE(click("SAVE KWS"));
    EXPECT_TRUE(test::read_all("good.pfx") == bytes);
    EXPECT_TRUE(click("Range Prof"));
    EXPECT_EQ(rpwinon, 1);
}

TEST_F(raw_input, keyword_window_of_a_read_only_file) {
    write_gate("locked.pfx", {},
               [](_gatfile* file) { u_kwdelete(file, "KSX"), u_kwdelete(file, "STEP_FREQ"); });
    using std::filesystem::perms;
    std::filesystem::permissions(".", perms::all);
    std::filesystem::permissions("locked.pfx", perms::owner_read | perms::group_read | perms::others_read);
    const test::unprivileged user_of_the_machine;
    open("locked.pfx");
    ASSERT_EQ(kwinon, 1);
    const std::vector<port_win> fields =
        rec->all(port_kind::field, rec->find(port_kind::top, "NORVA: manual kw input"));
    rec->enter(fields[8], "4");
    rec->select(rec->all(port_kind::combo, rec->find(port_kind::top, "NORVA: manual kw input")).at(0),
                "sampled cw");
    click("SAVE KWS");
    EXPECT_EQ(messages, std::vector<std::string>{"Unable to open file locked.pfx for writing!"});
    EXPECT_FLOAT_EQ(gp.df, 4); // good for this run
    EXPECT_EQ(gp.sigtype, 0);  // only to be had from this window
}

TEST_F(raw_input, keyword_window_cancelled) {
    write_gate("part.pfx", {}, [](_gatfile* file) { u_kwdelete(file, "NREC"); });
    open("part.pfx");
    ASSERT_EQ(kwinon, 1);
    click("CANCEL");
    EXPECT_TRUE(user.rdfile.empty());
    EXPECT_EQ(wi_filesel_getstr(main_window().rdfil), "part.pfx");
    EXPECT_FALSE(click("Range Prof"));
}

TEST_F(raw_input, only_forty_keywords_are_looked_at) {
    // The header serves 5; the 35 that follow leave no room for the number of records.
    write_gate("many.pfx", {}, [](_gatfile* file) {
        u_kwdelete(file, "NREC");
        for (int i = 0; i < 40; i++) u_kwput_i(file, "K" + std::to_string(i), i);
        u_kwput_i(file, "NREC", 24);
    });
    open("many.pfx");
    EXPECT_EQ(kwinon, 1);
}

TEST_F(raw_input, signal_types) {
    const struct {
        const char* text;
        int type;
    } cases[] = {{"  narrowband multigate", 1},
                 {"Multi", 1},
                 {"chirp", 2},
                 {"\tLFM", 2},
                 {"sampled cw", 3},
                 {"", 3},
                 {"7", 3}};
    for (const auto& c : cases) EXPECT_EQ(classify_signal(c.text), c.type) << c.text;
}

TEST_F(raw_input, a_large_window_is_read_in_parts) {
    // 3000 of 3200 records of 900 of 1000 samples: sample j of record i is its own number.
    const int nf = 1000, nt = 3200;
    gatfile_ptr file = opengat_opt("large.pfx", nf, GAT_FLOAT, 1);
    std::vector<float> row(2 * nf);
    for (int i = 0; i < nt; i++) {
        for (int j = 0; j < nf; j++)
            row[2 * j] = static_cast<float>(i), row[2 * j + 1] = static_cast<float>(j);
        ASSERT_EQ(putgat(file.get(), 0, row), ZUV_OK);
    }
    ASSERT_EQ(zuvfileclose(std::move(file)), ZUV_OK);
    user.rdfile = "large.pfx";
    data_type = raw_kind::gate;
    gp.nf = nf;
    user.nf0 = 51, user.nf = 900, user.nt0 = 101, user.nt = 3000;
    get_gpf_data(0, 0, 0, 0);
    EXPECT_TRUE(messages.empty());
    ASSERT_EQ(user.pfdata.size(), 2U * 900 * 3000);
    for (std::size_t k = 0; k < 900U * 3000; k++) {
        ASSERT_EQ(user.pfdata[2 * k], static_cast<float>(100 + k / 900)) << k;
        ASSERT_EQ(user.pfdata[2 * k + 1], static_cast<float>(50 + k % 900)) << k;
    }
}

TEST_F(raw_input, the_window_is_read_and_cut) {
    gate_scene scene;
    scene.delay = [](double t) { return 0.01 + t; }; // every sample differs
    write_gate("a.pfx", scene);
    open("a.pfx");
    user.nf0 = 1, user.nf = 32, user.nt0 = 1, user.nt = 24;
    get_gpf_data(0, 1, 1, 32);
    const std::vector<float> whole = copy(user.pfdata);
    const auto at = [&](int row, int column) {
        return whole[2 * (static_cast<std::size_t>(row - 1) * 32 + static_cast<std::size_t>(column) - 1)];
    };

    user.nf0 = 5, user.nf = 7, user.nt0 = 3, user.nt = 11;
    get_gpf_data(1, 1, 1, 32);
    for (int i = 0; i < 11; i++)
        for (int j = 0; j < 7; j++)
            ASSERT_EQ(user.pfdata[2 * static_cast<std::size_t>(i * 7 + j)], at(3 + i, 5 + j));

    // The same window read straight from the file.
    const std::vector<float> cut = samples();
    user.pfdata.clear();
    get_gpf_data(0, 0, 0, 0);
    EXPECT_EQ(samples(), cut);

    // A window outside the one in memory is refused, and no data are left that would not match it.
    user.nf0 = 4;
    get_gpf_data(1, 5, 3, 7);
    EXPECT_EQ(messages.back(), "ERROR(1) in get_gpf_data()/get_gpf -- bad index!");
    EXPECT_FALSE(user.pfdata);
}

} // namespace
} // namespace norva
