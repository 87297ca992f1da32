#include "list_clock.h"

namespace norva {
namespace {

double number_or(_zuvfile& file, std::string_view name, double absent) {
    double real = 0.0;
    if (zuvfile_res_get_dbl(&file, name, real) == ZUV_OK) return real;
    int whole = 0;
    return zuvfile_res_get_int(&file, name, whole) == ZUV_OK ? whole : absent;
}

} // namespace

list_clock read_list_clock(_zuvfile& file) {
    const list_clock absent;
    list_clock read{number_or(file, "t0", absent.t0), number_or(file, "prf", absent.prf)};
    if (!(read.prf > 0.0)) read.prf = absent.prf;
    return read;
}

int list_number_index(const _zuvfile& file, std::string_view name) {
    if (file.rsize < 3 || file.rspace[0] != 1) return -1;
    const std::span<const char> list = file.rspace.span().subspan(1);
    const int indx = kwl_find(list, name);
    kwl_item item;
    return indx >= 0 && kwl_read(list, indx, item) == 1 && item.type != KW_STRING ? indx : -1;
}

} // namespace norva
