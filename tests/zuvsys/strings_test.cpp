// The c_ string and list family and the older set.
#include "zuvsys/basicstr.h"
#include "zuvsys/clist.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/jmalloc.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace norva {
namespace {

using texts = std::vector<std::string>;

texts taken(char** list) {
    texts out;
    for (int i = 0; i < c_listlen(list); i++) out.emplace_back(list[i]);
    c_freelist(list);
    return out;
}

// A text in a buffer of its own, as the routines that write in place need it.
struct field {
    char text[64] = {};
    explicit field(const char* s) { std::strcpy(text, s); }
    operator char*() { return text; }
};

TEST(c_list, words_split_outside_quotes) {
    struct {
        const char* in;
        texts out;
    } cases[] = {
        {"one \"two  half\" three", {"one", "\"two  half\"", "three"}},
        {"  \t edge\n blanks \n", {"edge", "blanks"}},
        {"glued\"a b\"c d", {"glued\"a b\"c", "d"}},
        {"open \"to the end", {"open", "\"to the end"}},
        {"", {}},
        {"a b c d e f g h i j k l m n o p", // more than the first ten entries
         {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o", "p"}},
    };
    for (const auto& c : cases) {
        field copy(c.in);
        EXPECT_EQ(taken(c_words_new(c.in)), c.out) << c.in;
        EXPECT_EQ(taken(c_words(copy)), c.out) << c.in;
    }
    EXPECT_EQ(taken(c_words_new(nullptr)), texts());
}

TEST(c_list, words_leave_room_for_two_more) {
    char** words = c_words_new("a b c d e f g h");
    c_addlist(words, "i");
    c_addlist(words, "j");
    EXPECT_EQ(c_listlen(words), 10);
    c_freelist(words);
}

TEST(c_list, growing_adders_keep_capacity_in_step) {
    int mn = 0;
    char** list = c_addlistgrow(nullptr, "first", &mn);
    EXPECT_EQ(mn, 4);
    for (int i = 0; i < 40; i++) list = c_addlistgrow(list, "more", &mn);
    EXPECT_EQ(c_listlen(list), 41);
    EXPECT_GT(mn, 42);
    list = c_mvtolistgrow(list, c_mkstr("moved"), &mn);
    EXPECT_EQ(c_locinlistx(list, "MOVED"), 41);
    EXPECT_EQ(c_locinlist(list, "MOVED"), -1);
    EXPECT_EQ(c_isinlist(list, "first"), 1);
    c_freelist(list);

    // A list of n entries grows when n is at least *mn - 2: by ten from *mn, and to n + 4.
    mn = 5;
    list = c_mklist(mn);
    for (const char* s : {"0", "1", "2"}) c_addlist(list, s);
    list = c_mvtolistgrow(list, c_mkstr("3"), &mn);
    EXPECT_EQ(mn, 15);
    mn = 5;
    list = c_addlistgrow(list, "4", &mn);
    EXPECT_EQ(mn, 8);
    EXPECT_EQ(taken(list), (texts{"0", "1", "2", "3", "4"}));
}

TEST(c_list, empty_pointers_are_harmless) {
    int mn = 3;
    EXPECT_EQ(c_mkstr(nullptr), nullptr);
    EXPECT_EQ(c_mvtolistgrow(nullptr, nullptr, &mn), nullptr);
    EXPECT_EQ(c_addlistgrow(nullptr, nullptr, &mn), nullptr);
    EXPECT_EQ(c_listlen(nullptr), 0);
    EXPECT_EQ(c_locinlist(nullptr, "a"), -1);
    EXPECT_EQ(c_mkdary(0), nullptr);
    EXPECT_EQ(c_cpfary(nullptr, 4), nullptr);
    c_freelist(nullptr);
    const int three[] = {1, 2, 3};
    int* copy = c_cpiary(three, 3);
    EXPECT_EQ(copy[2], 3);
    jfree(copy);
}

TEST(c_strings, abbreviations) {
    struct {
        const char *full, *given;
        int is;
    } cases[] = {
        {"MAX~ELEMENTS", "MAX", 1},
        {"MAX~ELEMENTS", "MAXEL", 1},
        {"MAX~ELEMENTS", "MA", 0},
        {"MAX~ELEMENTS", "MAXELEMENTSX", 0},
        {"MAX~ELEMENTS", "MAXELEMENTS", 1},
        {"MAX~ELEMENTS", "MAXE~", 0},
        {"TIME", "TIME", 1},
        {"TIME", "TIM", 0},
        {"~ALL", "", 1},
        {"A~B~C", "AB~", 1},
        {"A~B~C", "ABC", 0},
        {"", "", 1},
    };
    for (const auto& c : cases) EXPECT_EQ(c_isabbr(c.full, c.given, '~'), c.is) << c.full << " " << c.given;
    EXPECT_EQ(c_isabbrx("MAX~ELEMENTS", "maxel", '~'), 1);
    EXPECT_EQ(c_isabbr("MAX~ELEMENTS", "maxel", '~'), 0);
    EXPECT_EQ(c_isabbr(nullptr, "A", '~'), 0);
}

// The rule as it is told: one character after the other, "*" by trying every tail that is not empty.
int wild_reference(const char* t, const char* s) {
    if (!*t && !*s) return 1;
    if (!*t || !*s) return 0;
    if (*t == '*') {
        if (!t[1]) return 1;
        for (; *s; s++)
            if (wild_reference(t + 1, s)) return 1;
        return 0;
    }
    return (*t == '?' || *t == *s) && wild_reference(t + 1, s + 1);
}

// All texts of at most `most` letters of an alphabet.
texts all_texts(const std::string& alphabet, std::size_t most) {
    texts out{""};
    for (std::size_t i = 0; i < out.size(); i++)
        if (out[i].size() < most)
            for (char c : alphabet) out.push_back(out[i] + c);
    return out;
}

TEST(c_strings, wildcards_agree_with_the_rule_everywhere) {
    texts patterns = all_texts("ab*?", 5), subjects = all_texts("ab", 5);
    for (const std::string& t : patterns)
        for (const std::string& s : subjects)
            ASSERT_EQ(c_iswild(t.c_str(), s.c_str()), wild_reference(t.c_str(), s.c_str())) << t << " " << s;
    EXPECT_EQ(c_iswild("a*", "a"), 0);
    EXPECT_EQ(c_iswild("*", ""), 0);
    EXPECT_EQ(c_iswildx("RaNge*", "rAnge profile"), 1);
    std::string stars, many(5000, 'a'); // would take for ever if every star were tried again
    for (int i = 0; i < 20; i++) stars += "*a";
    EXPECT_EQ(c_iswild((stars + "*b").c_str(), many.c_str()), 0);
}

TEST(c_strings, search_outside_quotes) {
    const char* text = "a\"=\"b=c";
    EXPECT_EQ(c_strchrq(text, '=') - text, 5);
    EXPECT_EQ(c_strchrq(text, '"') - text, 1); // the test comes before the toggle
    EXPECT_EQ(c_strchrq(text, 'x'), nullptr);
    EXPECT_EQ(c_strchrq(static_cast<const char*>(nullptr), 'x'), nullptr);
}

TEST(c_strings, comparisons) {
    EXPECT_EQ(c_iseqx("Gate", "gATE"), 1);
    EXPECT_EQ(c_iseq("Gate", "gATE"), 0);
    EXPECT_EQ(c_iseqx("gate", "gates"), 0);
    EXPECT_EQ(c_iseq(nullptr, nullptr), 0);
    EXPECT_EQ(c_strcmpx("a", "C"), -2);
    EXPECT_EQ(c_strcmpx("ab", "A"), 'B');
    EXPECT_EQ(c_strcmpx("\xE4", "\xC4"), 0xE4 - 0xC4); // only ASCII letters fold
    EXPECT_EQ(c_strcmpx(nullptr, "A"), 1);
    EXPECT_EQ(strncmpx("rangeX", "RANGEY", 5), 0);
    EXPECT_EQ(strncmpx("rangeX", "RANGEY", 6), -1);
    EXPECT_EQ(strncmpx("a", "A", 50), 0);
    EXPECT_EQ(strncmpx("a", "b", 0), 0);
}

TEST(c_strings, copies_and_appends_stay_inside) {
    field f("abc");
    EXPECT_STREQ(c_strncat(f, "defgh", 6), "abcde");
    EXPECT_STREQ(c_strncat(f, "x", 6), "abcde"); // one byte free
    EXPECT_STREQ(c_strncpy(f, "range", 3), "ra");
    EXPECT_STREQ(c_strncpy(f, "range", 0), "ra");
    EXPECT_STREQ(c_strncpy(f, nullptr, 3), "");
    EXPECT_STREQ(c_extendstr(f, 3), "   ");
    EXPECT_STREQ(c_setstrlen(c_strncpy(f, "gates", 9), 3), "gat");
    EXPECT_STREQ(c_setstrlen(f, 5), "gat  ");
    EXPECT_STREQ(c_extendstr(f, 2), "gat  ");

    int n = 0;
    char* s = c_strcatgrow(nullptr, nullptr, &n);
    EXPECT_EQ(n, 20);
    for (int i = 0; i < 30; i++) s = c_strcatgrow(s, "0123456789", &n);
    EXPECT_EQ(std::strlen(s), 300U);
    EXPECT_GE(n, 301);
    jfree(s);
    n = 2;
    s = c_strcatgrow(nullptr, "abc", &n);
    EXPECT_EQ(n, 4);
    jfree(s);
}

TEST(c_strings, blanks_and_tabs) {
    struct {
        const char *in, *start, *end, *edges;
    } cases[] = {
        {" \t\na b \n", "a b \n", " \t\na b", "a b"},
        {"   ", "", "", ""},
        {"", "", "", ""},
        {"\ra", "\ra", "\ra", "\ra"}, // a carriage return is no blank here
    };
    for (const auto& c : cases) {
        field a(c.in), b(c.in), d(c.in);
        EXPECT_STREQ(c_ridstartws(a), c.start);
        EXPECT_STREQ(c_ridendws(b), c.end);
        EXPECT_STREQ(c_ridedgews(d), c.edges);
    }
    field tabs("ab\tc\n\td\x7F\te");
    EXPECT_STREQ(c_ridtab(tabs, 64), "ab      c\n        d\x7F       e");
    field few("a\tb");
    EXPECT_STREQ(c_ridtab(few, 5), "a   ");
    field none("a\tb");
    EXPECT_STREQ(c_ridtab(none, 0), "a\tb");
}

TEST(basicstr, search_and_move) {
    EXPECT_EQ(strindx("", ""), 0);
    EXPECT_EQ(strindx("abc", ""), -1);
    EXPECT_EQ(strindx("", "abc"), -1);
    EXPECT_EQ(strindx("xaaab", "aab"), 2);
    field f("0123456789");
    xmove(f + 2, f, 8);
    EXPECT_STREQ(f, "0101234567");
    xmove(f, f + 2, 8);
    EXPECT_STREQ(f, "0123456767");
    strlimcpy(f, "gate", 3);
    EXPECT_STREQ(f, "ga");
}

} // namespace
} // namespace norva
