// CDF pattern files: headers as people write them, the order of the data, and files that are at fault.
#include "fileio/cdf.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace norva {
namespace {

class cdf : public testing::Test {
protected:
    test::temp_dir dir;
    std::string name = dir.file("pattern.cdf");

    std::string header_of(const std::string& text, cdf_header& header) {
        test::write_all(name, text);
        return read_cdf_header(name, header);
    }
};

// Two polarizations, three positions, two frequencies; amplitude 20 p + s + f dB with p 0, 1; s 0.. ; f 0,
// 0.5 and phases that tell all samples apart.
const std::string items = "@D PATTERN\n"
                          "  NUMBER OF FREQUENCY STEPS    2\n"
                          "  POLARIZATION                 HH  VV\n"
                          "  BASE FREQUENCY               9000.0\n"
                          "  DELTA FREQUENCY              4.0\n"
                          "  START SCAN                   -1.0\n"
                          "  STOP SCAN                    1.0\n"
                          "  DELTA SCAN                   1.0\n";
const std::string data = "0 0  0.5 10\n 1 20  1.5 30\n2 40  2.5 50\n"
                         "20 60 20.5 70\n21 80, 21.5 90\n22 -180 22.5 450\n";

std::string changed(const std::string& from, const std::string& to) {
    std::string text = items;
    text.replace(text.find(from), from.size(), to);
    return text;
}

TEST_F(cdf, header_forms) {
    const struct {
        const char *from, *to;
    } forms[] = {
        {"9000.0", "9000.0"},                                                    // as it is
        {"  NUMBER OF FREQUENCY STEPS    2", "number  of\tFrequency steps = 2"}, // case, blanks, "="
        {"  NUMBER OF FREQUENCY STEPS    2", "NUMBER OF FREQUENCY STEPS 2"},     // one blank
        {"HH  VV", "hh,vv"},
        {"  POLARIZATION                 HH", "POLARIZATION: HH"},
        {"BASE FREQUENCY               9000.0", "BASE FREQUENCY (MHZ): 9.0e3"},
        {"9000.0", "9000000000"}, // Hz
        {"4.0", "4e6"},
        {"  START SCAN ", "  RANGE  = 30 M\n  STOP SCANNER  7\n\n@H other\n  START SCAN ANGLE, DEG  "},
        {"DELTA SCAN                   1.0\n", "DELTA SCAN                   1.0\r\n"},
    };
    for (const auto& form : forms)
        for (const char* divider : {"", "@E\n", "@END OF HEADER\n"}) {
            cdf_header header;
            EXPECT_EQ(header_of(changed(form.from, form.to) + divider + data, header), "") << form.to;
            EXPECT_EQ(header.nfreq, 2);
            EXPECT_EQ(header.nscan, 3);
            EXPECT_EQ(header.f0, 9e9);
            EXPECT_EQ(header.df, 4e6);
            EXPECT_EQ(header.scan0, -1);
            EXPECT_EQ(header.dscan, 1);
            EXPECT_EQ(header.poles, (std::vector<std::string>{"HH", "VV"}));
        }
}

TEST_F(cdf, scans_and_units) {
    const struct {
        const char *start, *stop, *step, *base, *delta;
        int nscan;
        double df;
    } cases[] = {
        {"0", "0", "0.5", "9000", "-4", 1, -4e6},    {"5", "-5", "-2.5", "9000", "4", 5, 4e6},
        {"0", "0.9", "0.3", "9e9", "4", 4, 4e6},     // 0.9 / 0.3 is below 3
        {"0", "1", "0.3", "9e9", "500000", 4, 5e5},  // Hz, as the first frequency
        {"0", "1", "0.3333", "10", "0.25", 4, 25e4}, // printed angles are rounded
    };
    for (const auto& c : cases) {
        std::string text = items;
        const auto put = [&](const std::string& from, const std::string& to) {
            text.replace(text.find(from), from.size(), to);
        };
        put("-1.0", c.start);
        put("SCAN                    1.0", std::string("SCAN = ") + c.stop);
        put("SCAN                   1.0", std::string("SCAN = ") + c.step);
        put("9000.0", c.base);
        put("4.0", c.delta);
        cdf_header header;
        EXPECT_EQ(header_of(text + std::string(200, '\n'), header), "") << c.step;
        EXPECT_EQ(header.nscan, c.nscan) << c.step;
        EXPECT_DOUBLE_EQ(header.df, c.df);
    }
}

TEST_F(cdf, windows_of_the_data) {
    test::write_all(name, items + "@E\n" + data);
    const struct {
        const char* pole;
        cdf_window window;
        std::vector<double> db, degrees;
    } cases[] = {
        {"HH", {1, 3, 1, 2}, {0, 0.5, 1, 1.5, 2, 2.5}, {0, 10, 20, 30, 40, 50}},
        {"VV", {1, 3, 1, 2}, {20, 20.5, 21, 21.5, 22, 22.5}, {60, 70, 80, 90, 180, 90}},
        {"VV", {2, 2, 2, 1}, {21.5, 22.5}, {90, 90}},
        {"HH", {3, 1, 1, 1}, {2}, {40}},
    };
    for (const auto& c : cases) {
        std::vector<float> out(2 * c.db.size());
        ASSERT_EQ(read_cdf_data(name, c.pole, c.window, out), "");
        for (std::size_t k = 0; k < c.db.size(); k++) {
            const double amplitude = std::pow(10, c.db[k] / 20), phase = c.degrees[k] * M_PI / 180;
            EXPECT_NEAR(out[2 * k], amplitude * std::cos(phase), 1e-6 * amplitude) << c.pole << k;
            EXPECT_NEAR(out[2 * k + 1], amplitude * std::sin(phase), 1e-6 * amplitude) << c.pole << k;
        }
    }
    std::vector<float> out(12);
    EXPECT_EQ(read_cdf_data(name, "HV", {1, 3, 1, 2}, out), "it has no polarization HV, only HH, VV");
    for (const cdf_window& outside : {cdf_window{1, 4, 1, 2}, {0, 1, 1, 1}, {1, 1, 2, 2}, {1, 3, 1, 3}})
        EXPECT_EQ(read_cdf_data(name, "HH", outside, out),
                  "its header has changed to 3 scan positions and 2 frequencies");
    // A section behind the data is left alone; line ends mean nothing.
    std::string one_line = data;
    for (char& c : one_line) c = c == '\n' ? ' ' : c;
    test::write_all(name, items + one_line + "\n@F 7 8 9\nnotes\n");
    EXPECT_EQ(read_cdf_data(name, "VV", {1, 3, 1, 2}, out), "");
}

TEST_F(cdf, faults) {
    const std::string counts =
        "POLARIZATION, START SCAN to STOP SCAN and NUMBER OF FREQUENCY STEPS tell of 2 x 3 x 2 samples, ";
    const struct {
        std::string text, fault;
    } cases[] = {
        {"", "it does not start with \"@D\""},
        {"@C\n" + items + data, "it does not start with \"@D\""},
        {"@D\n" + data, "the header lacks NUMBER OF FREQUENCY STEPS, POLARIZATION, BASE FREQUENCY, DELTA "
                        "FREQUENCY, START SCAN, STOP SCAN, DELTA SCAN"},
        {changed("  STOP SCAN                    1.0\n", "") + data, "the header lacks STOP SCAN"},
        {changed("HH  VV", "") + data, "the header lacks POLARIZATION"},
        {changed("HH  VV", "HH XX") + data,
         "line 3: \"XX\" is no polarization (HH, HV, VH, VV, LL, RL, LR or RR)"},
        {changed("HH  VV", "HH HH") + data, "line 3: POLARIZATION names HH twice"},
        {changed("9000.0", "9 GHz") + data, "line 4: BASE FREQUENCY: \"9 GHz\" is no number"},
        {changed("9000.0", "nan") + data, "line 4: BASE FREQUENCY: \"nan\" is no number"},
        {changed("9000.0", "1e999") + data, "line 4: BASE FREQUENCY: \"1e999\" is no number"},
        {changed("STEPS    2", "STEPS    0") + data, "NUMBER OF FREQUENCY STEPS is 0"},
        {changed("STEPS    2", "STEPS    2.5") + data, "NUMBER OF FREQUENCY STEPS is 2.5"},
        {changed("STEPS    2", "STEPS    9e12") + data, "NUMBER OF FREQUENCY STEPS is 9e+12"},
        {changed("-1.0", "3") + data, "no scan goes from START SCAN 3 to STOP SCAN 1 by DELTA SCAN 1"},
        {changed("SCAN                   1.0", "SCAN  0") + data,
         "no scan goes from START SCAN -1 to STOP SCAN 1 by DELTA SCAN 0"},
        {changed("STEPS    2", "STEPS    900000000") + data,
         "POLARIZATION, START SCAN to STOP SCAN and NUMBER OF FREQUENCY STEPS tell of 2 x 3 x 900000000 "
         "samples, more than its 354 bytes can hold"},
        {items + data + "1 2\n", counts + "but the data hold 13"},
        {items + data.substr(0, data.size() - 9) + std::string(99, '\n'), counts + "but the data hold 11"},
        {items + data + "7\n", "the last sample has no phase"},
        {items + "@E\n0 0 nan 3\n" + data, "line 10: \"nan 3\" is no number"},
        {items + "0 0\n1 2x3\n" + data, "line 10: \"2x3\" is no number"},
        {items + data + "9e9 0\n", "line 15: no sample has 9e+09 dB and 0 degrees"},
        {items + std::string(1 << 20, 'x') + "\n" + data, "line 9: longer than 65536 characters"},
        {items + data + std::string(1 << 20, ' '), "line 15: longer than 65536 characters"},
    };
    for (const auto& c : cases) {
        cdf_header header;
        std::string fault = header_of(c.text, header);
        std::vector<float> out(12);
        if (fault.empty()) fault = read_cdf_data(name, "HH", {1, 3, 1, 2}, out);
        EXPECT_EQ(fault, c.fault) << c.text.substr(0, 600);
    }
    cdf_header header;
    EXPECT_EQ(read_cdf_header(dir.file("none"), header), "No such file or directory");
    EXPECT_EQ(read_cdf_header(dir.path().string(), header), "it is no regular file");
    EXPECT_FALSE(is_cdf(dir.path().string()));
    EXPECT_FALSE(is_cdf("/dev/null"));
}

} // namespace
} // namespace norva
