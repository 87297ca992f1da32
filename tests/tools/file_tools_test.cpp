// norva_info and norva_fmt as commands: output, errors, exit status.
#include "cu/img.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/vec.h"
#include "fileio/gat.h"
#include "scene/scene_file.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace norva::test {
namespace {

struct outcome {
    int status;
    std::string out, err;
};

// In the current folder, with the rest of a shell command line.
outcome run_tool(const char* tool, const std::string& rest) {
    const int status = std::system((std::string("\"") + tool + "\" " + rest + " >out.txt 2>err.txt").c_str());
    return {WEXITSTATUS(status), read_all("out.txt"), read_all("err.txt")};
}

class file_tools : public testing::Test {
protected:
    temp_dir dir;
    current_dir here{dir.path()};

    outcome info(const std::string& rest) { return run_tool(NORVA_INFO, rest); }
    outcome fmt(const std::string& rest) { return run_tool(NORVA_FMT, rest); }
    void write_scene_file(const std::string& name, int machine) {
        scene s{.nf = 3, .nt = 2, .f0 = 9000, .df = 4, .t0 = 1.5, .dt = 0.25};
        s.points = {{.amplitude = 120, .delay = 0}};
        ASSERT_EQ(write_scene(s, {.dattype = GAT_SHORT, .machine = machine, .ranges = true}, name), 1);
    }
};

TEST_F(file_tools, info_shows_a_gate_file_of_any_machine) {
    const std::string names[] = {"VAX", "MIPS", "Sun", "this machine", "Alpha VMS"};
    for (int machine = 1; machine <= 5; machine++) {
        write_scene_file("f.pfx", machine);
        const outcome got = info("--items 2 f.pfx");
        EXPECT_EQ(got.status, 0);
        EXPECT_EQ(got.err, "");
        EXPECT_EQ(
            got.out.find("f.pfx:\n  type       109 (gat)\n  machine    " + std::to_string(machine) + " (" +
                         names[machine - 1] +
                         ")\n  elements   2 of 20 bytes, behind a header of 32 and a reserved area of 1024 "
                         "bytes\nheader\n  ngat               int     3\n  dattype            int     5\n"
                         "  incrng             int     1\n  t0                 double  1.5\n"
                         "  prf                double  4\nkeywords\n"),
            0u)
            << got.out;
        EXPECT_NE(got.out.find("  FIRST_FREQ         double  9e+09\n"), std::string::npos);
        EXPECT_NE(got.out.find("elements\n  0  time 1.5  range 0  (30000, 0)  (30000, 0)  ... of 3\n"
                               "  1  time 1.75  range 0  (30000, 0)  (30000, 0)  ... of 3\n"),
                  std::string::npos)
            << got.out;
    }
}

TEST_F(file_tools, info_shows_other_types) {
    reafile_ptr rea = openrea("t.rea", "New");
    putrea(rea.get(), 1.25, 5000, 0.5f, -0.25f, 3);
    putreakeys(rea.get(), 1.25, 0, 4, 0.5);
    u_kwput_s(rea.get(), "NOTE", "a\x1b[2Jb");
    rea.reset();
    pksfile_ptr pks = openpks("t.pks", "New", 3);
    putpks(pks.get(), 2, std::vector<float>{1, 2, 3}, std::vector<float>{.5f, .25f, 0},
           std::vector<char>{1, 2, 0});
    pks.reset();
    imgfile_ptr img = openimg("t.img", "New", 2);
    putimg(img.get(), std::vector<float>{1, -2, 3.5, 0});
    img.reset();
    vecfile_ptr vec = openvec("t.vec", "New", 5);
    for (double k : {1, 2, 3, 4}) putvec(vec.get(), std::vector<double>{k, .1, 1e-300, -1, 7});
    vec.reset();
    const struct {
        const char *file, *part;
    } cases[] = {
        {"t.rea", "  0  time 1.25  range 5000  elevation 0.5  azimuth -0.25  flag 3\n"},
        {"t.rea", "  xlam               double  0.5\n"},
        {"t.rea", "  NOTE               string  \"a\\x1b[2Jb\"\n"},
        {"--items 2 t.pks", "  0  time 2  (1, 0.5, flag 1)  (2, 0.25, flag 2)  ... of 3\n"},
        {"t.img", "  nsamp              int     2\nelements\n  0  time 0  (1, -2)  (3.5, 0)\n"},
        {"t.vec", "  2  time 2  3  0.1  1e-300  -1  ... of 5\n"},
        {"--all t.img t.vec", "  3  time 3  4  0.1  1e-300  -1  7\n"},
        {"--elements 0 t.vec", "  prf                double  1\n"},
    };
    for (const auto& c : cases) {
        const outcome got = info(c.file);
        EXPECT_EQ(got.status, 0) << c.file;
        EXPECT_NE(got.out.find(c.part), std::string::npos) << got.out;
    }
    EXPECT_EQ(info("t.vec").out.find("  3  time"), std::string::npos);
    write_all("p.cdf", "@D\nNUMBER OF FREQUENCY STEPS = 2\nPOLARIZATION = HH VV\nBASE FREQUENCY = 90\n"
                       "DELTA FREQUENCY = -4\nSTART SCAN = 1\nSTOP SCAN = 2\nDELTA SCAN = 0.5\n@E\n" +
                           std::string(100, ' '));
    EXPECT_EQ(info("p.cdf").out, "p.cdf: CDF pattern file\n  polarizations     HH VV\n"
                                 "  frequencies       2 from 9e+07 Hz by -4e+06 Hz\n"
                                 "  scan positions    3 from 1 by 0.5 degrees\n");
}

TEST_F(file_tools, info_of_files_at_fault) {
    write_scene_file("f.pfx", 4);
    const std::string sound = read_all("f.pfx");
    const auto changed = [&](std::size_t at, char to) {
        std::string bytes = sound;
        bytes[at] = to;
        return bytes;
    };
    std::filesystem::create_directory("folder");
    const struct {
        std::string bytes, err;
        const char* still_shown;
    } cases[] = {
        {"", "it is no data file, or shorter than its head tells", ""},
        {"short", "it is no data file, or shorter than its head tells", ""},
        {sound.substr(0, sound.size() - 1), "it is no data file, or shorter than its head tells", ""},
        {changed(0, 9), "it is no data file, or from an unknown machine", ""},
        {changed(1, 2), "it is no data file (the version is not 1)", ""},
        {changed(2, 99), "it is of another type, or its element size does not agree with its header",
         "  type       99 (unknown)"},
        {changed(2, 101), "the header has the wrong size for its type", "  NFREQ              int     3"},
        {changed(1044 + 4, 4), "it is of another type, or its element size does not agree with its header",
         "  NFREQ              int     3"},
        {"@D\n",
         "the header lacks NUMBER OF FREQUENCY STEPS, POLARIZATION, BASE FREQUENCY, DELTA FREQUENCY, "
         "START SCAN, STOP SCAN, DELTA SCAN",
         ""},
    };
    for (const auto& c : cases) {
        write_all("bad", c.bytes);
        const outcome got = info("bad f.pfx");
        EXPECT_EQ(got.status, 1);
        EXPECT_EQ(got.err, "norva_info: bad: " + c.err + "\n");
        EXPECT_NE(got.out.find(c.still_shown), std::string::npos) << got.out;
        EXPECT_NE(got.out.find("f.pfx:\n"), std::string::npos); // the next file is shown all the same
    }
    for (const char* name : {"none", "folder", "/dev/null"}) {
        const outcome got = info(name);
        EXPECT_EQ(got.status, 1);
        EXPECT_EQ(got.err,
                  std::string("norva_info: ") + name + ": no regular file of that name can be opened\n");
    }
}

const std::string text = "BEGIN_KW\nNREC=1\nNFREQ=2\nT0=0\nWFRI=0.01\nSTEP_FREQ=4e6\nFIRST_FREQ=9e9\nEND_KW\n"
                         "BEGIN_DATA\n1 2\n3 4\nEND_DATA\n";

TEST_F(file_tools, fmt_writes_once) {
    write_all("a.asc", text);
    outcome got = fmt("a.asc");
    EXPECT_EQ(got.status, 0);
    EXPECT_EQ(got.out, "a.pfx: 1 records of 2 samples\n");
    EXPECT_NE(info("a.pfx").out.find("  0  time 0  range 0  (1, 2)  (3, 4)\n"), std::string::npos);
    write_all("a.pfx", "kept");
    got = fmt("a.asc");
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(got.err, "norva_fmt: a.pfx exists; --force replaces it\n");
    write_all("bad.asc", text.substr(0, text.size() - 9));
    got = fmt("--force bad.asc a.pfx");
    EXPECT_EQ(got.status, 1);
    EXPECT_EQ(got.err, "norva_fmt: bad.asc: the text ends without END_DATA\n");
    EXPECT_EQ(read_all("a.pfx"), "kept");
    EXPECT_EQ(fmt("a.asc a.pfx --force").status, 0);
    EXPECT_NE(read_all("a.pfx"), "kept");
    EXPECT_EQ(fmt("- b.pfx < a.asc").status, 0);
    EXPECT_EQ(read_all("b.pfx"), read_all("a.pfx"));
}

TEST_F(file_tools, misuse_and_help) {
    write_all("a.asc", text);
    const struct {
        const char *tool, *words, *err;
        int status;
    } cases[] = {
        {NORVA_FMT, "", "norva_fmt: one text file and at most one gate file (--help)\n", 2},
        {NORVA_FMT, "a b c", "norva_fmt: one text file and at most one gate file (--help)\n", 2},
        {NORVA_FMT, "--what a.asc", "norva_fmt: unknown option --what\n", 2},
        {NORVA_FMT, "- < a.asc", "norva_fmt: text from standard input needs the name of a gate file\n", 2},
        {NORVA_FMT, "--force a.asc ./a.asc", "norva_fmt: ./a.asc is the text itself\n", 2},
        {NORVA_FMT, ". x.pfx", "norva_fmt: .: it is no regular file\n", 1},
        {NORVA_FMT, "none", "norva_fmt: none: No such file or directory\n", 1},
        {NORVA_INFO, "", "norva_info: which file? (--help)\n", 2},
        {NORVA_INFO, "--items", "norva_info: --items needs a number\n", 2},
        {NORVA_INFO, "--items -3 a", "norva_info: --items needs a number\n", 2},
        {NORVA_INFO, "--what", "norva_info: unknown option --what\n", 2},
    };
    for (const auto& c : cases) {
        const outcome got = run_tool(c.tool, c.words);
        EXPECT_EQ(got.status, c.status) << c.words;
        EXPECT_EQ(got.err, c.err);
        EXPECT_EQ(got.out, "");
    }
    for (const char* tool : {NORVA_FMT, NORVA_INFO, NORVA_ADDKW}) {
        const outcome got = run_tool(tool, "--help");
        EXPECT_EQ(got.status, 0);
        EXPECT_NE(got.out.find("Exit status"), std::string::npos);
    }
}

} // namespace
} // namespace norva::test
