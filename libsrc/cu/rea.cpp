// Track files.
#include "cu/rea.h"

#include "series_keys.h"

namespace norva {
namespace {

struct rea_type {
    using file = _reafile;
    using head = _reaheader;
    static constexpr int code = FILETYPE_REA;
    static constexpr int headsize = REA_HEADSIZE;
    static constexpr bool stored_time = true;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .whole = &head::version},
        {.offset = 4, .text = &head::text, .size = 104, .keyword = "text"},
        {.offset = 108, .whole = &head::spare},
        {.offset = 112, .real = &head::t0, .keyword = "t0"},
        {.offset = 120, .real = &head::prf, .keyword = "prf"},
        {.offset = 128, .real = &head::tbias, .keyword = "tbias"},
        {.offset = 136, .real = &head::xlam, .keyword = "xlam"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        if (p.kw.elementsize != REA_ELEMSIZE) return ZUV_BAD_TYPE;
        return hd.prf > 0.0 && hd.xlam > 0.0 ? ZUV_OK : ZUV_BAD_HEADER;
    }
    static void convert(const file&, std::span<std::byte> element) {
        mcvt_f8(&element[0], 2);
        mcvt_f4(&element[16], 2);
        mcvt_i4(&element[24], 2);
    }
    static int items(const file&) { return 1; }
    static constexpr zuvservice service = rea_service;
    static constexpr zuvkwservice keywords = rea_keyword_service;
    static inline int status = ZUV_OK;
};

} // namespace

int getreaerror() {
    return rea_type::status;
}

reafile_ptr openrea(const std::string& name, const char* mode) {
    return series_open<rea_type>(name, mode, REA_ELEMSIZE, {});
}

int getrea(_reafile* p, double& tme, double& rng, float& el, float& az, int& iflg) {
    if (int status = series_read<rea_type>(p); status != ZUV_OK) return status;
    const _reaelement element = rea_unpack(p->elembuf.span());
    tme = element.time;
    rng = element.range;
    el = element.elevation;
    az = element.azimuth;
    iflg = element.flag;
    return ZUV_OK;
}

int putrea(_reafile* p, double tme, double rng, float el, float az, int iflg) {
    const std::span<std::byte> element = series_blank<rea_type>(p);
    if (element.empty()) return rea_type::status;
    rea_pack({tme, rng, el, az, iflg, 0}, element);
    return series_status<rea_type>(zuvfilewriteblock(p, element, 1));
}

_reaelement rea_unpack(std::span<const std::byte> bytes) {
    return {get_at<double>(bytes, 0), get_at<double>(bytes, 8),        get_at<float>(bytes, 16),
            get_at<float>(bytes, 20), get_at<std::int32_t>(bytes, 24), get_at<std::int32_t>(bytes, 28)};
}

void rea_pack(const _reaelement& element, std::span<std::byte> bytes) {
    put_at(bytes, 0, element.time);
    put_at(bytes, 8, element.range);
    put_at(bytes, 16, element.elevation);
    put_at(bytes, 20, element.azimuth);
    put_at(bytes, 24, element.flag);
    put_at(bytes, 28, element.spare);
}

int getreatme(_zuvfile* file, std::int64_t element, double& tme) {
    return series_time<rea_type>(file, element, tme);
}

int getreakeys(_reafile* p, double& t0, double& tbias, double& prf, double& xlam) {
    return series_getkeys<rea_type>(p, t0, tbias, prf, xlam);
}

int putreakeys(_reafile* p, double t0, double tbias, double prf, double xlam) {
    return series_putkeys<rea_type>(p, t0, tbias, prf, xlam);
}

int getreahead(_reafile* p, _reaheader& head) {
    return series_gethead<rea_type>(p, head);
}

int putreahead(_reafile* p, const _reaheader& head) {
    return series_puthead<rea_type>(p, head);
}

int rea_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<rea_type>(file, opcode, arg);
}

int rea_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    return series_keyword_service<rea_type>(file, opcode, name, arg);
}

} // namespace norva
