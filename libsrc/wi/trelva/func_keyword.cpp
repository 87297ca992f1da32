// GETKW: one keyword of a data file of any type.
#include "file_read.h"
#include "functions_int.h"
#include "open_typed.h"

namespace norva {

sp_value fn_getkw(sp_args args) {
    zuvfile_ptr file = sp_open_typed(sp_text(args[0]));
    if (!file) return sp_mkerror("File does not exist.");
    sp_value found = sp_keyword_value(file.get(), sp_text(args[1]));
    return found.type == SP_NULL ? sp_mkerror("Parameter does not exist.") : found;
}

} // namespace norva
