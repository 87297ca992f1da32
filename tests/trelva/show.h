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

// Long texts are cut, so that a failure can be read.
inline std::string shown(sp_language& context, const std::string& formula) {
    const sp_value val = sp_eval_formula(context, formula);
    if (val.npts() > 1000) return "an array of " + std::to_string(val.npts());
    return sp_show(val).substr(0, 10000);
}

inline void expect_all(sp_language& context, const std::vector<formula_case>& cases) {
    for (const formula_case& c : cases)
        EXPECT_EQ(shown(context, c.formula), c.shown) << c.formula.substr(0, 200);
}

// Formulas that all give one value.
inline void expect_each(sp_language& context, const std::string& value,
                        const std::vector<std::string>& formulas) {
    for (const std::string& f : formulas) EXPECT_EQ(shown(context, f), value) << f.substr(0, 200);
}

inline void run_script(sp_language& context, const std::string& text) {
    std::istringstream script(text);
    s_process(context, script);
}

} // namespace norva::test
