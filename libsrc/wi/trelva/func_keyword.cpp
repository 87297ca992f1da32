// GETKW: one keyword of a data file of any type.
#include "fileio/ufile.h"
#include "functions_int.h"
#include "open_typed.h"

namespace norva {

sp_value fn_getkw(sp_args args) {
    zuvfile_ptr file = sp_open_typed(sp_text(args[0]));
    if (!file) return sp_mkerror("File does not exist.");
    const std::string keyword = sp_text(args[1]);
    const double d = u_kwget_d(file.get(), keyword);
    if (u_error() == ZUV_OK) return sp_mkscaler(d);
    const int i = u_kwget_i(file.get(), keyword);
    if (u_error() == ZUV_OK) return sp_mkscaler(i);
    std::string s = u_kwget_s(file.get(), keyword);
    if (u_error() == ZUV_OK) return sp_mkstring(std::move(s));
    return sp_mkerror("Parameter does not exist.");
}

} // namespace norva
