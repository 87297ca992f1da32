#pragma once
// Formulas in tables: what a user types, and the text of the value it gives.
#include "trelva/eval.h"
#include "trelva/script.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace norva::test {

struct formula_case {
    std::string formula;
    std::string shown; // by sp_show
};

inline std::string shown(sp_language& context, const std::string& formula) {
    return sp_show(sp_eval_formula(context, formula));
}

inline void expect_all(sp_language& context, const std::vector<formula_case>& cases) {
    for (const formula_case& c : cases) EXPECT_EQ(shown(context, c.formula), c.shown) << c.formula;
}

inline void run_script(sp_language& context, const std::string& text) {
    std::istringstream script(text);
    s_process(context, script);
}

} // namespace norva::test
