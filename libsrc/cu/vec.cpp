// Vector files.
#include "cu/vec.h"

#include "list_clock.h"
#include "series.h"

#include <iterator>

namespace norva {
namespace {

struct vec_type {
    using file = _vecfile;
    using head = _vecheader;
    static constexpr int code = FILETYPE_VEC;
    static constexpr int headsize = VEC_HEADSIZE;
    static constexpr bool stored_time = false;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .whole = &head::version},
        {.offset = 4, .whole = &head::nvec, .keyword = "nvec"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        return hd.nvec >= 1 && std::int64_t{hd.nvec} * 8 == p.kw.elementsize ? ZUV_OK : ZUV_BAD_TYPE;
    }
    static void convert(const file& p, std::span<std::byte> element) {
        mcvt_f8(&element[0], static_cast<std::size_t>(p.hd.nvec));
    }
    static int items(const file& p) { return p.hd.nvec; }
    static constexpr zuvservice service = vec_service;
    static constexpr zuvkwservice keywords = vec_keyword_service;
    static inline int status = ZUV_OK;
};

// --- Keywords: nvec of the header, then t0 and prf, then what else is in the list

struct time_key {
    const char* name;
    double _vecfile::*value;
};
constexpr time_key time_keys[] = {{"t0", &_vecfile::t0}, {"prf", &_vecfile::prf}};
constexpr int n_header_keys = 1, n_own_keys = n_header_keys + static_cast<int>(std::size(time_keys));

int call_time_key(_vecfile& p, const time_key& key, int opcode, std::string& name, kwarg& arg) {
    switch (opcode) {
    case KWOP_EXIST: arg.i = 1; return ZUV_OK;
    case KWOP_GET_DBL: arg.d = p.*key.value; return ZUV_OK;
    case KWOP_PUT_DBL: {
        if (p.rdonly) return series_status<vec_type>(ZUV_READ_ONLY);
        if (key.value == &_vecfile::prf && !(arg.d > 0.0)) return series_status<vec_type>(ZUV_BAD_ARGUMENT);
        const int status = zuvkwdef(&p, opcode, name, arg);
        vec_update(p);
        return status;
    }
    default: arg = {}; return -1; // of another type, or a delete
    }
}

int count_keys(_vecfile& p, std::string& name, kwarg& arg) {
    const int status = zuvkwdef(&p, KWOP_COUNT, name, arg);
    for (const time_key& key : time_keys)
        if (list_number_index(p, key.name) >= 0) arg.i--; // told already
    arg.i += n_own_keys;
    return status;
}

int key_at(_vecfile& p, int indx, std::string& name, kwarg& arg) {
    if (indx >= n_header_keys && indx < n_own_keys) {
        name = time_keys[indx - n_header_keys].name;
        arg.i = KW_DOUBLE;
        return ZUV_OK;
    }
    kwarg select{.i = indx};
    if (indx < n_header_keys) {
        series_keyword_service<vec_type>(&p, KWOP_SELECT, name, select);
        return series_keyword_service<vec_type>(&p, KWOP_ITEM, name, arg);
    }
    select.i -= n_own_keys;
    const auto [first, second] =
        std::minmax({list_number_index(p, time_keys[0].name), list_number_index(p, time_keys[1].name)});
    if (first >= 0 && select.i >= first) select.i++;
    if (second >= 0 && select.i >= second) select.i++;
    zuvkwdef(&p, KWOP_SELECT, name, select);
    return zuvkwdef(&p, KWOP_ITEM, name, arg);
}

} // namespace

int getvecerror() {
    return vec_type::status;
}

vecfile_ptr openvec(const std::string& name, const char* mode, int nvec) {
    vecfile_ptr p = series_open<vec_type>(name, mode, std::int64_t{nvec} * 8, {.nvec = nvec});
    if (!p) return p;
    vec_update(*p);
    if (toupperx(static_cast<unsigned char>(*mode)) == 'N' ||
        toupperx(static_cast<unsigned char>(*mode)) == 'C')
        for (const time_key& key : time_keys) zuvfile_res_put_dbl(p.get(), key.name, (*p).*key.value);
    return p;
}

void vec_update(_vecfile& p) {
    const list_clock clock = read_list_clock(p);
    p.t0 = clock.t0;
    p.prf = clock.prf;
}

int getvec(_vecfile* p, double& tme, std::span<double> row) {
    return series_getrow<vec_type>(p, tme, row);
}

int putvec(_vecfile* p, std::span<const double> row) {
    return series_putrow<vec_type>(p, row);
}

int getvechead(_vecfile* p, _vecheader& head) {
    return series_gethead<vec_type>(p, head);
}

int putvechead(_vecfile* p, const _vecheader& head) {
    return series_puthead<vec_type>(p, head);
}

int vec_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<vec_type>(file, opcode, arg);
}

int vec_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    static int savedindx = 0;
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<_vecfile&>(*file);
    switch (opcode) {
    case KWOP_COUNT: return count_keys(p, name, arg);
    case KWOP_SELECT: savedindx = arg.i; return ZUV_OK;
    case KWOP_ITEM: return key_at(p, savedindx, name, arg);
    default: break;
    }
    const auto key = std::ranges::find_if(time_keys, [&](const time_key& k) { return name == k.name; });
    if (key != std::end(time_keys)) return call_time_key(p, *key, opcode, name, arg);
    const int status = series_keyword_service<vec_type>(file, opcode, name, arg);
    vec_update(p); // "T0" is the list's "t0"
    return status;
}

} // namespace norva
