// Built-in functions, each with its edge arguments and every message. Values were worked out by hand.
#include "show.h"
#include "trelva/functions.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace norva::test {
namespace {

sp_language with_data() {
    sp_language context;
    run_script(context, "A = SEQ(10,20,30,40,50)\nNONE = RAMP(0,1,0)\nM = SEQ(1,0,-1)\n"
                        "G = SEQ(0,0,0, 0,9,0, 0,0,0)\n");
    return context;
}

TEST(trelva_functions, one_argument) {
    sp_language context = with_data();
    const std::string count = "error: Bad number of arguments.";
    expect_all(context, {
                            {"SIN(1)", "0.8414709848"},
                            {"TAN(-1)", "-1.557407725"},
                            {"ATAN(1)*4", "3.141592654"},
                            {"ASIN(-1)", "-1.570796327"},
                            {"ASIN(1)", "error: ASIN of number out of bounds."},
                            {"ASIN(-1.01)", "error: ASIN of number out of bounds."},
                            {"ACOS(-1)", "3.141592654"},
                            {"ACOS(1)", "error: ACOS of number out of bounds."},
                            {"NINT(2.5)", "3"},
                            {"NINT(2.49)", "2"},
                            {"LOG10(0)", "error: LOG10 of zero or negitive number."},
                            {"LOGN(EXP(2))", "2"},
                            {"LOGN(-1)", "error: LOGN of zero or negitive number."},
                            {"SQRT(2)", "1.414213562"},
                            {"SQRT(0)", "0"},
                            {"SQRT(-1)", "error: SQRT of negitive number."},
                            {"SQRT(SEQ(4,-9,1))", "error: SQRT of negitive number."},
                            {"SQRT(NONE)", "[]"},
                            {"SQRT(\"16\")", "4"},
                            {"SQRT(4,-1)", "2"}, // the first argument counts
                            {"SIN(1/0)", "error: Divide By Zero Error."},
                        });
    expect_each(context, "1", {"cos(0)", "EXP(red)", "EXP()"});
    EXPECT_EQ(sp_show(sp_function(context, "SIN", {})), count);
}

TEST(trelva_functions, two_arguments) {
    sp_language context = with_data();
    expect_all(context, {
                            {"ATAN2(-1,0)", "-1.570796327"},
                            {"ATAN2(0,0)", "error: ATAN2 both args zero."},
                            {"ATAN2(SEQ(1,0),SEQ(1,0))", "error: ATAN2 both args zero."},
                            {"POW(SEQ(1,2,3),2)", "[1 4 9]"},
                            {"POW(2,SEQ(1,2,3))", "[2 4 8]"},
                            {"POW(SEQ(1,2,3),SEQ(3,2))", "[1 4]"},
                            {"POW(NONE,2)", "[]"},
                            {"POW(\"3\",\"2\")", "9"},
                        });
    expect_each(context, "error: Bad number of arguments.", {"ATAN2(1)", "ATAN2(1,2,3)", "POW(2)"});
}

TEST(trelva_functions, errors_and_unknown_names) {
    sp_language context = with_data();
    expect_all(context, {
                            {"ERRSTR(5)", "5"},
                            {"ERRSTR(A)", "[10 20 30 40 50]"},
                            {"errstr(1,2)", "error: Wrong number of Arguments in ERRSTR."},
                            {"F()", "error: Unknown function."},
                            {"F(1/0)", "error: Divide By Zero Error."}, // an error passes through every name
                            {"SEQ(SQRT(-1),1/0)", "error: SQRT of negitive number."},
                        });
}

TEST(trelva_functions, numbers_from_many) {
    sp_language context = with_data();
    expect_all(context, {
                            {"MIN(3,A,-1)", "-1"},
                            {"MAX(3,A,-1)", "50"},
                            {"MIN(2,\"1\")", "1"},
                            {"MAX(-5,red)", "0"}, // a word counts as 0
                            {"MIN(5,NONE)", "5"},
                            {"MAX(-3)", "-3"},
                            {"SUM(A,1,\"2\")", "153"},
                            {"AVG(A)", "30"},
                            {"AVG(1,SEQ(2,3))", "2"},
                            {"NPTS(A,1,red,\"s\")", "8"},
                            {"NPTS()", "1"},
                        });
    expect_each(context, "0", {"MIN(NONE)", "SUM(NONE)", "AVG(NONE)", "NPTS(NONE)"});
    for (const char* name : {"MIN", "MAX", "SUM", "AVG", "NPTS"})
        EXPECT_EQ(sp_show(sp_function(context, name, {})), "0") << name;
}

TEST(trelva_functions, making_arrays) {
    sp_language context = with_data();
    expect_all(context, {
                            {"RAMP(5,-2,3)", "[5 3 1]"},
                            {"RAMP(0,1,2.5)", "[0 1 2]"},
                            {"RAMP(0,1,2.4)", "[0 1]"},
                            {"RAMP(1,1,2,9)", "[1 2]"},
                            {"SEQ(1,RAMP(2,1,2),\"4\")", "[1 2 3 4]"},
                        });
    expect_each(context, "[]", {"RAMP(0,1,0)", "RAMP(0,1,-4)", "SEQ(NONE)"});
    expect_each(context, "[0]", {"RAMP()", "SEQ()", "SEQ(red)"});
    expect_each(context, "error: Array is too large.",
                {"RAMP(0,1,1e9)", "RAMP(0,1,1e99)", "RAND(1e9)", "X2DINDX(1e9,1e9)"});
    EXPECT_EQ(sp_show(sp_function(context, "RAMP", {})), "[0]");
    EXPECT_EQ(sp_show(sp_function(context, "SEQ", {})), "[0]");
}

TEST(trelva_functions, random_numbers) {
    sp_language context;
    expect_all(context,
               {{"NPTS(RAND(1000))", "1000"}, {"NPTS(RAND(2))", "2"}, {"NINT(MIN(RAND(999),0)) ", "0"}});
    for (const char* one : {"RAND()", "RAND(1)", "RAND(0)", "RAND(-7)", "RAND(red)"})
        EXPECT_EQ(sp_eval_formula(context, one).type, SP_SCALER) << one;
    // Evenly spread over 0..1: mean 1/2, mean square 1/3, within five standard deviations of 10000 draws.
    run_script(context, "R = RAND(10000)\n");
    EXPECT_NEAR(sp_eval_formula(context, "AVG(R)").scaler, 0.5, 5 * 0.2887 / 100);
    EXPECT_NEAR(sp_eval_formula(context, "AVG(R*R)").scaler, 1.0 / 3, 5 * 0.298 / 100);
    EXPECT_GE(sp_eval_formula(context, "MIN(R)").scaler, 0.0);
    EXPECT_LE(sp_eval_formula(context, "MAX(R)").scaler, 1.0);
}

TEST(trelva_functions, cutting_arrays) {
    sp_language context = with_data();
    expect_all(context, {
                            {"SUBARRAY(A)", "10"},
                            {"SUBARRAY(A,3)", "30"},
                            {"SUBARRAY(A,2.5)", "30"},
                            {"SUBARRAY(A,3,2)", "[30 40]"},
                            {"SUBARRAY(A,5,9)", "[50]"},
                            {"SUBARRAY(A,1,5)", "[10 20 30 40 50]"},
                            {"SUBARRAY(A,1,1.4)", "10"},
                            {"SUBARRAY(A,0)", "error: Bad index argument."},
                            {"SUBARRAY(A,-1)", "error: Bad index argument."},
                            {"SUBARRAY(A,1,0)", "error: Bad count argument."},
                            {"SUBARRAY(A,9,0)", "error: Bad count argument."},
                            {"SUBARRAY(7,1,3)", "[7]"},
                            {"CLIPTOP(A,25)", "[10 20 25 25 25]"},
                            {"CLIPBOT(A,25)", "[25 25 30 40 50]"},
                            {"CLIPTOP(7,5)", "5"},
                            {"CLIPBOT(\"1\",\"2\")", "2"},
                            {"CLIPTOP(NONE,1)", "[]"},
                            {"CLIPTOP(1)", "error: Wrong number of arguments in CLIPTOP."},
                            {"CLIPBOT(1,2,3)", "error: Wrong number of arguments in CLIPBOT."},
                            {"A", "[10 20 30 40 50]"}, // unchanged by all this
                        });
    expect_each(context, "error: Index out of bounds.",
                {"SUBARRAY(A,6)", "SUBARRAY(7,2)", "SUBARRAY(NONE,1)", "SUBARRAY(A,1e99,1e99)"});
    expect_each(context, "7", {"SUBARRAY(7)", "SUBARRAY(\"7\")", "CLIPTOP(SEQ(7),9)"});
    EXPECT_EQ(sp_show(sp_function(context, "SUBARRAY", {})), "error: Bad number of arguments.");
}

TEST(trelva_functions, masks) {
    sp_language context = with_data();
    expect_all(context, {
                            {"VALIDARRAY(A,M)", "[10 30 40 50]"}, // beyond the mask all stay
                            {"NOTVALIDARRAY(A,M)", "[20]"},       // beyond the mask none
                            {"VALIDARRAY(A,NONE)", "[10 20 30 40 50]"},
                            {"VALIDARRAY(SEQ(5),M)", "[5]"},
                            {"VALIDARRAY(5,M)", "5"},
                            {"NOTVALIDARRAY(5,SEQ(0,1))", "5"},
                            {"VALIDARRAY(A,())", "error: Bad 2nd argument in VALIDARRAY."},
                            {"NOTVALIDARRAY(A,())", "error: Bad 2nd argument in NOTVALIDARRAY."},
                            {"VALIDARRAY(\"x\",M)", "error: Bad 1st argument in VALIDARRAY."},
                            {"NOTVALIDARRAY(red,())", "error: Bad 1st argument in NOTVALIDARRAY."},
                            {"VALIDARRAY(A)", "error: Bad number of arguments."},
                            {"NOTVALIDARRAY(A,M,M)", "error: Bad number of arguments."},
                        });
    expect_each(context, "\"No valid points.\"",
                {"VALIDARRAY(SEQ(1,2),SEQ(0,0))", "VALIDARRAY(NONE,M)", "VALIDARRAY(5,SEQ(0,1))"});
    expect_each(context, "\"No nonvalid points.\"",
                {"NOTVALIDARRAY(SEQ(1,2),SEQ(1,1))", "NOTVALIDARRAY(A,NONE)", "NOTVALIDARRAY(5,M)"});
    expect_each(context, "NULL",
                {"VALIDARRAY(A,1)", "VALIDARRAY(5,\"x\")", "VALIDARRAY(A,red)", "VALIDARRAY(\"x\",1)"});
}

TEST(trelva_functions, order) {
    sp_language context = with_data();
    run_script(context, "NAN = 1e400-1e400\n");
    expect_all(context, {
                            {"SORT(3,1,2)", "[3 2 1]"},
                            {"RANK(3,1,2)", "[1 3 2]"},
                            {"SORT(A,35)", "[50 40 35 30 20 10]"},
                            {"RANK(1,2,2,1)", "[2 3 1 4]"}, // equal ones keep their order
                            {"SORT(\"4\",red,5)", "[5 4 0]"},
                            {"SORT()", "[0]"},
                            {"RANK()", "[1]"},
                            {"SORT(NONE)", "[]"},
                            {"SORT(1,3,NAN,2,4)", "[3 1 nan 4 2]"}, // nothing is exchanged with not-a-number
                            {"RANK(1,3,NAN,2,4)", "[2 1 3 5 4]"},
                            {"SHUFFLE(A,SEQ(5,1,1))", "[50 10 10]"},
                            {"SHUFFLE(A,SEQ(0,2.5,6,-1,4.4))", "[30 40]"},
                            {"SHUFFLE(A,2)", "20"},
                            {"SHUFFLE(7,1)", "7"},
                            {"SHUFFLE(A,NONE)", "error: No order data in SHUFFLE."},
                            {"SHUFFLE(A,SEQ(0,6,1e99))", "error: No output data in SHUFFLE."},
                            {"SHUFFLE(NONE,1)", "error: No output data in SHUFFLE."},
                            {"SHUFFLE(A)", "error: Wrong number of arguments in SHUFFLE."},
                        });
    for (const char* name : {"SORT", "RANK"})
        EXPECT_EQ(sp_show(sp_function(context, name, {})),
                  "error: No arguments in " + std::string(name) + ".");
}

// The order is that of exchanging neighbours while an earlier one is below a later one.
TEST(trelva_functions, order_agrees_with_exchanging_neighbours) {
    std::mt19937 random(7);
    sp_language context;
    for (int trial = 0; trial < 200; trial++) {
        std::vector<double> x(1 + random() % 30);
        for (double& v : x) v = random() % 7 == 0 ? std::nan("") : random() % 5;
        sp_var_putval(context, "Y", sp_mkarray(sp_cpary(x)), 0);
        std::vector<double> place(x.size());
        for (std::size_t i = 0; i < x.size(); i++) place[i] = i + 1.0;
        for (std::size_t pass = 0; pass < x.size(); pass++)
            for (std::size_t i = 1; i < x.size(); i++)
                if (x[i - 1] < x[i]) std::swap(x[i - 1], x[i]), std::swap(place[i - 1], place[i]);
        EXPECT_EQ(shown(context, "RANK(Y)"), sp_show(sp_mkarray(sp_cpary(place))));
        EXPECT_EQ(shown(context, "SEQ(SHUFFLE(Y,RANK(Y)))"), shown(context, "SORT(Y)"));
    }
}

TEST(trelva_functions, grids) {
    sp_language context = with_data();
    expect_all(context, {
                            {"X2DINDX(1,1)", "[1]"},
                            {"X2DINDX(2.6,1.4)", "[1 2 3]"},
                            {"X2DINDX(\"3\",2)", "error: Bad argument in X2DINDX."}, // text is not read here
                            {"X2DINDX(3)", "error: Wrong number of arguments in X2DINDX."},
                            {"Y2DINDX(3)", "error: Wrong number of arguments in X2DINDX."},
                            {"FIND2DPKS(G,3)", "5"},
                            {"FIND2DPKS(SEQ(G,1,2),3)", "5"}, // an incomplete row does not count
                            {"FIND2DPKS(SEQ(G,G,G),3)", "[5 14 23]"},
                            {"FIND2DPKS(G,2.6)", "5"},
                            {"FIND2DPKS(G,0)", "error: Bad argument in FIND2DPKS."},
                            {"FIND2DPKS(G)", "error: Wrong number of arguments in FIND2DPKS."},
                        });
    expect_each(context, "error: Bad argument in X2DINDX.",
                {"X2DINDX(0,2)", "Y2DINDX(2,-1)", "X2DINDX(SEQ(3),2)"});
    expect_each(context, "error: No peaks found in FIND2DPKS.",
                {"FIND2DPKS(SEQ(0,0,0,0, 0,9,9,0, 0,0,0,0),4)", "FIND2DPKS(SEQ(9,0,0, 0,1,0, 0,0,0),3)",
                 "FIND2DPKS(SEQ(9,9,9, 0,0,0, 9,9,9),3)"});
    expect_each(context, "error: Not enough data to find peaks in FIND2DPKS.",
                {"FIND2DPKS(G,2)", "FIND2DPKS(G,4)", "FIND2DPKS(NONE,3)", "FIND2DPKS(G,1e99)"});
    // Each of the eight neighbours, raised to the peak's height, takes the peak away.
    for (int k = 1; k <= 9; k++) {
        if (k == 5) continue;
        std::vector<double> g(9, 0.0);
        g[4] = g[static_cast<std::size_t>(k - 1)] = 1.0;
        sp_var_putval(context, "N", sp_mkarray(sp_cpary(g)), 0);
        EXPECT_EQ(shown(context, "FIND2DPKS(N,3)"), "error: No peaks found in FIND2DPKS.") << k;
    }
}

} // namespace
} // namespace norva::test
