#include "journal_fixture.h"

#include "journal/listing.h"
#include "journal/tag_ary.h"

#include <algorithm>

namespace norva::test {

namespace {

struct listing_test : journal_test {};

// The heading and the given lines, each padded by its text's field of 60 characters.
std::string page(const std::vector<std::pair<std::string, std::string>>& lines) {
    std::string all = "Journal File Operations\n\n"
                      "Step #    mc        Description\n"
                      "------------------------------------------------------------\n";
    for (const auto& [prefix, text] : lines) all += prefix + text + std::string(60 - text.size(), ' ') + "\n";
    return all;
}

} // namespace

TEST_F(listing_test, StepsAndTheStepsOfAnImage) {
    const words ary = {
        8,  0,   0,   3,   0,   5,   1,   28,  1,   27,  2, // an image that ends in a motion compensation
        13, 101, 110, 111, 108, 200, 203, 209, 222, 226, 101, 223, 109, 119, //
        25, 2,   49,  2,   60,  2,   89,  2,   1,   2};
    const journal_listing listing = list_journal(ary);
    EXPECT_EQ(listing.text, page({
                                {"   0       0        ", "Initialization"},
                                {"   1       0        ", "Range Profile (window)"},
                                {"   2       1        ", "Center Profiles (Mocomp)"},
                                {"   3       1        ", "Image Processing (window)"},
                                {"           1            ", "Flop Image"},
                                {"           1            ", "Polar Format Initialization"},
                                {"           1            ", "Write Data File After Image Edit"},
                                {"           1            ", "Compute Cut (window)"},
                                {"           1                ", "Initialization"},
                                {"           1                ", "Subtract Phase Slope"},
                                {"           2                ", "Motion Compensate"},
                                {"           2            ", "Dismiss Cut Window (to image window)"},
                                {"           2            ", "Flop Image"},
                                {"           2                ", ""},
                                {"           2            ", "Center"},
                                {"   4       2        ", "Dismiss Image Window (to main window)"},
                                {"   5       2        ", ""},
                                {"   6       2        ", "BLANK"},
                                {"   7       2        ", ""},
                            }));
    EXPECT_TRUE(listing.messages.empty());
}

TEST_F(listing_test, FaultsAreToldAndTheRestIsShown) {
    const struct {
        words entries;
        const char* message;
        std::size_t lines; // of the image
    } rows[] = {{{101, 99, 101}, "ERROR(1) in get_jrnl_info()/jrnl", 1},
                {{101, 103, 227}, "ERROR(2) in get_jrnl_info()/jrnl", 2},
                {{119, 101}, "ERROR(3) in get_jrnl_info()/jrnl!", 0}};
    for (const auto& row : rows) {
        words ary = {1, 27, 0, static_cast<std::int32_t>(row.entries.size())};
        ary.insert(ary.end(), row.entries.begin(), row.entries.end());
        ary.insert(ary.end(), {1, 0});
        std::string text;
        messages.clear();
        get_jrnl_info(text, ary);
        EXPECT_EQ(messages, std::vector<std::string>{row.message});
        EXPECT_EQ(std::ranges::count(text, '\n'), static_cast<long>(4 + row.lines + 2)) << row.message;
        for (std::size_t n = 0; n < ary.size(); n++) list_journal(std::span(ary).first(n)); // cut short: safe
    }
    EXPECT_EQ(list_journal(words{-1}).text, page({}));
    EXPECT_EQ(list_journal(words{2, 27, 0, -5, 1}).text,
              page({{"   0       0        ", "Dismiss Image Window (to main window)"}}));
}

TEST_F(listing_test, SixHundredLinesAreShown) {
    words ary = {2, 27, 0, 598};
    ary.insert(ary.end(), 598, 101);
    ary.insert(ary.end(), {1, 0}); // the 600th line
    EXPECT_TRUE(list_journal(ary).messages.empty());
    ary.insert(ary.end(), {2, 0});
    const journal_listing full = list_journal(ary);
    EXPECT_EQ(full.messages, std::vector<std::string>{"Can only display 600 lines of the journal!"});
    EXPECT_EQ(std::ranges::count(full.text, '\n'), 604);
}

// Every action once, with counts where its length depends on them. Operands are -7, no mode at all, so that
// a walk of wrong length is noticed.
TEST_F(listing_test, WalkThroughTheImagesActions) {
    const std::pair<int, int> image[] = {{1, 2}, {3, 5}, {4, 5}, {5, 3}, {6, 3}, {7, 1}, {11, 1}, {9, 6}};
    const std::vector<words> cut = {{0, -7, -7, 2, -7, -7, -7, -7, -7, -7},
                                    {1, -7, 2, -7, -7},
                                    {2, -7, 0},
                                    {3, -7, -7, -7, -7, -7},
                                    {17, -7, 1, 2, -7, -7, -7, -7, -7},
                                    {18, -7, -7, -7, -7, -7},
                                    {4},
                                    {9},
                                    {5, -7, -7, -7},
                                    {8, -7, -7, -7},
                                    {15, -7, -7, -7},
                                    {16, -7, -7, -7},
                                    {6, -7, -7},
                                    {7, -7, -7},
                                    {20, -7, -7},
                                    {22, -7, -7},
                                    {10, -7},
                                    {11, -7},
                                    {19, -7},
                                    {14, 3, -7, -7, -7},
                                    {21, -7, -7, -7, -7},
                                    {26}};
    words ja = {0, 10}, expected;
    for (const auto& [mode, length] : image) {
        ja.push_back(mode);
        ja.insert(ja.end(), length - 1, -7);
        expected.push_back(mode + 100);
    }
    const int cut_at = static_cast<int>(ja.size());
    ja.push_back(8);
    ja.insert(ja.end(), 8, -7);
    expected.push_back(108);
    for (const words& action : cut) {
        ja.insert(ja.end(), action.begin(), action.end());
        expected.push_back(action[0] + 200);
    }
    ja.insert(ja.end(), {19, 4}); // dismissal, motion compensation pointer
    expected.push_back(119);
    ja[0] = static_cast<int>(ja.size());

    int ns = -1;
    words ta;
    get_tag_ary(ja, ns, ta);
    EXPECT_EQ(ta, expected);
    EXPECT_EQ(ns, static_cast<int>(expected.size()));
    EXPECT_TRUE(messages.empty());

    // Cut short anywhere, or with a wild number anywhere, it ends inside the array.
    for (std::size_t n = 0; n + 1 < ja.size(); n++) {
        EXPECT_NE(walk_actions(std::span(ja).first(n)).err, 0) << n;
        for (const int wild : {-7, 12, 1000, 0x7fffffff, -0x7fffffff - 1}) {
            words changed = ja;
            changed[n] = wild;
            walk_actions(changed);
        }
    }
    const struct {
        int at, value, err;
    } faults[] = {{2, 2, 2}, {2, 19, 2},          {1, 9, 3},          {1, 11, 3},
                  {1, 0, 3}, {cut_at + 9, 12, 1}, {cut_at + 9, 27, 1}};
    for (const auto& fault : faults) {
        words changed = ja;
        changed[fault.at] = fault.value;
        EXPECT_EQ(walk_actions(changed).err, fault.err) << fault.at << " " << fault.value;
    }
}

TEST_F(listing_test, AFaultyArrayIsWrittenDownForInspection) {
    write_all("gta_dbg.txt;1", "of an earlier fault");
    user.jfile = "a.jou;1";
    int ns = -1;
    words ta;
    get_tag_ary(words{6, 2, 1, 3, 77, 0}, ns, ta);
    EXPECT_EQ(ns, 0);
    EXPECT_TRUE(ta.empty());
    EXPECT_EQ(messages, std::vector<std::string>{"ERROR(2) in get_tag_ary() -- bad mode=77!"});
    EXPECT_EQ(read_all("gta_dbg.txt;2"), "journal file=a.jou;1\nerr=2\nbad mode=77\n\nk=1\nj=1\nj0=4\n"
                                         "\n6\n2\n1\n3\n77\t-- BAD MODE -- ja[j0]=77\n\n0");
    get_tag_ary(words{5, 1, 1, 3, 0}, ns, ta);
    EXPECT_EQ(messages.back(), "ERROR(3) in get_tag_ary() -- bad proimag tag array!");
    EXPECT_EQ(read_all("gta_dbg.txt;1"), "of an earlier fault");
}

} // namespace norva::test
