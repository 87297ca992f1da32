// Formulas: numbers, words, strings, operators, type rules, conversions, every message of the parser.
#include "show.h"

#include <limits>

namespace norva::test {
namespace {

const std::string bad_number = "error: Syntax error (in a number).";
const std::string bad_parse = "error: Syntax error (parser).";
const std::string bad_func = "error: Syntax error (in %func).";
const std::string bad_string = "error: Syntax error (in string).";
const std::string bad_order = "error: Syntax error: Operations out of order.";
const std::string by_zero = "error: Divide By Zero Error.";

sp_language with_variables() {
    sp_language context;
    run_script(context,
               "X = 5\nS = \"2\"\nW = red\nA = SEQ(1,2,3,4,5)\nT = SEQ(10,20,30)\nNONE = RAMP(0,1,0)\n"
               "BAD = 1/0\na$b = 77\nLONG23456789012345678901234567890 = 8\n");
    return context;
}

TEST(trelva_formula, operators) {
    sp_language context = with_variables();
    expect_all(context, {
                            {"2*3+1", "7"},
                            {"1-2-3", "-4"},
                            {"2-6/3*4+1", "-5"},
                            {"2*(1+(3-1))", "6"},
                            {"8/(2/2)", "8"},
                            {std::string("1+2\0+3", 7), "3"}, // a zero byte ends the formula
                            {"X(1)", "error: Unknown function."},
                            {"(1/0)+?", bad_parse}, // a syntax error stands over a value's error
                        });
    expect_each(context, "3", {" 1\t+\n2 ", "()+3", "3*()"});
    expect_each(context, "NULL", {"", "   ", "()"});
    expect_each(context, bad_order, {"+3", "3+", "a b", "1 2", "2**3", "*", "X (1)"});
    expect_each(context, bad_parse, {")", "(1", "(\")\"", "1=2", "1,2", "2^3", "caf\xc3\xa9", "(1=2)+3"});
}

TEST(trelva_formula, a_minus_is_binary_or_part_of_a_number) {
    sp_language context = with_variables();
    expect_all(context, {
                            {"2--3", "5"},
                            {"X-1", "4"},
                            {"0-X", "-5"},
                            {"\"a\"-1", "\"a\""},
                        });
    expect_each(context, "-3", {"-3", "(-3)", "MAX(-3,-4)"});
    expect_each(context, "-1", {"2-3", "2 -3", "2+-3", "(1)-(2)"});
    expect_each(context, bad_number, {"-X", "2*-X", "2---3", "-(3)", "- 3"});
}

TEST(trelva_formula, numbers) {
    sp_language context;
    expect_all(context, {
                            {"1.", "1"},
                            {".5", "0.5"},
                            {"-.5", "-0.5"},
                            {"1.e2", "100"},
                            {"1.5E+2", "150"},
                            {"1e-2", "0.01"},
                            {"1e400", "inf"},
                            {"1e-400", "0"},
                            {"0012", "12"},
                            {"1e2+1", "101"},
                            {"1+2", "3"}, // the sign behind a digit is the next token
                            {std::string(40, '1'), "1.111111111e+39"},
                            {std::string(41, '1'), bad_number},
                            {"." + std::string(41, '0'), bad_number},
                            {"2x", bad_order},
                            {"0x10", bad_order},
                        });
    expect_each(context, bad_number,
                {"1e1234", "1e0001", ".", "-", "1.2.3", "1e", "1e+", "1e5.", "1e5e5", ".e5", "-+3"});
}

TEST(trelva_formula, words_and_variables) {
    sp_language context = with_variables();
    expect_all(context,
               {
                   {"red", "red"},
                   {"AP_1", "AP_1"},
                   {"x", "5"},
                   {"#x", "x"},
                   {"#X+1", "X"},
                   {"#", ""},
                   {"##", "#"},
                   {"# red", " red"},
                   {"x#", bad_order}, // a word x and an empty one
                   {"@word", "@word"},
                   {"@", "@"},
                   {"_x", "_x"},
                   {"$x", "$x"},
                   {"%x", "%x"},
                   {"a$b", "77"},
                   {"a$c", bad_order}, // no variable: two words
                   {std::string(40, 'w'), std::string(32, 'w')},
                   {"LONG23456789012345678901234567890", "LONG2345678901234567890123456789"}, // 33 characters
                   {"f(\"(\")", "error: Unknown function."},
               });
    expect_each(context, bad_func, {"%f(1)", "f%g(1)", "$f(1)", "f(1", "f(", "f(\")"});
}

TEST(trelva_formula, a_variable_of_no_name_does_not_catch_words) {
    sp_language context;
    run_script(context, "= 5\n");
    expect_all(context, {{"@", "@"}, {"@a", "@a"}, {"1+@", "1"}});
}

TEST(trelva_formula, strings) {
    sp_language context;
    expect_all(context, {
                            {"\"a b\"", "\"a b\""},
                            {"\"\"", "\"\""},
                            {"\"A\"+\"B\"", "\"AB\""},
                            {"\"a(\" + \")\"", "\"a()\""},
                            {"\"a\"\"b\"", bad_order},
                            {"\"abc", bad_string},
                            {"\"", bad_string},
                            {"SEQ(1,\"a\"\")", bad_func},
                        });
    expect_each(context, "\"A\"", {"\"A\"-\"B\"", "\"A\"*\"B\"", "\"A\"/0"});
}

// Left and right operand of every type, with + and with -.
TEST(trelva_formula, type_rules) {
    sp_language context = with_variables();
    expect_all(context, {
                            {"A+T", "[11 22 33]"},
                            {"T+A", "[11 22 33]"},
                            {"T-A", "[9 18 27]"},
                            {"A*T", "[10 40 90]"},
                            {"T/A", "[10 10 10]"},
                            {"A+1", "[2 3 4 5 6]"},
                            {"A/2", "[0.5 1 1.5 2 2.5]"},
                            {"10-T", "[0 -10 -20]"},
                            {"60/T", "[6 3 2]"},
                            {"T+\"5\"", "[15 25 35]"},
                            {"T+red", "[10 20 30]"},
                            {"3-\"2 apples\"", "1"},
                            {"3+red", "3"},
                            {"\"2\"+3", "\"23\""},
                            {"\"n=\"+T", "\"n=10\""},
                            {"\"v=\"+0.1", "\"v=0.1\""},
                            {"\"v=\"+1/3", "\"v=0.3333333333\""},
                            {"\"v=\"+1e30", "\"v=1e+30\""},
                            {"\"c=\"+red", "\"c=red\""},
                            {"1/0+BAD", by_zero}, // the left error
                            {"()+()", "NULL"},
                            {"NONE+1", "[]"},
                            {"NONE+T", "[]"},
                            {"\"\"+NONE", "\"0\""},
                            {"1+\"x\"", "1"},
                        });
    expect_each(context, "red", {"red+blue", "red+3", "red/0"});
    expect_each(context, "error: Bad Value", {"BAD+1", "1+BAD", "()+BAD"});
}

TEST(trelva_formula, division_by_zero) {
    sp_language context = with_variables();
    expect_all(context,
               {
                   {"SEQ(1,2)/SEQ(1,2,0)", "[1 1]"},                      // the zero divides nothing
                   {"1/(1e400-1e400)", by_zero},                          // not-a-number counts as zero
                   {"SEQ(1,2,3)/SEQ(1e400,-1e400,5e-324)", "[0 -0 inf]"}, // the smallest number is no zero
                   {"1/1e400", "0"},
                   {"1/NONE", "[]"},
               });
    expect_each(context, by_zero,
                {"1/0", "0/0", "A/0", "1/\"x\"", "1/SEQ(1,0)", "A/SEQ(1,2,0)", "A/SEQ(1,-0.0)",
                 "A/SEQ(1,1e400-1e400)", "(1/0)*0"});
}

TEST(trelva_formula, operands_keep_their_values) {
    sp_language context = with_variables();
    expect_all(context, {
                            {"(A+0)*2+A*(A-1)", "[2 6 12 20 30]"},
                            {"T+T*T", "[110 420 930]"},
                            {"(T+1)-(T+1)", "[0 0 0]"},
                            {"SEQ(1,2,3,4)*T", "[10 40 90]"}, // the longer side is a result of its own
                            {"A", "[1 2 3 4 5]"},
                            {"T", "[10 20 30]"},
                        });
}

// Every type to every type. The words stand for the type and the field that holds the result.
TEST(trelva_convert, table) {
    const double two[] = {1.5, 9.0};
    struct {
        sp_value from;
        const char *ary, *word, *string, *scaler, *error;
    } cases[] = {
        {sp_mkarray(sp_cpary(two)), "[1.5 9]", "ARRAY", "\"1.5\"", "1.5", "error: Manufactured error."},
        {sp_mkarray({}), "[]", "ARRAY", "\"0\"", "0", "error: Manufactured error."},
        {sp_mkword("red"), "[0]", "red", "\"red\"", "0", "error: Manufactured error."},
        {sp_mkstring("2.5e1x"), "[25]", "STRING", "\"2.5e1x\"", "25", "error: Manufactured error."},
        {sp_mkstring("x"), "[0]", "STRING", "\"x\"", "0", "error: Manufactured error."},
        {sp_mkscaler(1.0 / 3.0), "[0.3333333333]", "SCALER", "\"0.3333333333\"", "0.3333333333",
         "error: Manufactured error."},
        {sp_mkerror("m"), "error: m", "error: m", "error: m", "error: m", "error: m"},
    };
    sp_language context;
    for (const auto& c : cases) {
        SCOPED_TRACE(sp_show(c.from));
        EXPECT_EQ(sp_show(sp_convert(context, c.from, SP_ARRAY)), c.ary);
        EXPECT_EQ(sp_show(sp_convert(context, c.from, SP_WORD)), c.word);
        EXPECT_EQ(sp_show(sp_convert(context, c.from, SP_STRING)), c.string);
        EXPECT_EQ(sp_show(sp_convert(context, c.from, SP_SCALER)), c.scaler);
        EXPECT_EQ(sp_show(sp_convert(context, c.from, SP_ERROR)), c.error);
        EXPECT_EQ(sp_convert(context, c.from, SP_NULL).type, SP_NULL);
    }
}

// A value of no type stays one; the field of the asked type is filled all the same.
TEST(trelva_convert, no_value) {
    sp_language context;
    for (int type = SP_NULL; type <= SP_ERROR; type++) EXPECT_EQ(sp_convert(context, {}, type).type, SP_NULL);
    EXPECT_EQ(sp_convert(context, {}, SP_ARRAY).npts(), 1u);
    EXPECT_EQ(sp_convert(context, {}, SP_WORD).ename, "NULL");
    EXPECT_EQ(sp_convert(context, {}, SP_STRING).string, "NULL");
    EXPECT_EQ(sp_convert(context, {}, SP_ERROR).string, "Manufactured error (NULL).");
}

TEST(trelva_function, arguments_split_outside_brackets_and_quotes) {
    sp_language context = with_variables();
    struct {
        const char *name, *argstr, *shown;
    } cases[] = {
        {"SEQ", "1,(2+3),MAX(4,9)", "[1 5 9]"},
        {"NPTS", "\"a,b\",1", "2"},
        {"NPTS", "", "1"},
        {"NPTS", ",", "2"},
        {"NPTS", "(", "error: Syntax Error in function call."},
        {"NPTS", "1)", "error: Syntax Error in function call."},
        {"NPTS", "(1))(", "error: Syntax Error in function call."},
        {"NPTS", "\"a", "error: Syntax Error in function call."},
        {"nowhere", "", "error: Unknown function."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(sp_show(sp_eval_function(context, c.name, c.argstr)), c.shown) << c.argstr;
    expect_all(context, {{"seq(1,seq(2,seq(3,4)),5)", "[1 2 3 4 5]"},
                         {"SEQ(1,2+,3)", bad_order},
                         {"ERRSTR(2+)", "\"Syntax error: Operations out of order.\""},
                         {"NPTS(1,\")\",(2))", "3"}});
}

} // namespace
} // namespace norva::test
