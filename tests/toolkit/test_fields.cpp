// Number text, fields, increment fields, lists.
#include "fixture.h"

#include <limits>

using namespace norva;
using namespace norva::test;

namespace {

using fields = toolkit_test;

TEST(wi_format_text, EdgeValues) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        double value;
        int ndec;
        const char* text;
    } const cases[] = {
        {0, 0, "0"},
        {2.5, 0, "3"}, // halves away from zero
        {-2.5, 0, "-3"},
        {-0.4, 0, "0"}, // never "-0"
        {999999999999.4, 0, "999999999999"},
        {1e12, 0, "1e+12"},
        {-1e12, -3, "-1e+12"},
        {nan, 0, "nan"},
        {nan, 2, "nan"},
        {1.005, 2, "1.00"}, // 1.005 lies below its decimal value
        {0.125, 12, "0.125000000000"},
        {0.125, 40, "0.125000000000"}, // 12 at most
        {9.9e13, 3, "99000000000000.000"},
        {1e14, 3, "1.000e+14"},
        {-1e14, 3, "-100000000000000.000"},
        {-1.1e14, 3, "-1.100e+14"},
        {1e-300, 1, "0.0"},
    };
    for (const auto& c : cases) {
        std::string text;
        wi_format(text, c.value, c.ndec);
        EXPECT_EQ(text, c.text) << c.value << " with " << c.ndec;
    }
}

TEST_F(fields, NumberFieldTakesNumberCharactersOnly) {
    wi_obj* n = wi_mk_numfld(nullptr, "n", 0.5, 2);
    wi_on(n);
    EXPECT_EQ(wi_numfld_getstr(n), "0.00");
    wi_numfld_putstr(n, "");
    rec.type(entry(n), "a1b.2xeE+-, 3\x16\xC3\xA9");
    EXPECT_EQ(wi_numfld_getstr(n), "1.2eE+- 3");
}

TEST_F(fields, ReturnShowsTheCanonicalFormAndCallsBack) {
    wi_obj* n = wi_mk_numfld(nullptr, "n", 0.5, 2);
    wi_numfld_set_cb(n, note_cb, 9);
    wi_on(n);
    struct {
        const char *typed, *shown;
    } const cases[] = {{"3", "3.00"},  {"+1e2", "100.00"}, {"-.5", "-0.50"},      {"", "0.00"},
                       {"e5", "0.00"}, {"1 2", "1.00"},    {"1e-", "1.00"},       {"--1", "0.00"},
                       {" 7", "7.00"}, {"1.2.3", "1.20"},  {"1e400", "1.80e+308"}};
    for (const auto& c : cases) {
        EXPECT_TRUE(rec.enter(entry(n), c.typed));
        EXPECT_EQ(wi_numfld_getstr(n), c.shown) << c.typed;
    }
    EXPECT_EQ(calls, std::vector<called>(std::size(cases), called{n, 9}));
    EXPECT_EQ(wi_get_int(n), std::numeric_limits<int>::max());
    wi_numfld_editable(n, 0);
    EXPECT_FALSE(rec.enter(entry(n), "5"));
    calls.clear();
    rec.press_return(entry(n));
    EXPECT_TRUE(calls.empty()) << "a field that is not editable reports nothing";
}

TEST_F(fields, StepsStayWithinTheLimits) {
    struct {
        double start, inc, top, bottom;
        const char* moves; // u, d
        double end;
    } const cases[] = {
        {9, 1, 10, 0, "u", 10},    // limit less the increment goes to the limit
        {9.5, 1, 10, 0, "u", 9.5}, // half the increment below stays
        {9, 1, 10, 0, "uuu", 10},      {1, 1, 10, 0, "dd", 0},
        {0.5, 1, 10, 0, "d", 0.5},     {0.3, 0.1, 10, 0.2, "d", 0.2}, // 0.3 - 0.1 lies below 0.2 by rounding
        {12, 1, 10, 0, "ud", 11}, // typed beyond the limit: no further, but back
        {5, 2.5, 10, 0, "udduu", 7.5},
    };
    for (const auto& c : cases) {
        wi_obj* i = wi_mk_incdecfld(nullptr, "i", 0.5, c.inc);
        const port_win arrows = std::get<wi_incdecfld>(i->obj).updownbut->wins[0];
        wi_on(i);
        wi_incdecfld_toplim(i, 1, c.top);
        wi_incdecfld_botlim(i, 1, c.bottom);
        wi_incdecfld_putval(i, c.start);
        for (const char* m = c.moves; *m; ++m) EXPECT_TRUE(rec.click_up_down(arrows, *m == 'u'));
        EXPECT_DOUBLE_EQ(wi_incdecfld_getval(i), c.end) << c.start << ' ' << c.moves;
    }
}

TEST_F(fields, CallbacksReplaceTheStepAndGetTheComposite) {
    wi_obj* i = wi_mk_incdecfld(nullptr, "i", 0.5, 10);
    const wi_incdecfld& f = std::get<wi_incdecfld>(i->obj);
    wi_on(i);
    EXPECT_EQ(wi_incdecfld_getstr(i), "0.00");
    wi_incdecfld_set_cb(i, note_cb, 1, note_cb, 2, note_cb, 0);
    rec.click_up_down(f.updownbut->wins[0], true);
    rec.click_up_down(f.updownbut->wins[0], false);
    rec.enter(entry(f.numfld), "77");
    EXPECT_EQ(calls, (std::vector<called>{{i, 1}, {i, 2}, {i, 0}}));
    EXPECT_EQ(wi_incdecfld_getval(i), 77) << "typed, not stepped";
    wi_incdecfld_set_cb(i, nullptr, 0, nullptr, 0, note_cb, 0);
    rec.click_up_down(f.updownbut->wins[0], true);
    EXPECT_EQ(wi_incdecfld_getval(i), 87) << "without callbacks it steps itself";
    wi_incdecfld_editable(i, 0);
    EXPECT_FALSE(rec.click_up_down(f.updownbut->wins[0], true));
    wi_enable(i, 0);
    wi_enable(i, 1);
    EXPECT_FALSE(rec.click_up_down(f.updownbut->wins[0], true)) << "still not editable";
    wi_incdecfld_editable(i, 1);
    EXPECT_TRUE(rec.click_up_down(f.updownbut->wins[0], true));
}

TEST_F(fields, StatusLinesAreTheProgramsOwn) {
    wi_obj* s = wi_mk_status(nullptr, "State:");
    wi_on(s);
    wi_status(s, "ready");
    EXPECT_FALSE(rec.type(entry(std::get<wi_statusline>(s->obj).strfld), "x"));
    EXPECT_EQ(wi_get_string(s), "ready");
}

TEST_F(fields, ListsReportTheChoice) {
    wi_obj* l = wi_mk_listsel(nullptr, "STYLE", 0, 0.3, {"a", "b", "c"});
    wi_listsel_selchng_cb(l, note_cb, 17);
    wi_on(l);
    EXPECT_EQ(wi_listsel_getindex(l), 0);
    EXPECT_TRUE(rec.select(l->wins[2], "c"));
    EXPECT_EQ(wi_listsel_getindex(l), 2);
    EXPECT_EQ(wi_listsel_getstr(l), "c");
    wi_listsel_putstr(l, "b");
    EXPECT_EQ(wi_listsel_getindex(l), 1);
    EXPECT_EQ(calls, (std::vector<called>{{l, 17}})) << "the program's own change calls nobody";
    wi_listsel_putstr(l, "none of them");
    EXPECT_EQ(wi_listsel_getindex(l), -1);
    EXPECT_EQ(wi_listsel_getstr(l), "");
    wi_listsel_setlist(l, {"x"});
    EXPECT_EQ(wi_listsel_getstr(l), "x");
    wi_listsel_setlist(l, {});
    EXPECT_EQ(wi_listsel_getindex(l), -1);
}

TEST_F(fields, AnEditableListTakesAnyText) {
    wi_obj* l = wi_mk_listsel(nullptr, "l", 1, 0.3, {"a", "b"});
    wi_listsel_selchng_cb(l, note_cb, 1);
    wi_on(l);
    rec.enter(l->wins[1], "typed");
    EXPECT_EQ(wi_listsel_getstr(l), "typed");
    EXPECT_EQ(wi_listsel_getindex(l), -1);
    rec.enter(l->wins[1], "b");
    EXPECT_EQ(wi_listsel_getindex(l), 1);
    EXPECT_EQ(calls.size(), 2u);
    wi_listsel_editable(l, 0); // the other list takes over what is chosen
    EXPECT_EQ(wi_listsel_getstr(l), "b");
    EXPECT_FALSE(rec.visible(l->wins[1]));
    EXPECT_TRUE(rec.visible(l->wins[2]));
    wi_listsel_popup_on(l);
    EXPECT_TRUE(rec.choose_menu("a"));
    EXPECT_EQ(wi_listsel_getstr(l), "a");
    EXPECT_EQ(calls.size(), 3u);
}

} // namespace
