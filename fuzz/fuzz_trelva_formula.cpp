// Formulas: any bytes end with a value, in a context that has a variable of every type.
#include "trelva/eval.h"
#include "trelva/script.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

namespace {

norva::sp_language with_variables() {
    norva::sp_language context;
    std::istringstream script(
        "X = 5\nA = SEQ(3,1,2)\nG = RAND(30)\nS = \"text\"\nW = red\nBAD = 1/0\na$b = 1\n"
        "NONE = RAMP(0,1,0)\nNAN = 1e400-1e400\n= 3\n");
    norva::s_process(context, script);
    return context;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static norva::sp_language context = with_variables();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const norva::sp_value val = norva::sp_eval_formula(context, text);
    for (int type = norva::SP_NULL; type <= norva::SP_ERROR; type++) norva::sp_convert(context, val, type);
    if (val.npts() < 1000) norva::sp_show(val);
    norva::sp_eval_function(context, "SEQ", text);
    if (norva::sp_var_isvar(context, "X") == 0) std::abort(); // a formula defines and removes nothing
    return 0;
}
