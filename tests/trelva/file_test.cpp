// Functions that read data files, on files written by the test itself.
#include "fileio/gat.h"
#include "fileio/ufile.h"
#include "show.h"
#include "support/temp_dir.h"
#include "trelva/functions.h"

#include <cmath>

namespace norva::test {
namespace {

const std::string no_data = "error: No data found between T0 and T1.";
const std::string no_overlap = "error: T0 and T1 overlap, no data found.";
const std::string no_type = "error: Bad data type for file type.";

// Six rows of three gates at 0.5 s, from 10 s on. Gate g of row n holds (n + 1, g); the range is 100 + n.
void write_gat(const std::string& name) {
    gatfile_ptr file = opengat(name, "New", 3);
    ASSERT_TRUE(file);
    u_kwput_d(file.get(), "t0", 10.0);
    u_kwput_d(file.get(), "prf", 2.0);
    u_kwput_d(file.get(), "XLAM", 0.03);
    u_kwput_i(file.get(), "RUN", 7);
    u_kwput_s(file.get(), "TEXT", "  a turntable ");
    for (int n = 0; n < 6; n++) {
        const float row[] = {n + 1.0f, 1.0f, n + 1.0f, 2.0f, n + 1.0f, 3.0f};
        ASSERT_EQ(putgat(file.get(), 100.0 + n, row), ZUV_OK);
    }
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
}

class trelva_files : public testing::Test {
protected:
    void SetUp() override { write_gat("a.pfx"); }
    temp_dir dir_;
    current_dir here_{dir_.path()};
    sp_language context_;
};

TEST_F(trelva_files, gate_files) {
    expect_all(context_, {
                             {"GATFILE(\"a.pfx\",TIME)", "[10 10.5 11 11.5 12 12.5]"},
                             {"GATFILE(\"a.pfx\",RANGE)", "[100 101 102 103 104 105]"},
                             {"GATFILE(\"a.pfx\",I,\"ISLOT=1\")", "[1 2 3 4 5 6]"},
                             {"GATFILE(\"a.pfx\",Q,\"ISLOT=3\")", "[3 3 3 3 3 3]"},
                             {"GATFILE(\"a.pfx\",Q,11,11.5)", "[1 2 3 1 2 3]"}, // both ends are in the window
                             {"GATFILE(\"a.pfx\",AMP,11.2,11.7,\"ISLOT=3\")", "[5]"},
                             {"GATFILE(\"a.pfx\",PHASE,-5,10,\"ISLOT=1\")", "[0.125]"}, // cycles
                             {"GATFILE(\"a.pfx\",PRF)", "2"},
                             {"GATFILE(\"a.pfx\",XLAM)", "0.03"},
                             {"GATFILE(\"a.pfx\",WAVELENGTH)", "0.03"},
                             {"GATFILE(\"a.pfx\",NGAT)", "3"},
                             {"GATFILE(\"a.pfx\",NREC)", "6"},
                             {"GATFILE(\"a.pfx\",T0)", "10"},
                             {"GATFILE(\"a.pfx\",T1)", "12.5"},
                             {"GATFILE(\"a.pfx\",HEADER)", "\"a turntable\""},
                             {"GATFILE(\"a.pfx\",ALLTIME,11,11.5)", "[10 10.5 11 11.5 12 12.5]"},
                             {"GATFILE(\"a.pfx\",I,\"ISLOT=4\")", "error: Invalid ISLOT."},
                             {"GATFILE(\"a.pfx\",I,\"ISLOT=-1\")", "error: Invalid ISLOT."},
                             {"GATFILE(\"a.pfx\",YAW)", no_type},
                             {"GATFILE(\"a.pfx\",NPKS)", no_type},
                             {"GATFILE(\"a.pfx\",nothing)", no_type},
                             {"GATFILE(\"a.pfx\")", no_type},
                             {"GATFILE(\"none.pfx\",TIME)", "error: Unable to open file."},
                             {"GATFILE()", "error: Unable to open file."},
                         });
}

TEST_F(trelva_files, arguments) {
    const std::string all = "[10 10.5 11 11.5 12 12.5]";
    expect_all(
        context_,
        {
            {"GATFILE(\"a.pfx\",TIME,10.5,12,2)", "[10.5 11]"},
            {"GATFILE(\"T1 = 12\",\"FILENAME=a.pfx\",\"datatype = TIME\",\"T0=10.5\",\"MAX=2\")",
             "[10.5 11]"},
            {"GATFILE(\"MAXEL=1\",\"a.pfx\",TIME)", "[10]"}, // a keyword takes no place
            {"GATFILE(\"a.pfx\",TIME,\"MA=2\")", "error: Unknown keyword in file reading function: MA"},
            {"GATFILE(\"a.pfx\",TIME,\"MAX=0\")", no_data},
            {"GATFILE(\"a.pfx\",TIME,\"MAX=-3\")", no_data},
            {"GATFILE(\"a.pfx\",TIME,\"USETIMES=1\",\"NAVG=3\",\"WTAUTO=Y\",\"FITALL=TRUE\",\"IDER=1\","
             "\"POINTS=9\")",
             all},
            {"GATFILE(\"a.pfx\",TIME,0,99,9,9)", "error: Too many arguments in file reading function."},
            {"GATFILE(\"a.pfx\",TIME,\"T0=5\",\"T1=5\")",
             "error: Times do not overlap in for file reading function."},
            {"GATFILE(\"a.pfx\",TIME,6,5)", "error: Times do not overlap in for file reading function."},
            {"GATFILE(\"a.pfx\",TIME,12.5)", no_overlap}, // at the last time
            {"GATFILE(\"a.pfx\",TIME,12.4)", "[12.5]"},
            {"GATFILE(\"a.pfx\",TIME,0,9.9)", no_overlap},
            {"GATFILE(\"a.pfx\",TIME,0,10)", "[10]"},
            {"GATFILE(\"a.pfx\",TIME,11.1,11.4)", no_data},
            {"GATFILE(\"a.pfx\",TIME,\"FILETYPE=V3\")", "error: This function not implemented yet."},
            {"GATFILE(\"a.pfx\",TIME,\"FILETYPE=XYZ\")", "error: Unknown file type."},
            {"PKSFILE(\"a.pfx\",TIME,\"FILETYPE=gat\")", all},
            {"V3FILE(\"a.pfx\",TIME)", "error: This function not implemented yet."},
            {"ANYFILE()", "error: This function not implemented yet."},
            {"GATFILE(\"a.pfx\",1/0)", "error: Divide By Zero Error."},
        });
}

TEST_F(trelva_files, keywords) {
    expect_all(context_, {
                             {"GETKW(\"a.pfx\",\"ngat\")", "3"},
                             {"GETKW(\"a.pfx\",\"prf\")", "2"},
                             {"GETKW(\"a.pfx\",xlam)", "0.03"},
                             {"GETKW(\"a.pfx\",run)", "7"},
                             {"GETKW(\"a.pfx\",\"text\")", "\"  a turntable \""},
                             {"GETKW(\"a.pfx\",\"none\")", "error: Parameter does not exist."},
                             {"GETKW(\"none.pfx\",\"prf\")", "error: File does not exist."},
                             {"GETKW(\".\",\"prf\")", "error: File does not exist."},
                             {"GETKW(\"a.pfx\")", "error: Bad number of Arguments in GETWK."},
                         });
    write_all("text.trv", "no data file at all, only text of some length\n");
    expect_all(context_, {{"GETKW(\"text.trv\",\"prf\")", "error: File does not exist."},
                          {"GATFILE(\"text.trv\",TIME)", "error: Unable to open file."}});
}

// The phase of single samples is followed along the rows, that of whole rows within each row.
TEST_F(trelva_files, phase_is_unwrapped) {
    gatfile_ptr file = opengat("turn.pfx", "New", 2);
    for (int n = 0; n < 6; n++) { // 0.3 cycles a row, the second gate 0.41 ahead
        const double first = 2 * 3.14159265358979 * 0.3 * n, second = first + 2 * 3.14159265358979 * 0.41;
        const float row[] = {static_cast<float>(std::cos(first)), static_cast<float>(std::sin(first)),
                             static_cast<float>(std::cos(second)), static_cast<float>(std::sin(second))};
        putgat(file.get(), 0.0, row);
    }
    u_close(std::move(file));
    auto rounded = [&](const std::string& formula) { return shown(context_, "NINT(100*" + formula + ")"); };
    EXPECT_EQ(rounded("GATFILE(\"turn.pfx\",PHASE,\"ISLOT=1\")"), "[0 30 60 90 120 150]");
    EXPECT_EQ(rounded("GATFILE(\"turn.pfx\",PHASE,0,2)"), "[0 41 30 71 -40 1]");
}

} // namespace
} // namespace norva::test
