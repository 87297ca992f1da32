// The keyword list in a file's reserved area, and the default keyword service.
#include "fileio/mcvt.h"
#include "fileio/zuvfile.h"

namespace norva {

namespace {

// The list, behind the byte with the area's version; empty when the area is unusable.
std::span<char> list_of(_zuvfile* file) {
    if (!file || file->rsize < 3 || !file->rspace || file->rspace[0] != 1) return {};
    return file->rspace.span().subspan(1);
}

// The outcome 1 or 0 of a list operation as 1 or -1. A list that is empty has no room and no items.
int outcome(int done) {
    return done == 1 ? 1 : -1;
}

template <class Change> int change(_zuvfile* file, Change put) {
    std::span<char> list = list_of(file);
    if (list.empty() || file->rdonly || put(list) != 1) return -1;
    file->rchng = 1;
    return 1;
}

} // namespace

int zuvfile_res_new(_zuvfile* file) {
    if (!file || file->rdonly || file->rsize < 3 || !file->rspace) return -1;
    file->rspace[0] = 1;
    return change(file, [](std::span<char> list) {
        kwl_init(list);
        return 1;
    });
}

int zuvfile_res_cvt(_zuvfile* file) {
    std::span<char> list = list_of(file);
    if (list.empty()) return -1;
    kwl_convert(
        list, [](void* p) { mcvt_i4(p); }, [](void* p) { mcvt_f8(p); });
    return 1;
}

int zuvfile_res_put_int(_zuvfile* file, std::string_view name, int value) {
    return change(file, [&](std::span<char> list) { return kwl_put_int(list, name, value); });
}

int zuvfile_res_put_dbl(_zuvfile* file, std::string_view name, double value) {
    return change(file, [&](std::span<char> list) { return kwl_put_dbl(list, name, value); });
}

int zuvfile_res_put_str(_zuvfile* file, std::string_view name, std::string_view value) {
    return change(file, [&](std::span<char> list) { return kwl_put_str(list, name, value); });
}

int zuvfile_res_delete(_zuvfile* file, std::string_view name) {
    return change(file, [&](std::span<char> list) { return kwl_delete(list, kwl_find(list, name)); });
}

int zuvfile_res_get_int(_zuvfile* file, std::string_view name, int& value) {
    return outcome(kwl_get_int(list_of(file), name, value));
}

int zuvfile_res_get_dbl(_zuvfile* file, std::string_view name, double& value) {
    return outcome(kwl_get_dbl(list_of(file), name, value));
}

int zuvfile_res_get_str(_zuvfile* file, std::string_view name, std::string& value) {
    return outcome(kwl_get_str(list_of(file), name, value));
}

int zuvfile_res_get_n(_zuvfile* file, int& n) {
    n = kwl_nitems(list_of(file));
    return file ? 1 : -1;
}

int zuvfile_res_get_indx(_zuvfile* file, int indx, std::string& name, int& type) {
    kwl_item item;
    int done = kwl_read(list_of(file), indx, item);
    name = item.name;
    type = item.type;
    return outcome(done);
}

int zuvfile_res_exist(_zuvfile* file, std::string_view name, int& yes) {
    yes = kwl_find(list_of(file), name) >= 0;
    return file ? 1 : -1;
}

int zuvkwdef(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    static int savedindx = 0;
    if (!file) return ZUV_NULL_FILE;
    switch (opcode) {
    case KWOP_PUT_DBL: return zuvfile_res_put_dbl(file, name, arg.d);
    case KWOP_PUT_INT: return zuvfile_res_put_int(file, name, arg.i);
    case KWOP_PUT_STR: return zuvfile_res_put_str(file, name, arg.s);
    case KWOP_DELETE: return zuvfile_res_delete(file, name);
    case KWOP_GET_DBL: return zuvfile_res_get_dbl(file, name, arg.d);
    case KWOP_GET_INT: return zuvfile_res_get_int(file, name, arg.i);
    case KWOP_GET_STR: return zuvfile_res_get_str(file, name, arg.s);
    case KWOP_COUNT: return zuvfile_res_get_n(file, arg.i);
    case KWOP_EXIST: return zuvfile_res_exist(file, name, arg.i);
    case KWOP_ITEM: return zuvfile_res_get_indx(file, savedindx, name, arg.i);
    case KWOP_SELECT: savedindx = arg.i; return 1;
    default: return -1;
    }
}

} // namespace norva
