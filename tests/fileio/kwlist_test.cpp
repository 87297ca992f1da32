// The keyword list: byte layout, limits, quirks, and a long random history against a plain model.
#include "fileio/kwlist.h"
#include "zuvsys/basicstr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace norva {
namespace {

using list_block = std::array<char, 256>;

TEST(kwlist, names_ignore_case_and_type_matters_for_values_only) {
    list_block buf;
    kwl_init(buf);
    kwl_put_str(buf, "KSX", "minus one");
    kwl_put_dbl(buf, "T0", 5.0);
    EXPECT_EQ(kwl_find(buf, "ksx"), 0);
    int i = 9;
    EXPECT_EQ(kwl_get_int(buf, "KSX", i), 0);
    EXPECT_EQ(i, 0);
    EXPECT_EQ(kwl_put_str(buf, "KSX", ""), 0); // refused, and the old one stays
    EXPECT_EQ(kwl_put_int(buf, "", 1), 0);
    EXPECT_EQ(kwl_put_int(std::span<char>(), "A", 1), 0);
    EXPECT_EQ(kwl_find(buf, "KSX"), 0);
    EXPECT_EQ(kwl_put_int(buf, "Ksx", -1), 1); // replaces the string, and moves to the end
    EXPECT_EQ(kwl_nitems(buf), 2);
    EXPECT_EQ(kwl_find(buf, "KSX"), 1);
    EXPECT_EQ(kwl_get_int(buf, "KSX", i), 1);
    EXPECT_EQ(i, -1);
    std::string s = "old";
    EXPECT_EQ(kwl_get_str(buf, "KSX", s), 0);
    EXPECT_EQ(s, "");
}

TEST(kwlist, two_items_of_one_name_are_told_apart_by_type) {
    // Other programs write such lists. The int lies behind a double of the same name.
    list_block buf{};
    std::string bytes("\x0C\x02\x00\x00\x00\x00\x00\x00\xF0\x3FX\0"
                      "\x08\x01\x07\x00\x00\x00X\0",
                      20);
    std::ranges::copy(bytes, buf.begin());
    int i = 0;
    EXPECT_EQ(kwl_get_int(buf, "x", i), 1);
    EXPECT_EQ(i, 7);
}

TEST(kwlist, texts_are_cut) {
    list_block buf;
    kwl_init(buf);
    EXPECT_EQ(kwl_put_int(buf, std::string(100, 'n'), 3), 1);
    kwl_item item;
    ASSERT_EQ(kwl_read(buf, 0, item), 1);
    EXPECT_EQ(item.name, std::string(63, 'n'));
    EXPECT_EQ(kwl_put_str(buf, "A", std::string(121, 'v')), 1); // 127 bytes: the longest that is found again
    std::string value;
    EXPECT_EQ(kwl_get_str(buf, "A", value), 1);
    EXPECT_EQ(value, std::string(121, 'v'));
}

// Sizes are read as signed bytes: an item of 128 bytes ends the walk, and the next item is put over it.
TEST(kwlist, an_item_of_more_than_127_bytes_ends_the_walk) {
    list_block buf;
    kwl_init(buf);
    kwl_put_int(buf, "FIRST", 1);
    EXPECT_EQ(kwl_put_str(buf, "LONG", std::string(119, 'v')), 1);
    EXPECT_EQ(kwl_nitems(buf), 1);
    EXPECT_EQ(kwl_find(buf, "LONG"), -1);
    EXPECT_EQ(kwl_put_str(buf, "LONGER", std::string(500, 'v')), 1); // 179 + 6 + 5 bytes, in the same place
    EXPECT_EQ(static_cast<unsigned char>(buf[12]), 190);
    EXPECT_EQ(kwl_put_int(buf, "SECOND", 2), 1);
    EXPECT_EQ(kwl_nitems(buf), 2);
    EXPECT_EQ(kwl_find(buf, "SECOND"), 1);
}

TEST(kwlist, malformed_items_end_the_count_but_not_a_search) {
    struct {
        const char* what;
        std::string bytes;
        int second; // what kwl_read gives for item 1, behind a good item 0
    } cases[] = {
        {"end", std::string(1, '\0'), -1},
        {"negative size", "\x80\x01", -1},
        {"size 1", "\x01", 0},
        {"size 2", "\x02\x01", 0},
        {"type 0", std::string("\x08\x00\x01\x00\x00\x00N\0", 8), 0},
        {"type 4", std::string("\x08\x04\x01\x00\x00\x00N\0", 8), 0},
        {"int without name", std::string("\x06\x01\x01\x00\x00\x00", 6), 0},
        {"double shorter than its value", std::string("\x08\x02\x01\x00\x00\x00N\0", 8), 0},
        {"string longer than its item", std::string("\10\3\6ab\0N\0", 8), 0},
        {"string length negative", std::string("\10\3\377ab\0N\0", 8), 0},
        {"string length 0", std::string("\10\3\0ab\0N\0", 8), 0},
        {"runs past the end", "\x18\x01", 0},
    };
    for (const auto& c : cases) {
        std::array<char, 32> buf{};
        ASSERT_EQ(kwl_put_int(buf, "A", 1), 1);
        std::ranges::copy(c.bytes, buf.begin() + 8);
        kwl_item item;
        EXPECT_EQ(kwl_read(buf, 0, item), 1) << c.what;
        EXPECT_EQ(kwl_read(buf, 1, item), c.second) << c.what;
        EXPECT_EQ(item.type, 0) << c.what;
        EXPECT_EQ(kwl_nitems(buf), 1) << c.what;
        EXPECT_EQ(kwl_delete(buf, 1), 0) << c.what;
    }
    // A size of 1 is no item, but a walk by index has passed it.
    std::array<char, 32> buf{'\x01'};
    std::string good("\x08\x01\x07\x00\x00\x00N\0", 8);
    std::ranges::copy(good, buf.begin() + 1);
    kwl_item item;
    EXPECT_EQ(kwl_read(buf, 0, item), 0);
    EXPECT_EQ(kwl_read(buf, 1, item), 1);
    EXPECT_EQ(item.ival, 7);
    EXPECT_EQ(kwl_nitems(buf), 0);
    EXPECT_EQ(kwl_find(buf, "n"), 1);
    int i = 0;
    EXPECT_EQ(kwl_put_int(buf, "M", 9), 1); // what is put behind it is found again
    EXPECT_EQ(kwl_get_int(buf, "M", i), 1);
    EXPECT_EQ(i, 9);
}

TEST(kwlist, a_long_history_agrees_with_a_model) {
    std::vector<kwl_item> model;
    std::array<char, 300> buf;
    kwl_init(buf);
    std::mt19937 random(7);
    auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
    auto bytes = [](const kwl_item& item) {
        auto n = item.name.size();
        return item.type == KW_INT ? n + 7 : item.type == KW_DOUBLE ? n + 11 : item.sval.size() + n + 5;
    };
    int refused = 0;
    for (int step = 0; step < 20000; step++) {
        kwl_item next;
        next.name = std::string(1 + static_cast<std::size_t>(below(6)),
                                static_cast<char>((below(2) ? 'a' : 'A') + below(4)));
        next.type = 1 + below(3);
        next.ival = next.type == KW_INT ? below(1000) : 0;
        next.dval = next.type == KW_DOUBLE ? below(1000) * 0.5 : 0.0;
        next.sval = next.type == KW_STRING ? std::string(1 + static_cast<std::size_t>(below(40)), 's') : "";
        auto same = [&](const kwl_item& x) { return strcmpx(x.name.c_str(), next.name.c_str()) == 0; };
        if (below(4) == 0) {
            int done = kwl_delete(buf, kwl_find(buf, next.name));
            EXPECT_EQ(done, static_cast<int>(std::erase_if(model, same)));
        } else {
            std::size_t total = bytes(next);
            for (const kwl_item& x : model) total += same(x) ? 0 : bytes(x);
            bool fits = total <= buf.size() - 1;
            int done = next.type == KW_INT      ? kwl_put_int(buf, next.name, next.ival)
                       : next.type == KW_DOUBLE ? kwl_put_dbl(buf, next.name, next.dval)
                                                : kwl_put_str(buf, next.name, next.sval);
            ASSERT_EQ(done, fits) << step;
            if (fits) {
                std::erase_if(model, same);
                model.push_back(next);
            }
            refused += !fits;
        }
        ASSERT_EQ(kwl_nitems(buf), static_cast<int>(model.size()));
        for (std::size_t i = 0; i < model.size(); i++) {
            kwl_item item;
            ASSERT_EQ(kwl_read(buf, static_cast<int>(i), item), 1);
            ASSERT_EQ(item.name, model[i].name);
            ASSERT_EQ(item.type, model[i].type);
            ASSERT_EQ(item.ival, model[i].ival);
            ASSERT_EQ(item.dval, model[i].dval);
            ASSERT_EQ(item.sval, model[i].sval);
        }
    }
    EXPECT_GT(refused, 100); // the block was full now and then
}

} // namespace
} // namespace norva
