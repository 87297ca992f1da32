// Functions that read data files, on files written by the test itself.
#include "cu/dop.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/vec.h"
#include "fileio/gat.h"
#include "fileio/ufile.h"
#include "show.h"
#include "support/temp_dir.h"
#include "trelva/functions.h"

#include <array>
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
                             {"GATFILE(\"a.pfx\",DATA,12.1,99,\"ISLOT=2\")", "[6 2]"},
                             {"GATFILE(\"a.pfx\",DATA,12.1)", "[6 1 6 2 6 3]"},
                             {"NINT(100*GATFILE(\"a.pfx\",RATE))", "[200 200 200 200 200 200]"},
                             {"NINT(GATFILE(\"a.pfx\",ACC,11,12))+0", "[0 0 0]"},
                             {"GATFILE(\"none.pfx\",TIME)", "error: Unable to open file."},
                             {"GATFILE()", "error: Unable to open file."},
                         });
    expect_each(context_, no_type,
                {"GATFILE(\"a.pfx\",YAW)", "GATFILE(\"a.pfx\",NPKS)", "GATFILE(\"a.pfx\",nothing)",
                 "GATFILE(\"a.pfx\")"});
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
            {"GATFILE(\"a.pfx\",TIME,\"FILETYPE=XYZ\")", "error: Unknown file type."},
            {"PKSFILE(\"a.pfx\",TIME,\"FILETYPE=gat\")", all},
            {"GATFILE(\"a.pfx\",1/0)", "error: Divide By Zero Error."},
        });
    expect_each(context_, no_data,
                {"GATFILE(\"a.pfx\",TIME,\"MAX=0\")", "GATFILE(\"a.pfx\",TIME,\"MAX=-3\")",
                 "GATFILE(\"a.pfx\",TIME,11.1,11.4)"});
    expect_each(context_, "error: This function not implemented yet.",
                {"GATFILE(\"a.pfx\",TIME,\"FILETYPE=V3\")", "V3FILE(\"a.pfx\",TIME)", "ANYFILE()"});
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

TEST_F(trelva_files, iq_files) {
    iqfile_ptr file = openiq("a.iq", "New");
    ASSERT_EQ(putiqkeys(file.get(), 5.0, 0.0, 10.0, 0.03), ZUV_OK);
    for (int n = 0; n < 4; n++)
        putiq(file.get(), 3.0f * static_cast<float>(n), -4.0f * static_cast<float>(n));
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
    dopfile_ptr spectra = opendop("a.dop", "New", 3);
    u_kwput_d(spectra.get(), "scale", 0.5);
    putdop(spectra.get(), 1.0, std::vector<std::int16_t>{2, -4, 6});
    putdop(spectra.get(), 2.0, std::vector<std::int16_t>{8, 10, 12});
    ASSERT_EQ(u_close(std::move(spectra)), ZUV_OK);
    expect_all(context_, {
                             {"IQFILE(\"a.iq\",I)", "[0 3 6 9]"},
                             {"IQFILE(\"a.iq\",AMP,5.1,5.2)", "[5 10]"},
                             {"IQFILE(\"a.iq\",TIME)", "[5 5.1 5.2 5.3]"},
                             {"IQFILE(\"a.iq\",NSAMPLES)", "4"},
                             {"IQFILE(\"a.iq\",PRF)*IQFILE(\"a.iq\",XLAM)", "0.3"},
                             {"IQFILE(\"a.dop\",I)", "[1 -2 3 4 5 6]"}, // the file's scale is applied
                             {"IQFILE(\"a.dop\",TIME)", "[1 2]"},
                             {"IQFILE(\"a.pfx\",Q,11,11.5)", "[1 2 3 1 2 3]"},
                             {"GATFILE(\"a.iq\",I)", "error: Unable to open file."},
                             {"GETKW(\"a.iq\",\"xlam\")", "0.03"},
                             {"GETKW(\"a.dop\",\"namp\")", "3"},
                         });
}

TEST_F(trelva_files, track_files) {
    reafile_ptr file = openrea("a.rea", "New");
    for (int n = 0; n < 20; n++) { // 7000 - 30 t + 4 t^2, one bad element
        const double t = 0.5 * n;
        putrea(file.get(), t, n == 7 ? 0.0 : 7000.0 - 30.0 * t + 4.0 * t * t, 0.5f, 0.25f, n != 7);
    }
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
    expect_all(context_,
               {
                   {"REAFILE(\"a.rea\",RANGE,0,1)", "[7000 6986 6974]"},
                   {"REAFILE(\"a.rea\",ELEV,0,0.5)", "[0.5 0.5]"},
                   {"REAFILE(\"a.rea\",AZ,0,0.5)", "[0.25 0.25]"},
                   {"REAFILE(\"a.rea\",VALID,3,4)", "[1 0 1]"},
                   {"REAFILE(\"a.rea\",DATA,0,0.5)", "[7000 0.5 0.25 6986 0.5 0.25]"},
                   {"NINT(1000*REAFILE(\"a.rea\",RATE,4,6))", "[2000 6000 10000 14000 18000]"},
                   {"NINT(REAFILE(\"a.rea\",RATE,2,5,\"FITALL=NO\",\"NAVG=5\"))", "[-14 -10 -6 -2 2 6 10]"},
                   {"NINT(1000*REAFILE(\"a.rea\",ACC,4,9,2,\"FITALL=YES\"))", "[nan nan]"}, // two make no fit
                   {"NINT(1000*REAFILE(\"a.rea\",ACC,4,9,3,\"WTAUTO=NO\"))", "[8000 8000 8000]"},
                   {"REAFILE(\"a.pfx\",RANGE)", "[100 101 102 103 104 105]"},
                   {"REAFILE(\"a.rea\",XPOS)", no_type},
                   {"REAFILE(\"a.iq\",RANGE)", "error: Unable to open file."},
               });
}

// Three peaks at each of two times, two of them there; in Hz, half a metre of wavelength.
TEST_F(trelva_files, peak_files) {
    pksfile_ptr file = openpks("a.pks", "New", 3);
    _pksheader head = file->hd;
    head.text = "tracks";
    head.nfft = 64;
    head.wdw = 32;
    head.lag = 8;
    head.weight = 2;
    head.prf = 16;
    head.xlam = 0.5;
    ASSERT_EQ(putpkshead(file.get(), head), ZUV_OK);
    u_kwput_d(file.get(), "PITCH", 1.5);
    for (float n : {0.0F, 1.0F})
        putpks(file.get(), 4.0 + 0.5 * n, std::array{n + 1, n - 4, 0.0F}, std::array{9.0F, 8.0F, 0.0F},
               std::array<char, 3>{1, 1, 0});
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
    const std::string few = "error: This peaks file does not contain enough peaks for ISLOT.";
    expect_all(context_,
               {
                   {"PKSFILE(\"a.pks\",TIME)", "[4 4.5]"},
                   {"PKSFILE(\"a.pks\",LOC)", "[1 2]"},
                   {"PKSFILE(\"a.pks\",LOC,\"ISLOT=2\")", "[-4 -3]"},
                   {"PKSFILE(\"a.pks\",AMP,\"ISLOT=2\",\"MAX=1\")", "[8]"},
                   {"PKSFILE(\"a.pks\",VALID,\"ISLOT=3\")", "[0 0]"},
                   {"PKSFILE(\"a.pks\",RATE)", "[-0.25 -0.5]"},
                   {"PKSFILE(\"a.pks\",DATA,4.5,9)", no_overlap},
                   {"PKSFILE(\"a.pks\",DATA,4.1,9)", "[2 9 -3 8 0 0]"},
                   {"PKSFILE(\"a.pks\",LOC,\"ISLOT=4\")", few},
                   {"PKSFILE(\"a.pks\",LOC,\"ISLOT=-1\")", "error: Invalid ISLOT."},
                   {"PKSFILE(\"a.pks\",ACC)", "error: This peaks file does not contain acceleration data."},
                   {"PKSFILE(\"a.pks\",PHASE)", no_type},
                   {"PKSFILE(\"a.pks\",PKSTYPE)", "\"Rate\""},
                   {"PKSFILE(\"a.pks\",XUNITS)+\" \"+PKSFILE(\"a.pks\",YUNITS)", "\"Seconds Hz\""},
                   {"PKSFILE(\"a.pks\",NFFTSIZE)", "64"},
                   {"PKSFILE(\"a.pks\",LAG)", "8"},
                   {"PKSFILE(\"a.pks\",WINDOW)", "32"},
                   {"PKSFILE(\"a.pks\",NPKS)", "3"},
                   {"PKSFILE(\"a.pks\",PRF)*PKSFILE(\"a.pks\",XLAM)", "8"},
                   {"PKSFILE(\"a.pks\",HEADER)", "\"tracks\""},
                   {"PKSFILE(\"a.pks\",PITCH)", "1.5"}, // a keyword of that name
                   {"PKSFILE(\"a.pks\",ROLL)", no_type},
                   {"PKSFILE(\"a.pfx\",LOC)", "error: Unable to open file."},
                   {"GETKW(\"a.pks\",\"npks\")", "3"},
               });
    expect_each(context_, "2",
                {"PKSFILE(\"a.pks\",WEIGHT)", "PKSFILE(\"a.pks\",NREC)", "PKSFILE(\"a.pks\",NSAMP)"});
    pksfile_ptr rates = openpks("a.pks", "Update", 0);
    u_kwput_i(rates.get(), "type", 1);
    u_close(std::move(rates));
    expect_all(context_,
               {
                   {"PKSFILE(\"a.pks\",ACC)", "[-0.25 -0.5]"},
                   {"PKSFILE(\"a.pks\",RATE)", "error: This peaks file does not contain rate data."},
                   {"PKSFILE(\"a.pks\",PKSTYPE)", "\"Acceleration\""},
                   {"PKSFILE(\"a.pks\",YUNITS)", "\"Hz/sec\""},
               });
}

TEST_F(trelva_files, image_and_vector_files) {
    imgfile_ptr file = openimg("a.img", "New", 2);
    u_kwput_d(file.get(), "T0", 3.0);
    u_kwput_d(file.get(), "prf", 2.0);
    u_kwput_d(file.get(), "xlam", 0.25);
    for (float n : {0.0F, 1.0F, 2.0F}) putimg(file.get(), std::array{3 * n, 4 * n, -1.0F, n});
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
    vecfile_ptr vec = openvec("a.vec", "New", 1);
    u_kwput_d(vec.get(), "prf", 5.0);
    ASSERT_EQ(u_close(std::move(vec)), ZUV_OK);
    expect_all(context_, {
                             {"IMGFILE(\"a.img\",TIME)", "[3 3.5 4]"},
                             {"IMGFILE(\"a.img\",AMP,\"ISLOT=1\")", "[0 5 10]"},
                             {"IMGFILE(\"a.img\",Q,3.2,9)", "[4 1 8 2]"},
                             {"IMGFILE(\"a.img\",DATA,3.5,3.9)", "[3 4 -1 1]"},
                             {"IMGFILE(\"a.img\",PHASE,3,3.4,\"ISLOT=2\")", "[0.5]"},
                             {"IMGFILE(\"a.img\",DATA,\"ISLOT=2\",\"MAX=2\")", "[-1 0 -1 1]"},
                             {"IMGFILE(\"a.img\",NREC)", "3"},
                             {"IMGFILE(\"a.img\",WAVELENGTH)", "0.25"},
                             {"IMGFILE(\"a.img\",HEADER)", "\"\""},
                             {"IMGFILE(\"a.img\",NFFT)", no_type},
                             {"IMGFILE(\"a.img\",I,\"ISLOT=3\")", "error: Invalid ISLOT."},
                             {"IMGFILE(\"a.pfx\",I)", "error: Unable to open file."},
                             {"GETKW(\"a.vec\",nvec)+GETKW(\"a.vec\",prf)", "6"},
                         });
    expect_each(context_, "2",
                {"IMGFILE(\"a.img\",NSAMP)", "IMGFILE(\"a.img\",PRF)", "GETKW(\"a.img\",nsamp)"});
}

// A row of a gate file that has no place for a range has none to give.
TEST_F(trelva_files, gate_files_without_ranges) {
    gatfile_ptr file = opengat_opt("flat.pfx", 1, GAT_BYTE, 0);
    for (std::int8_t n : {1, 2, 3}) putgat_b(file.get(), 0.0, std::array<std::int8_t, 2>{n, 0});
    u_kwput_d(file.get(), "RATE", 7.5);
    ASSERT_EQ(u_close(std::move(file)), ZUV_OK);
    expect_all(context_, {
                             {"GATFILE(\"flat.pfx\",I)", "[1 2 3]"},
                             {"GATFILE(\"flat.pfx\",RATE)", "7.5"}, // a keyword of that name
                             {"REAFILE(\"flat.pfx\",RANGE)", "error: Unable to open file."},
                         });
    expect_each(context_, no_type,
                {"GATFILE(\"flat.pfx\",RANGE)", "GATFILE(\"flat.pfx\",ACC)", "GATFILE(\"flat.pfx\",XLAM)"});
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
