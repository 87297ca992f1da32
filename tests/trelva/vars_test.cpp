// The variable library: classes, messages, flushing; the count of live elements.
#include "show.h"
#include "trelva/vars.h"

namespace norva::test {
namespace {

std::vector<std::string> names(sp_language& context, int vartype, int memtype) {
    std::vector<std::string> found;
    while (auto name = sp_var_search(context, vartype, memtype, static_cast<int>(found.size())))
        found.push_back(*name);
    return found;
}

TEST(trelva_vars, constants_are_the_stored_decimals_under_any_case) {
    sp_language context;
    EXPECT_EQ(sp_var_getval(context, "pi").scaler, 3.141592654);
    EXPECT_EQ(sp_var_getval(context, "TwoPi").scaler, 6.283185308);
    EXPECT_EQ(sp_var_getval(context, "C").scaler, 299792500.0);
    EXPECT_EQ(sp_var_getdesc(context, "c"), "Speed of Light (m/s)");
    EXPECT_EQ(names(context, SP_SCALER, 0), (std::vector<std::string>{"PI", "TWOPI", "C"}));
}

TEST(trelva_vars, unknown_names) {
    sp_language context;
    EXPECT_EQ(sp_var_getval(context, "nothing").type, SP_NULL);
    EXPECT_EQ(sp_var_isvar(context, "nothing"), 0);
    EXPECT_EQ(sp_var_getdesc(context, "nothing"), " ");
    sp_var_putdesc(context, "nothing", "text");
    EXPECT_EQ(sp_var_isvar(context, "nothing"), 0);
    EXPECT_EQ(sp_var_search(context, SP_ARRAY, 0, 0), std::nullopt);
}

// Every pair of classes: who may replace whom, and which class the name has afterwards.
TEST(trelva_vars, classes) {
    const std::string by_program = "Cannot redefine variable provided by program.";
    const std::string by_system = "Variable is protected by system.";
    struct {
        int first, second;
        std::string message;
    } cases[] = {
        {0, 0, ""}, {0, 1, by_program}, {0, 2, by_program}, {1, 0, ""}, {1, 1, ""},
        {1, 2, ""}, {2, 0, ""},         {2, 1, by_system},  {2, 2, ""}, {1, 7, ""}, // 7 counts as 1
    };
    for (const auto& c : cases) {
        sp_language context;
        sp_var_putval(context, "Name", sp_mkscaler(1.0), c.first);
        sp_var_putdesc(context, "NAME", "kept");
        EXPECT_EQ(sp_var_putval(context, "name", sp_mkword("w"), c.second), c.message)
            << c.first << " then " << c.second;
        const bool stored = c.message.empty();
        EXPECT_EQ(sp_var_getval(context, "NAME").type, stored ? SP_WORD : SP_SCALER);
        int now = stored ? (c.second == 7 ? 1 : c.second) : c.first;
        EXPECT_EQ(sp_var_search(context, stored ? SP_WORD : SP_SCALER, now, now == 0 && !stored ? 3 : 0),
                  "Name");
        EXPECT_EQ(sp_var_getdesc(context, "name"), "kept");
    }
}

TEST(trelva_vars, a_flush_keeps_what_the_program_provides_in_order_and_in_place) {
    sp_language context;
    for (const char* name : {"u", "a1", "x0"}) sp_var_putval(context, name, sp_mkarray(sp_mkary(3)), 0);
    sp_var_putval(context, "mine", sp_mkarray(sp_mkary(4)), 1);
    sp_var_putval(context, "last", sp_mkarray(sp_mkary(5)), 0);
    sp_var_putval(context, "safe", sp_mkarray(sp_mkary(6)), 2);
    const sp_value* last = &sp_var_getval(context, "last");

    const std::vector<std::string> before = names(context, SP_ARRAY, 0);
    sp_var_flush(context);
    EXPECT_EQ(names(context, SP_ARRAY, 0), before);
    EXPECT_EQ(before, (std::vector<std::string>{"u", "a1", "x0", "last"}));
    EXPECT_EQ(&sp_var_getval(context, "LAST"), last);
    EXPECT_EQ(sp_var_isvar(context, "mine") + sp_var_isvar(context, "safe"), 0);
    EXPECT_EQ(sp_var_isvar(context, "pi"), 1);

    sp_var_freelib(context);
    EXPECT_EQ(names(context, SP_ARRAY, 0).size(), 0u);
    EXPECT_EQ(sp_var_isvar(context, "pi"), 1);
}

TEST(trelva_values, live_elements_are_counted) {
    const std::size_t before = sp_array::live();
    {
        sp_array a = sp_mkary(100), b = a;
        EXPECT_EQ(sp_array::live(), before + 100);
        b.own();
        EXPECT_EQ(sp_array::live(), before + 200);
    }
    EXPECT_EQ(sp_array::live(), before);
}

} // namespace
} // namespace norva::test
