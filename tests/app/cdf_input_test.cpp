// CDF pattern files as raw data: header text, polarization window, an analysis that is replayed.
#include "workstation.h"

#include "app/cdf_input.h"
#include "app/gpf.h"
#include "zuvsys/strprintf.h"

namespace norva {
namespace {

class cdf_input : public test::workstation {
protected:
    void SetUp() override { start(); }

    // 16 frequencies, 21 positions; one scatterer, in VV at twice the delay and ten times the amplitude.
    static std::string pattern(const std::string& pole_names, int poles) {
        std::string text = "@D PATTERN\n  NUMBER OF FREQUENCY STEPS    16\n  POLARIZATION    " + pole_names +
                           "\n  BASE FREQUENCY   9000\n  DELTA FREQUENCY   4\n  START SCAN   -1\n"
                           "  STOP SCAN   1\n  DELTA SCAN   0.1\n@E\n";
        for (int p = 0; p < poles; p++)
            for (int s = 0; s < 21; s++)
                for (int f = 0; f < 16; f++)
                    text += strprintf("%.3f %.6f\n", 20. * p, -360. * 0.01 * (p + 1) * (9000 + 4 * f));
        return text;
    }
    void load() {
        ASSERT_TRUE(click("Range Prof"));
        ASSERT_TRUE(click("DISMISS"));
    }
    port_win window() { return rec->find(port_kind::top, "NORVA: polarization"); }
    // The names of the toggles that are on.
    std::string pressed() {
        std::string names;
        for (port_win toggle : rec->all(port_kind::toggle, window()))
            if (rec->window(toggle).checked) names += rec->window(toggle).text + " ";
        return names;
    }
};

TEST_F(cdf_input, header_text) {
    test::write_all("a.cdf", pattern("HH VV", 2));
    open("a.cdf");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(page(),
              "File Parameters for CDF file a.cdf\n" + std::string(50, '-') + "\n\n" +
                  line("Data source", "data source") + line("Target type", "target type") +
                  line("Tracking info", "track info") + line("Motion comp", "motion") +
                  line("Signal type", "stepped") + line("Start time (sec)", "-1.000000") +
                  line("End time (sec)", "1.000000") +
                  line("Waveform repetition interval (sec)", "0.100000") +
                  line("Number of time samples", "21") + line("Center frequency (MHz)", "9030.000000") +
                  line("Bandwidth (MHz)", "64.000000") + line("Frequency sample spacing (MHz)", "4.000000") +
                  line("Number of frequency samples", "16") + line("Duty Ratio", "0.000000") +
                  line("KSX (-1 or 1)", "-1"));
    EXPECT_EQ(gp.sigtype, 3);
    EXPECT_TRUE(rec->visible(window()));
    test::write_gate("b.pfx", {});
    open("b.pfx");
    EXPECT_FALSE(rec->visible(window()));
}

TEST_F(cdf_input, one_toggle_is_on) {
    test::write_all("a.cdf", pattern("HH VV", 2));
    open("a.cdf");
    EXPECT_EQ(pressed(), "HH ");
    const struct {
        const char *press, *on;
    } cases[] = {{"VV", "VV "}, {"RL", "RL "}, {"RL", "HH "}, {"HH", "HH "}, {"RR", "RR "}};
    for (const auto& c : cases) {
        ASSERT_TRUE(click(c.press));
        EXPECT_EQ(pressed(), c.on);
        EXPECT_EQ(poles + " ", c.on);
    }
    ASSERT_TRUE(click("Done"));
    EXPECT_FALSE(rec->visible(window()));
    EXPECT_EQ(poles, "RR");
}

TEST_F(cdf_input, data_of_the_chosen_polarization) {
    test::write_all("a.cdf", pattern("HH VV", 2));
    open("a.cdf");
    load();
    ASSERT_TRUE(user.pfdata);
    EXPECT_NEAR(std::abs(std::complex(user.pfdata[0], user.pfdata[1])), 1, 1e-5);
    open("a.cdf");
    ASSERT_TRUE(click("VV"));
    load();
    const std::complex<float> sample(user.pfdata[34], user.pfdata[35]); // second position, second frequency
    EXPECT_NEAR(std::abs(sample - 10.0f * std::polar(1.0f, static_cast<float>(std::remainder(
                                                               -2 * std::numbers::pi * 0.02 * 9004,
                                                               2 * std::numbers::pi)))),
                0, 1e-4);
    open("a.cdf");
    ASSERT_TRUE(click("HV"));
    ASSERT_TRUE(click("Range Prof"));
    EXPECT_EQ(messages,
              (std::vector<std::string>{"Error in CDF file a.cdf: it has no polarization HV, only HH, VV!",
                                        "ERROR(2) in filewin_cb()/norva -- no raw data!"}));
    EXPECT_EQ(rpwinon, 0);
}

// Every position of a journal gives the samples that it had when it was made.
TEST_F(cdf_input, replays) {
    test::write_all("a.cdf", pattern("VV", 1));
    open("a.cdf");
    ASSERT_TRUE(click("VV"));
    load();
    wi_incdecfld_putval(main_window().decimation[0], 2);
    ASSERT_TRUE(click("Decimate"));
    const int last = user.count;
    const std::vector<float> decimated = samples();
    ASSERT_NE(user.nt, 21);
    go_to(1);
    EXPECT_EQ(user.nt, 21);
    go_to(last);
    EXPECT_EQ(samples(), decimated);
    EXPECT_EQ(messages.size(), 1u); // the warning ahead of the decimation
    EXPECT_FALSE(click("HH"));      // grey: an analysis keeps to its polarization

    // In a new run, too, where HH is pressed at first.
    ASSERT_TRUE(click("SAVE"));
    EXPECT_TRUE(click("HH"));
    start();
    EXPECT_EQ(poles, "HH");
    open_journal("a.jou;1");
    EXPECT_EQ(poles, "VV");
    EXPECT_EQ(pressed(), "VV ");
    go_to(last);
    EXPECT_EQ(samples(), decimated);
    EXPECT_TRUE(messages.empty());
}

TEST_F(cdf_input, becomes_a_gate_file) {
    test::write_all("a.cdf", pattern("HH", 1));
    open("a.cdf");
    load();
    const std::vector<float> before = samples();
    rec->click("WRITE");
    rec->enter(rec->all(port_kind::field, rec->find(port_kind::top, "NORVA: write output data file"))[0],
               "a.pfx");
    EXPECT_TRUE(messages.empty());
    click("SAVE");
    open("a.pfx");
    EXPECT_NE(page().find("a.cdf (written from norva)"), std::string::npos);
    EXPECT_NE(page().find("stepped"), std::string::npos);
    load();
    EXPECT_EQ(samples(), before);
}

TEST_F(cdf_input, faults_are_told_and_the_file_is_not_used) {
    const struct {
        std::string text, message;
    } cases[] = {
        {"@D\n", "Error in CDF file bad.cdf: the header lacks NUMBER OF FREQUENCY STEPS, POLARIZATION, BASE "
                 "FREQUENCY, DELTA FREQUENCY, START SCAN, STOP SCAN, DELTA SCAN!"},
        {"@D\nSTART SCAN = x\n", "Error in CDF file bad.cdf: line 2: START SCAN: \"x\" is no number!"},
        {"@D\nNUMBER OF FREQUENCY STEPS = 2\nPOLARIZATION = HH\nBASE FREQUENCY = 9000\nDELTA FREQUENCY = 0\n"
         "START SCAN = 0\nSTOP SCAN = 1\nDELTA SCAN = 1\n@E\n1 2 3 4 5 6 7 8\n",
         "Error: step frequency cannot be 0.!"},
        {"@D\nNUMBER OF FREQUENCY STEPS = 2\nPOLARIZATION = HH\nBASE FREQUENCY = 9\nDELTA FREQUENCY = 4\n"
         "START SCAN = 1\nSTOP SCAN = 1\nDELTA SCAN = 1\n@E\n1 2 3 4\n",
         "Error: first freq < 10 MHz!"},
        {"@D\nNUMBER OF FREQUENCY STEPS = 2\nPOLARIZATION = HH\nBASE FREQUENCY = 90\nDELTA FREQUENCY = 4\n"
         "START SCAN = 1\nSTOP SCAN = 0\nDELTA SCAN = -1\n@E\n1 2 3 4 5 6 7 8\n",
         "Error: waveform rep. interval < 0.!"},
    };
    for (const auto& c : cases) {
        test::write_all("bad.cdf", c.text);
        messages.clear();
        open("bad.cdf");
        EXPECT_EQ(messages, std::vector<std::string>{c.message});
        EXPECT_TRUE(user.rdfile.empty());
        EXPECT_FALSE(click("Range Prof"));
        EXPECT_FALSE(rec->visible(window()));
    }
}

} // namespace
} // namespace norva
