// Scripts: the line form, the errors with their line numbers, and sizes no user means.
#include "show.h"
#include "support/temp_dir.h"
#include "trelva/vars.h"

namespace norva::test {
namespace {

std::string value(sp_language& context, const char* name) {
    return sp_show(sp_var_getval(context, name));
}

TEST(trelva_script, line_forms) {
    sp_language context;
    run_script(context, "; a comment = 1\n"
                        "# command = 2\n"
                        "  # command = 3\n"
                        "\n"
                        "plain text\n"
                        "  A =  1 + 2 ; three\n"
                        "B=\"a;b\" ; text\n"
                        "X = 4\n"
                        "X=\n"
                        "X= ; nothing\n"
                        "two words = 5\n"
                        "E = \"p=q\"\n"
                        "CR = 6\r\n"
                        "CURVE_1_COLOR=red\n"
                        "- P = 7\n"
                        "-\n"
                        "LAST = A + 1");
    EXPECT_EQ(sp_err_get(context), " ");
    EXPECT_EQ(value(context, "a"), "3");
    EXPECT_EQ(value(context, "B"), "\"a;b\"");
    EXPECT_EQ(value(context, "X"), "4");
    EXPECT_EQ(value(context, "two words"), "5");
    EXPECT_EQ(value(context, "E"), "\"p=q\"");
    EXPECT_EQ(value(context, "CR"), "6");
    EXPECT_EQ(value(context, "curve_1_color"), "red");
    EXPECT_EQ(value(context, "LAST"), "4");
    EXPECT_EQ(sp_var_search(context, SP_SCALER, 2, 0), "P");
    for (const char* name : {"a comment", "; a comment", "# command", "command", ""})
        EXPECT_EQ(value(context, name), "NULL") << name;
}

TEST(trelva_script, errors_name_their_line) {
    sp_language context;
    run_script(
        context,
        "A = 1\nB = 1/0\n\nD = B + 1\nC = 3\n-A = 2\nA = 3\nE = ERRSTR(B)\nF = (1\nred = 5\nG = red\n");
    EXPECT_EQ(sp_err_get(context), "Error (line 2): Divide By Zero Error.\n"
                                   "Error (line 4): Bad Value\n"
                                   "Error (line 5): Cannot redefine variable provided by program.\n"
                                   "Error (line 7): Variable is protected by system.\n"
                                   "Error (line 9): Syntax error (parser).\n");
    EXPECT_EQ(value(context, "B"), "error: Bad Value");
    EXPECT_EQ(value(context, "C"), "299792500");
    EXPECT_EQ(value(context, "A"), "2");
    EXPECT_EQ(value(context, "E"), "\"Bad Value\"");
    EXPECT_EQ(value(context, "G"), "5"); // a variable stands over a word of its name
}

TEST(trelva_script, a_line_is_read_180_characters_at_a_time) {
    sp_language context;
    auto of_length = [](std::size_t n) { return "A = \"" + std::string(n - 6, 'x') + "\""; };
    run_script(context, of_length(180) + "\n");
    EXPECT_EQ(sp_var_getval(context, "A").string.size(), 174u);
    EXPECT_EQ(sp_err_get(context), " ");
    run_script(context, "\n" + of_length(181) + "\nB = 1/0\n");
    EXPECT_EQ(sp_err_get(context), "Error (line 2): Syntax error (in string).\n"
                                   "Error (line 3): Divide By Zero Error.\n");
    run_script(context, std::string(180, ' ') + "D = 4\n");
    EXPECT_EQ(value(context, "D"), "4");
}

TEST(trelva_script, files) {
    temp_dir dir;
    sp_language context;
    write_all(dir.file("style.trv"), "A = 1\r\nB = A + 1\r\n");
    EXPECT_TRUE(s_process(context, dir.file("style.trv")));
    EXPECT_EQ(value(context, "B"), "2");
    EXPECT_FALSE(s_process(context, dir.file("none.trv")));
    EXPECT_FALSE(s_process(context, dir.path().string()));
    EXPECT_EQ(sp_err_get(context), " ");
}

// --- Sizes

std::string repeated(const std::string& text, int n) {
    std::string all;
    for (int i = 0; i < n; i++) all += text;
    return all;
}

TEST(trelva_sizes, long_and_deep_formulas) {
    sp_language context;
    const int deep = 10000, long_one = 250000;
    std::string in_brackets = repeated("(", deep) + "1" + repeated(")", deep);
    expect_all(context, {
                            {in_brackets, "1"},
                            {repeated("(1+", deep) + "0" + repeated(")", deep), "10000"},
                            {repeated("SUM(1,", deep) + "0" + repeated(")", deep), "10000"},
                            {"NPTS(" + repeated("1,", long_one) + "1)", "250001"},
                            {"0" + repeated("+1*1", long_one), "250000"},
                            {repeated("(", 1000000), "error: Syntax error (parser)."},
                            {repeated(")", 1000000), "error: Syntax error (parser)."},
                            {repeated("(", 300000) + "2" + repeated(")", 300000), "2"},
                            {repeated("#(", 300000), "error: Syntax error: Operations out of order."},
                            {repeated("F(", 300000), "error: Syntax error (in %func)."},
                            {std::string(1000000, 'n'), std::string(32, 'n')},
                            {std::string(1000000, 'n') + "(1)", "error: Unknown function."},
                            {"\"" + std::string(1000000, 's') + "\"+\"t\"", "error: String is too long."},
                        });
    EXPECT_EQ(sp_eval_formula(context, "\"" + std::string(1000000, 's') + "\"").string.size(), 1000000u);
}

TEST(trelva_sizes, a_script_of_many_lines) {
    sp_language context;
    std::string script;
    for (int i = 1; i <= 10000; i++)
        script +=
            "V" + std::to_string(i) + " = " + (i > 1 ? "V" + std::to_string(i - 1) + " + " : "") + "1\n";
    run_script(context, script + "X = )\n");
    EXPECT_EQ(value(context, "v10000"), "10000");
    EXPECT_EQ(sp_err_get(context), "Error (line 10001): Syntax error (parser).\n");
}

// Growth by doubling ends with a message and not with the machine's memory.
TEST(trelva_sizes, doubling_meets_a_limit) {
    sp_language context;
    run_script(context, "A = SEQ(1,2)\nS = \"ab\"\n" + repeated("A = SEQ(A,A)\nS = S+S\n", 60) +
                            "T = ERRSTR(A)\nU = ERRSTR(S)\n");
    EXPECT_EQ(value(context, "T"), "\"Bad Value\"");
    EXPECT_EQ(value(context, "U"), "\"Bad Value\"");
    EXPECT_NE(sp_err_get(context).find("Array is too large."), std::string::npos);
    EXPECT_NE(sp_err_get(context).find("String is too long."), std::string::npos);
}

} // namespace
} // namespace norva::test
