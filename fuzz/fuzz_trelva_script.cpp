// Scripts: any bytes leave the constants as they were and nothing behind after a flush.
#include "trelva/script.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    norva::sp_language context;
    norva::sp_var_putval(context, "u", norva::sp_mkarray(norva::sp_mkary(5)), 0);
    std::istringstream script(std::string(reinterpret_cast<const char*>(data), size));
    norva::s_process(context, script);
    norva::sp_var_flush(context);
    if (context.vlib->vars.size() != 4) std::abort();
    if (norva::sp_var_getval(context, "C").scaler != 299792500.0) std::abort();
    if (norva::sp_var_getval(context, "U").npts() != 5) std::abort();
    return 0;
}
