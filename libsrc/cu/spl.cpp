// Spline files.
#include "cu/spl.h"

#include "series.h"

#include <algorithm>
#include <cstring>

namespace norva {
namespace {

constexpr std::size_t coe_offset = 16; // of the coefficients in an element

struct spl_type {
    using file = _splfile;
    using head = _splheader;
    static constexpr int code = FILETYPE_SPL;
    static constexpr int headsize = SPL_HEADSIZE;
    static constexpr bool stored_time = true;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .text = &head::text, .size = SPL_TEXT_LEN + 1, .keyword = "text"},
        {.offset = 104, .whole = &head::version},
        {.offset = 108, .whole = &head::ncoe, .keyword = "ncoe"},
        {.offset = 112, .text = &head::type, .size = SPL_UNITS_LEN + 1, .keyword = "type"},
        {.offset = 136, .text = &head::xunits, .size = SPL_UNITS_LEN + 1, .keyword = "xunits"},
        {.offset = 160, .text = &head::yunits, .size = SPL_UNITS_LEN + 1, .keyword = "yunits"},
        {.offset = 184, .whole = &head::ider, .keyword = "ider"},
        {.offset = 188, .whole = &head::space},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        if (hd.ncoe < 1 || std::int64_t{hd.ncoe} * SPL_ELEMSIZE != p.kw.elementsize) return ZUV_BAD_TYPE;
        return ZUV_OK;
    }
    static void convert(const file& p, std::span<std::byte> element) {
        mcvt_f8(&element[0]);
        mcvt_i4(&element[8], 2);
        mcvt_f8(&element[coe_offset], static_cast<std::size_t>(p.hd.ncoe));
    }
    static int items(const file& p) { return p.hd.ncoe; }
    static constexpr zuvservice service = spl_service;
    static constexpr zuvkwservice keywords = spl_keyword_service;
    static inline int status = ZUV_OK;
};

} // namespace

int getsplerror() {
    return spl_type::status;
}

splfile_ptr openspl(const std::string& name, const char* mode, int ncoe) {
    _splheader head;
    head.ncoe = ncoe;
    return series_open<spl_type>(name, mode, std::int64_t{ncoe} * SPL_ELEMSIZE, head);
}

int getspl(_splfile* p, double& tme, int& ncont, int& flg2, std::span<double> coe) {
    if (int status = series_read<spl_type>(p); status != ZUV_OK) return status;
    const std::span<const std::byte> element = p->elembuf.span();
    tme = get_at<double>(element, 0);
    ncont = get_at<std::int32_t>(element, 8);
    flg2 = get_at<std::int32_t>(element, 12);
    const std::size_t n = std::min(coe.size(), static_cast<std::size_t>(p->hd.ncoe));
    for (std::size_t j = 0; j < n; j++) coe[j] = get_at<double>(element, coe_offset + j * sizeof(double));
    std::ranges::fill(coe.subspan(n), 0.0);
    return ZUV_OK;
}

int putspl(_splfile* p, double tme, int ncont, int flg2, std::span<const double> coe) {
    const std::span<std::byte> element = series_blank<spl_type>(p);
    if (element.empty()) return spl_type::status;
    if (std::ssize(coe) != p->hd.ncoe) return series_status<spl_type>(ZUV_BAD_ARGUMENT);
    put_at(element, 0, tme);
    put_at(element, 8, std::int32_t{ncont});
    put_at(element, 12, std::int32_t{flg2});
    std::memcpy(&element[coe_offset], coe.data(), coe.size_bytes());
    return series_status<spl_type>(zuvfilewriteblock(p, element, 1));
}

int getspltme(_zuvfile* file, std::int64_t element, double& tme) {
    return series_time<spl_type>(file, element, tme);
}

int getsplkeys(_splfile* p, std::string& type, std::string& xunits, std::string& yunits, int& ider) {
    if (!p) return series_status<spl_type>(ZUV_NULL_FILE);
    type = p->hd.type;
    xunits = p->hd.xunits;
    yunits = p->hd.yunits;
    ider = p->hd.ider;
    return series_status<spl_type>(ZUV_OK);
}

int putsplkeys(_splfile* p, const std::string& type, const std::string& xunits, const std::string& yunits,
               int ider) {
    _splheader head;
    if (int status = getsplhead(p, head); status != ZUV_OK) return status;
    head.type = type;
    head.xunits = xunits;
    head.yunits = yunits;
    head.ider = ider;
    return putsplhead(p, head);
}

int getsplhead(_splfile* p, _splheader& head) {
    return series_gethead<spl_type>(p, head);
}

int putsplhead(_splfile* p, const _splheader& head) {
    return series_puthead<spl_type>(p, head);
}

int spl_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<spl_type>(file, opcode, arg);
}

int spl_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    return series_keyword_service<spl_type>(file, opcode, name, arg);
}

} // namespace norva
