// One calling surface over all typed files.
#include "fileio/ufile.h"

namespace norva {

namespace {

int last_status = ZUV_OK;

int remember(int status) {
    return last_status = status;
}

int call(_zuvfile* file, int opcode, uarg& arg) {
    if (!file) return remember(ZUV_NULL_FILE);
    return remember(file->ucall ? file->ucall(file, opcode, arg) : -1);
}

double time_of(_zuvfile* file, int opcode) {
    uarg arg;
    call(file, opcode, arg);
    return arg.t;
}

std::int64_t number_of(_zuvfile* file, int opcode) {
    uarg arg;
    call(file, opcode, arg);
    return arg.n;
}

int transfer(_zuvfile* file, int opcode, std::span<std::byte> data, std::int64_t n = 0) {
    uarg arg{.n = n, .data = data};
    return call(file, opcode, arg);
}

// The service takes bytes to be read and bytes to be written by the same member; an opcode does one or the
// other.
std::span<std::byte> writable(std::span<const std::byte> bytes) {
    return {const_cast<std::byte*>(bytes.data()), bytes.size()};
}

kwarg keyword(_zuvfile* file, int opcode, std::string_view name, kwarg arg = {}) {
    std::string spelled(name);
    if (!file)
        remember(ZUV_NULL_FILE);
    else
        remember(file->ukwcall ? file->ukwcall(file, opcode, spelled, arg) : -1);
    return arg;
}

} // namespace

int u_error() {
    return last_status;
}

double u_firsttime(_zuvfile* file) {
    return time_of(file, UOP_FIRSTTIME);
}
double u_lasttime(_zuvfile* file) {
    return time_of(file, UOP_LASTTIME);
}
std::int64_t u_nelem(_zuvfile* file) {
    return number_of(file, UOP_NELEM);
}
int u_canwrite(_zuvfile* file) {
    return static_cast<int>(number_of(file, UOP_CANWRITE));
}
double u_nexttime(_zuvfile* file) {
    return time_of(file, UOP_NEXTTIME);
}
std::int64_t u_nextelem(_zuvfile* file) {
    return number_of(file, UOP_NEXTELEM);
}
int u_timemove(_zuvfile* file, double t) {
    uarg arg{.t = t};
    return call(file, UOP_TIMEMOVE, arg);
}
int u_elemmove(_zuvfile* file, std::int64_t n) {
    return transfer(file, UOP_ELEMMOVE, {}, n);
}
int u_getelem(_zuvfile* file, std::span<std::byte> element) {
    return transfer(file, UOP_GETELEM, element);
}
int u_getnelem(_zuvfile* file, std::span<std::byte> elements, std::int64_t n) {
    return transfer(file, UOP_GETNELEM, elements, n);
}
int u_putelem(_zuvfile* file, std::span<const std::byte> element) {
    return transfer(file, UOP_PUTELEM, writable(element));
}
int u_gethead(_zuvfile* file, std::span<std::byte> head) {
    return transfer(file, UOP_GETHEAD, head);
}
int u_puthead(_zuvfile* file, std::span<const std::byte> head) {
    return transfer(file, UOP_PUTHEAD, writable(head));
}
int u_elemsize(_zuvfile* file) {
    return static_cast<int>(number_of(file, UOP_ELEMSIZE));
}
int u_headsize(_zuvfile* file) {
    return static_cast<int>(number_of(file, UOP_HEADSIZE));
}
int u_nitems(_zuvfile* file) {
    return static_cast<int>(number_of(file, UOP_NITEMS));
}
int u_type(_zuvfile* file) {
    return static_cast<int>(number_of(file, UOP_TYPE));
}

std::string u_filename(_zuvfile* file) {
    uarg arg;
    call(file, UOP_TYPE, arg);
    return arg.s;
}

int u_close(zuvfile_ptr file) {
    if (!file) return remember(ZUV_NULL_FILE);
    uarg arg;
    int status = file->ucall ? file->ucall(file.get(), UOP_CLOSE, arg) : ZUV_OK;
    int closed = zuvfileclose(std::move(file));
    return remember(status == ZUV_OK ? closed : status);
}

int u_kwput_d(_zuvfile* file, std::string_view name, double value) {
    keyword(file, KWOP_PUT_DBL, name, {.d = value});
    return last_status;
}
int u_kwput_i(_zuvfile* file, std::string_view name, int value) {
    keyword(file, KWOP_PUT_INT, name, {.i = value});
    return last_status;
}
int u_kwput_s(_zuvfile* file, std::string_view name, std::string_view value) {
    keyword(file, KWOP_PUT_STR, name, {.s = std::string(value)});
    return last_status;
}
int u_kwdelete(_zuvfile* file, std::string_view name) {
    keyword(file, KWOP_DELETE, name);
    return last_status;
}
double u_kwget_d(_zuvfile* file, std::string_view name) {
    return keyword(file, KWOP_GET_DBL, name).d;
}
int u_kwget_i(_zuvfile* file, std::string_view name) {
    return keyword(file, KWOP_GET_INT, name).i;
}
std::string u_kwget_s(_zuvfile* file, std::string_view name) {
    return keyword(file, KWOP_GET_STR, name).s;
}
int u_kwget_n(_zuvfile* file) {
    return keyword(file, KWOP_COUNT, {}).i;
}
int u_kwexist(_zuvfile* file, std::string_view name) {
    return keyword(file, KWOP_EXIST, name).i;
}

int u_kwindx(_zuvfile* file, int indx, std::string& name, int& type) {
    name.clear();
    type = 0;
    keyword(file, KWOP_SELECT, {}, {.i = indx});
    if (last_status != ZUV_OK) return last_status;
    kwarg arg;
    remember(file->ukwcall(file, KWOP_ITEM, name, arg));
    type = arg.i;
    return last_status;
}

int u_reg(_zuvfile* file, zuvservice routine) {
    if (!file) return remember(ZUV_NULL_FILE);
    file->ucall = routine;
    return remember(ZUV_OK);
}

int u_kwreg(_zuvfile* file, zuvkwservice routine) {
    if (!file) return remember(ZUV_NULL_FILE);
    file->ukwcall = routine;
    return remember(ZUV_OK);
}

} // namespace norva
