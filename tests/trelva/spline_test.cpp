// Spline functions, on the parabola t^2 in two pieces, from 0 to 2 and from 2 to 4.
#include "cu/espl.h"
#include "cu/spl.h"
#include "fileio/ufile.h"
#include "show.h"
#include "support/temp_dir.h"
#include "trelva/functions.h"

namespace norva::test {
namespace {

class trelva_splines : public testing::Test {
protected:
    void SetUp() override {
        espl_ptr spline =
            espl_init_old(3, {{0, 1, 0, {0, 0, 1}}, {2, 1, 0, {4, 4, 1}}, {4, 1, 0, {16, 8, 1}}});
        ASSERT_TRUE(spline);
        ASSERT_EQ(espl_write(spline.get(), "p.spl", "a parabola", "Range", "Seconds", "Gates", 0), 1);
        splfile_ptr short_one = openspl("one.spl", "New", 2); // one breakpoint makes no spline
        const double coe[] = {1, 2};
        putspl(short_one.get(), 7.0, 0, 0, coe);
        u_close(std::move(short_one));
    }
    temp_dir dir_;
    current_dir here_{dir_.path()};
    sp_language context_;
};

TEST_F(trelva_splines, evaluation) {
    expect_all(context_, {
                             {"ESPL(\"p.spl\",3)", "9"},
                             {"spleval(\"p.spl\",SEQ(-1,0,1.5,2,4,5))", "[1 0 2.25 4 16 25]"},
                             {"ESPL(\"p.spl\",SEQ(0,3),1)", "[0 6]"},
                             {"ESPL(\"p.spl\",3,2)", "2"},
                             {"ESPL(\"p.spl\",3,1.6)", "2"}, // the order is rounded
                             {"ESPL(\"p.spl\",3,3)", "0"},
                             {"ESPL(\"p.spl\",3,-2)", "0"}, // the order -1.5 is cut to -1
                             {"ESPL(\"p.spl\",\"3\")", "9"},
                             {"ESPL(\"p.spl\",RAMP(0,1,0))", "[]"},
                             {"SPLBRKS(\"p.spl\")", "[0 2 4]"},
                             {"SPLBRKS(\"one.spl\")", "[7]"},
                             {"ESPL(\"p.spl\")", "error: Bad Number of arguments in ESPL."},
                             {"SPLEVAL(\"p.spl\",1,2,3)", "error: Bad Number of arguments in ESPL."},
                             {"ESPL((),1)", "error: Bad argument type for filename."},
                             {"ESPL(\"none.spl\",1)", "error: Unable to open spline file."},
                             {"ESPL(none,1)", "error: Unable to open spline file."}, // a word names a file
                             {"ESPL(\"one.spl\",1)", "error: Unable to open spline file."},
                             {"SPLBRKS(\"p.spl\",1)", "error: Bad Number of arguments in SPLBRKS."},
                             {"SPLBRKS(none)", "error: Bad argument type in SPLBRKS."},
                             {"SPLBRKS(\"none.spl\")", "error: Unable to open Spline file in SPLBRKS."},
                         });
}

TEST_F(trelva_splines, splfile) {
    expect_all(
        context_,
        {
            {"SPLFILE(\"p.spl\",TIME,\"POINTS=2\")", "[0 1 2 3 4]"},
            {"SPLFILE(\"p.spl\",FUNC,\"POINTS=2\")", "[0 1 4 9 16]"},
            {"SPLFILE(\"p.spl\",FUNC,\"POINTS=2\",\"IDER=1\")", "[0 2 4 6 8]"},
            {"SPLFILE(\"p.spl\",RATE,\"POINTS=1\")", "[0 4 8]"},
            {"SPLFILE(\"p.spl\",ACC,\"POINTS=1\")", "[2 2 2]"},
            {"SPLFILE(\"p.spl\",TIME,1,3,\"POINTS=2\")", "[1 2 3]"},
            {"SPLFILE(\"p.spl\",ALLTIME,1,3,\"POINTS=2\")", "[0 1 2 3 4]"},
            {"SPLFILE(\"p.spl\",FUNC,1,99,2,\"POINTS=2\")", "[1 4]"},
            {"NPTS(SPLFILE(\"p.spl\",TIME))", "201"},
            {"SPLFILE(\"p.spl\",FUNC,1.1,1.4,\"POINTS=2\")", "error: No data found between T0 and T1."},
            {"SPLFILE(\"p.spl\",FUNC,4)", "error: T0 and T1 overlap, no data found."},
            {"SPLFILE(\"p.spl\",FUNC,-5,-1)", "error: T0 and T1 overlap, no data found."},
            {"SPLFILE(\"p.spl\",FUNC,\"POINTS=0\")", "error: POINTSPERINTERVAL is too small"},
            {"SPLFILE(\"p.spl\",FUNC,\"IDER=-1\")", "error: Internal problem while reading spline (2)."},
            {"SPLFILE(\"one.spl\",FUNC)", "error: Internal problem while reading spline (1)."},
            {"SPLFILE(\"p.spl\",FUNC,\"MAX=99999999\",\"POINTS=2000000000\")", "error: Array is too large."},
            {"SPLFILE(\"p.spl\",AMP)", "error: Bad data type for file type."},
            {"SPLFILE(\"p.spl\",NPKS)", "error: Bad data type for file type."},
            {"SPLFILE(\"none.spl\",FUNC)", "error: Unable to open file."},
            {"SPLFILE(\"p.spl\",SPLTYPE)", "\"Range\""},
            {"SPLFILE(\"p.spl\",XUNITS)+\", \"+SPLFILE(\"p.spl\",YUNITS)", "\"Seconds, Gates\""},
            {"SPLFILE(\"p.spl\",T1)", "4"},
            {"SPLFILE(\"p.spl\",HEADER)", "\"a parabola\""},
            {"GETKW(\"p.spl\",\"xunits\")", "\"Seconds\""},
        });
    expect_each(context_, "3",
                {"SPLFILE(\"p.spl\",NCOE)", "SPLFILE(\"p.spl\",NREC)", "GETKW(\"p.spl\",\"ncoe\")"});
}

} // namespace
} // namespace norva::test
