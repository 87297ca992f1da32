// Names, numbers, the environment file, the text of the message window, the command line.
#include "app/decimation.h"
#include "app/env_file.h"
#include "app/message_text.h"
#include "app/names.h"
#include "app/start.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace norva {
namespace {

TEST(names, parts) {
    EXPECT_EQ(rootname("run.7/data.x.pfx"), "run.7/data");
    EXPECT_EQ(rootname("plain"), "plain");
    EXPECT_EQ(rename_file("a/b\\c.pfx"), "c.pfx");
    EXPECT_EQ(version_part("a;b/c.jou;12"), ";12");
    EXPECT_EQ(getdir("data/a.pf"), "data/*.pf*");
    EXPECT_EQ(getdir("a.jou;3"), "*.jou");
    EXPECT_EQ(getdir("a.txt"), "a.txt");
    EXPECT_TRUE(ext_eq("a.jou:3", ".jou"));
    EXPECT_FALSE(ext_eq("a.jour", ".jou"));
    EXPECT_TRUE(rnm_eq("a.jou;1", "a.mc"));
}

TEST(names, free_version) {
    const test::temp_dir dir;
    const std::string name = dir.file("a.jou");
    EXPECT_EQ(versno(name, 1), name + ";1");
    test::write_all(name + ";1", "x");
    EXPECT_EQ(versno(name, 1), name + ";2");
    test::write_all(name + "3", "x"); // the plain name in the way of version 2
    EXPECT_EQ(versno(name, 1), name + ";3");
    EXPECT_EQ(versno(name + ";1", 1), std::nullopt);
    EXPECT_EQ(versno(name, 0), std::nullopt);
    test::write_all(name + ":4", "x");
    test::write_all(name + ":2", "x");
    EXPECT_EQ(versno(name, 0), name + ":4");
}

TEST(numbers, helpers) {
    EXPECT_EQ(nearest_elem(4.6f, 1, 0.5f), 7);
    EXPECT_EQ(nearest_elem(4.6f, 1, 0), 0);
    EXPECT_EQ(ipow(3, 4), 81);
    EXPECT_EQ(fpow(0, -2), 0);
    EXPECT_DOUBLE_EQ(fpow(2, -3), 0.125);
    EXPECT_FALSE(isfact(0, 6));
    EXPECT_EQ(near_factor(1, 3, 12), 4);
    EXPECT_EQ(near_factor(-1, 6, 12), 4);
    EXPECT_EQ(near_factor(1, 12, 12), 12);
}

TEST(decimation, sizes) {
    const struct {
        int n, k, cut, m;
    } cases[] = {{24, 2, 24, 12}, {7, 1, 6, 6}, {7, 2, 7, 3}, {23, 1, 20, 20}, {100, 3, 100, 36},
                 {1, 1, 1, 1},    {1, 5, 1, 1}, {2, 9, 2, 2}, {3, 1, 3, 3},    {13, 2, 13, 6}};
    for (const auto& c : cases) {
        const decimated_size size = decimate_to(c.n, 8, c.k, 1);
        EXPECT_EQ(size.nf, c.cut) << c.n << " by " << c.k;
        EXPECT_EQ(size.mf, c.m) << c.n << " by " << c.k;
        EXPECT_EQ(size.mt, 8);
    }
}

TEST(env_file, slots) {
    std::istringstream in("A=1  \t\n# a comment\n\n  \nB=" + std::string(100, 'x') + "\nC   \n");
    const std::vector<std::string> lines = read_env_lines(in);
    // A line of 102 characters fills one slot of 79 and runs on in the next.
    const std::vector<std::string> expected = {
        "A=1", "\n", " ", "B=" + std::string(77, 'x'), std::string(23, 'x'), "C"};
    EXPECT_EQ(lines, expected);

    std::string many;
    for (int i = 0; i < 30; i++) many += "#\nN" + std::to_string(i) + "=1\n";
    std::istringstream long_file(many);
    const std::vector<std::string> kept = read_env_lines(long_file);
    ASSERT_EQ(kept.size(), 20u);
    EXPECT_EQ(kept.back(), "N19=1");
}

TEST(env_file, first_place_that_has_it) {
    const test::temp_dir dir;
    const test::current_dir inside(dir.path());
    setenv("XDG_CONFIG_HOME", dir.file("config").c_str(), 1);
    EXPECT_FALSE(norva_env(""));
    test::write_all("installed.env", "NORVA_TEST_PLACE=installed\n");
    std::filesystem::create_directory("norva.env"); // a folder of that name is no file
    EXPECT_TRUE(norva_env("installed.env"));
    EXPECT_STREQ(getenv("NORVA_TEST_PLACE"), "installed");
    std::filesystem::create_directories("config/norva");
    test::write_all("config/norva/norva.env", "NORVA_TEST_PLACE=config\nno equals sign\n=x\n");
    EXPECT_TRUE(norva_env("installed.env"));
    EXPECT_STREQ(getenv("NORVA_TEST_PLACE"), "config");
    unsetenv("XDG_CONFIG_HOME");
}

TEST(message_text, breaks_appends_and_starts_afresh) {
    message_text text;
    text.add("short", true);
    EXPECT_EQ(text.text, "short");
    text.add("second", true);
    EXPECT_EQ(text.text, "short\n\nsecond");
    EXPECT_EQ(text.lines, 3);
    text.add("third", false);
    EXPECT_EQ(text.text, "third");

    // The first blank behind 50 characters becomes the line's end, not one before it.
    text.add(std::string(49, 'a') + " b c d", false);
    EXPECT_EQ(text.text, std::string(49, 'a') + " b\nc d");
    EXPECT_EQ(text.lines, 2);

    text.add(std::string(3000, 'x'), false);
    EXPECT_EQ(text.text.size(), 2000u);
    text.add("more", true); // does not fit: afresh
    EXPECT_EQ(text.text, "more");
}

TEST(command_line, words) {
    const auto parse = [](std::vector<const char*> words) {
        words.insert(words.begin(), "norva");
        return parse_options(static_cast<int>(words.size()), words.data());
    };
    EXPECT_NE(parse({"--help"}).answer.find("--replay"), std::string::npos);
    EXPECT_EQ(parse({"--replay", "a.jou"}).out, "out");
    EXPECT_EQ(parse({"--replay", "a.jou", "--out", "x"}).out, "x");
    EXPECT_EQ(parse({"a.pfx"}).open, "a.pfx");
    EXPECT_EQ(parse({"helpedit"}).open, "");
    for (const std::vector<const char*>& bad :
         {std::vector<const char*>{"--replay"}, {"--out", "x"}, {"--oops"}, {"a", "b"}})
        EXPECT_NE(parse(bad).fault, "") << bad[0];
}

} // namespace
} // namespace norva
