// The command line evaluator: output, errors, exit status.
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace norva::test {
namespace {

struct outcome {
    int status;
    std::string out, err;
};

// Runs the tool in the current folder with the rest of a shell command line.
outcome trelva(const std::string& rest) {
    const int status = std::system(("\"" TRELVA_TOOL "\" " + rest + " >out.txt 2>err.txt").c_str());
    return {WEXITSTATUS(status), read_all("out.txt"), read_all("err.txt")};
}

TEST(trelva_tool, runs) {
    temp_dir dir;
    current_dir here(dir.path());
    write_all("good.trv", "X = RAMP(1,1,3)\r\n-Y = SUM(X) ; six\nlabel = \"n = \" + Y\ncolor = red\n");
    write_all("bad.trv", "A = 1\nB = A/0\n");
    struct {
        const char* command;
        int status;
        const char *out, *err;
    } cases[] = {
        {"'1+2*3' -2.5 -.5 'SEQ(1,2)'", 0, "7\n-2.5\n-0.5\n[1 2]\n", ""},
        {"'1+' 2", 1, "2\n", "1+: error: Syntax error: Operations out of order.\n"},
        {"-f good.trv", 0, "X = [1 2 3]\nY = 6\nlabel = \"n = 6\"\ncolor = red\n", ""},
        {"< good.trv", 0, "X = [1 2 3]\nY = 6\nlabel = \"n = 6\"\ncolor = red\n", ""},
        {"--file good.trv 'MAX(X)' -- -1", 0, "3\n-1\n", ""},
        {"-f - x < good.trv", 0, "[1 2 3]\n", ""},
        {"-f bad.trv", 1, "A = 1\nB = error: Bad Value\n",
         "bad.trv: Error (line 2): Divide By Zero Error.\n"},
        {"-f good.trv -f bad.trv A", 1, "1\n", "bad.trv: Error (line 2): Divide By Zero Error.\n"},
        {"-f none.trv", 2, "", "trelva: cannot read none.trv\n"},
        {"-f .", 2, "", "trelva: cannot read .\n"},
    };
    for (const auto& c : cases) {
        outcome got = trelva(c.command);
        EXPECT_EQ(got.status, c.status) << c.command;
        EXPECT_EQ(got.out, c.out) << c.command;
        EXPECT_EQ(got.err, c.err) << c.command;
    }
}

TEST(trelva_tool, help_and_misuse) {
    temp_dir dir;
    current_dir here(dir.path());
    EXPECT_EQ(trelva("--help").status, 0);
    EXPECT_NE(read_all("out.txt").find("Exit status"), std::string::npos);
    EXPECT_EQ(trelva("--what").status, 2);
    EXPECT_NE(read_all("err.txt").find("unknown option --what"), std::string::npos);
    EXPECT_EQ(trelva("-f").status, 2);
    write_all("long.trv", "A = 1 ; " + std::string(200, '-') + "\n");
    outcome got = trelva("-f long.trv");
    EXPECT_EQ(got.out, "A = 1\n");
    EXPECT_NE(got.err.find("long.trv: line 1 is longer than 180 characters"), std::string::npos);
}

} // namespace
} // namespace norva::test
