// Raw data from text: what is accepted, and every fault with its line; a fault leaves no file behind.
#include "fileio/gat.h"
#include "fileio/kwtext.h"
#include "fileio/pfxtext.h"
#include "support/temp_dir.h"
#include "zuvsys/safefile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace norva {
namespace {

const std::string keywords =
    "comment\nBEGIN_KW\nNREC=2\nNFREQ=3\nT0=0.25\nWFRI=0.001235\nPRF=810.000000\n"
    "STEP_FREQ=4e6\nFIRST_FREQ=9000000000.000000\nKSX=1\nTRACK_INFO=\nOperator= N. N. \n"
    "END_KW\n\n";
const std::string samples = "1.5\t-2.5\n3 4\n5,6\n\n7 , 8\r\n  9e0   1E1\n11.0\t-0.000000\n";
const std::string whole = keywords + "BEGIN_DATA\n" + samples + "END_DATA\nmore\n";

std::string with(const std::string& from, const std::string& to) {
    std::string text = whole;
    text.replace(text.find(from), from.size(), to);
    return text;
}

class pfxtext : public testing::Test {
protected:
    test::temp_dir dir;
    std::string text = dir.file("t.asc"), gate = dir.file("t.pfx");

    pfx_text_result convert(const std::string& content) {
        test::write_all(text, content);
        return pfx_from_text(text, gate);
    }
};

TEST_F(pfxtext, accepts_what_people_write) {
    const pfx_text_result result = convert(whole);
    EXPECT_EQ(result.fault, "");
    EXPECT_EQ(result.nrec, 2);
    EXPECT_EQ(result.nfreq, 3);
    const gatfile_ptr file = opengat(gate, "Old", 0);
    ASSERT_TRUE(file);
    EXPECT_EQ(u_nelem(file.get()), 2);
    std::vector<float> out(12);
    ASSERT_EQ(getgat_window(file.get(), 1, 2, 1, 3, out), ZUV_OK);
    EXPECT_EQ(out, (std::vector<float>{1.5, -2.5, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0}));
    EXPECT_EQ(u_kwget_d(file.get(), "WFRI"), 1 / 810.0); // of which the text has four digits
    EXPECT_EQ(file->hd.t0, 0.25);
    EXPECT_EQ(file->hd.prf, 810);
    EXPECT_EQ(u_kwget_i(file.get(), "KSX"), 1);
    EXPECT_EQ(u_kwget_s(file.get(), "Operator"), "N. N.");
    EXPECT_FALSE(u_kwexist(file.get(), "TRACK_INFO"));
    std::string name;
    int type = 0;
    ASSERT_EQ(u_kwindx(file.get(), 5, name, type), ZUV_OK); // behind the header's five
    EXPECT_EQ(name, "NREC");
    EXPECT_EQ(type, KW_INT);
}

TEST_F(pfxtext, intervals_keep_their_own_digits) {
    const struct {
        const char *wfri, *prf;
        double expected;
    } cases[] = {
        {"0.0078125", "128", 0.0078125}, {"0.000123", "", 0.000123}, {"0.001234", "810.000000", 0.001234},
        {"3.000000", "0.333333", 3},     {"0.010000", "100", 0.01},  {"0.000000", "4000000.000000", 2.5e-7},
    };
    for (const auto& c : cases) {
        std::string content = with("WFRI=0.001235", std::string("WFRI=") + c.wfri);
        const std::string prf = "PRF=810.000000";
        content.replace(content.find(prf), prf.size(), std::string("PRF=") + c.prf);
        ASSERT_EQ(convert(content).fault, "") << c.wfri;
        const gatfile_ptr file = opengat(gate, "Old", 0);
        EXPECT_EQ(u_kwget_d(file.get(), "WFRI"), c.expected) << c.wfri;
    }
}

TEST_F(pfxtext, faults) {
    const struct {
        std::string text, fault;
    } cases[] = {
        {"", "the text ends without BEGIN_KW"},
        {"BEGIN_KW\n", "the text ends without END_KW"},
        {keywords, "the text ends without BEGIN_DATA"},
        {keywords + "BEGIN_DATA\n" + samples, "the text ends without END_DATA"},
        {with("NREC=2", "NREC 2"), "line 3: \"NREC 2\" is not NAME=value"},
        {with("NREC=2", "=2"), "line 3: no name stands ahead of \"=\""},
        {with("NREC=2\n", ""), "the keywords lack NREC"},
        {with("T0=0.25\nWFRI=0.001235\n", "T0=\n"), "the keywords lack T0, WFRI"},
        {with("NREC=2", "NREC=-2"), "NREC is \"-2\", not a number of samples"},
        {with("NREC=2", "NREC=99999999999"), "NREC is \"99999999999\", not a number of samples"},
        {with("NFREQ=3", "NFREQ=many"), "NFREQ is \"many\", not a number of samples"},
        {with("KSX=1", "KSX=1.5"), "line 10: KSX takes a whole number, not \"1.5\""},
        {with("STEP_FREQ=4e6", "STEP_FREQ=4 MHz"), "line 8: STEP_FREQ takes a number, not \"4 MHz\""},
        {with("STEP_FREQ=4e6", "STEP_FREQ=1e999"), "line 8: STEP_FREQ takes a number, not \"1e999\""},
        {with("N. N.", std::string(120, 'x')), "line 12: the value of Operator has more than 114 characters"},
        {with("Operator", std::string(64, 'n')), "line 12: the name has more than 63 characters"},
        {with("Operator= N. N.", "ngat=7"), "line 12: ngat cannot be \"7\" in this file"},
        {with("3 4\n", "3 nan\n"), "line 17: \"3 nan\" is not I and Q, two finite numbers"},
        {with("3 4\n", "3 1e99\n"), "line 17: \"3 1e99\" is not I and Q, two finite numbers"},
        {with("3 4\n", "3\n"), "line 17: \"3\" is not I and Q, two finite numbers"},
        {with("3 4\n", "3 4 5\n"), "line 17: \"3 4 5\" is not I and Q, two finite numbers"},
        {with("3 4\n", "3-4\n"), "line 17: \"3-4\" is not I and Q, two finite numbers"},
        {with("3 4\n", ""),
         "line 22: the data hold 1 records of NFREQ=3 samples and 2 samples more, but NREC=2"},
        {with("NREC=2", "NREC=1"), "line 20: more than NREC=1 records"},
        {with("NFREQ=3", "NFREQ=100000000"),
         "line 23: the data hold 0 records of NFREQ=100000000 samples and 6 samples more, but NREC=2"},
        {with("comment", std::string(1 << 20, 'c')), "line 1: longer than 65536 characters"},
        {std::string(1 << 20, '\0'), "line 1: longer than 65536 characters"},
    };
    for (const auto& c : cases) {
        test::write_all(gate, "kept");
        EXPECT_EQ(convert(c.text).fault, c.fault);
        EXPECT_EQ(test::read_all(gate), "kept");
    }
    std::string many = with("comment\n", ""), extra;
    for (int i = 0; i < 60; i++) extra += "NAME_NUMBER_" + std::to_string(i) + "=1.5\n";
    many.insert(many.find("END_KW"), extra);
    EXPECT_NE(convert(many).fault.find(": no room for keyword NAME_NUMBER_"), std::string::npos);
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()),
        2); // no temporary is left
}

TEST_F(pfxtext, files_that_cannot_be) {
    test::write_all(text, whole);
    EXPECT_EQ(pfx_from_text(dir.file("none"), gate).fault, "No such file or directory");
    EXPECT_EQ(pfx_from_text(dir.path().string(), gate).fault, "it is no regular file");
    EXPECT_EQ(pfx_from_text(text, dir.path().string()).fault,
              "Unable to write " + dir.path().string() + ": it is no regular file");
    EXPECT_EQ(pfx_from_text(text, dir.file("no/t.pfx")).fault,
              "Unable to write " + dir.file("no/t.pfx") + ": No such file or directory");
    const auto kept = safefile_system;
    safefile_system.fsync = [](int) { return errno = ENOSPC, -1; };
    EXPECT_EQ(pfx_from_text(text, gate).fault, "Unable to write " + gate + ": No space left on device");
    safefile_system = kept;
    EXPECT_FALSE(std::filesystem::exists(gate));
}

} // namespace
} // namespace norva
