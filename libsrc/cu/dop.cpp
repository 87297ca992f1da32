// Doppler files.
#include "cu/dop.h"

#include "series_keys.h"

namespace norva {
namespace {

// Byte of the first amplitude in an element.
std::size_t amp_offset(const _dopheader& hd) {
    return hd.version == 2 ? 24 : 8;
}

std::int64_t element_size(const _dopheader& hd) {
    return (std::int64_t{hd.namp} + 3) / 4 * 8 + static_cast<std::int64_t>(amp_offset(hd));
}

struct dop_type {
    using file = _dopfile;
    using head = _dopheader;
    static constexpr int code = FILETYPE_DOP;
    static constexpr int headsize = DOP_HEADSIZE;
    static constexpr bool stored_time = true;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .text = &head::text, .size = 104, .keyword = "text"},
        {.offset = 104, .whole = &head::version},
        {.offset = 108, .whole = &head::namp, .keyword = "namp"},
        {.offset = 112, .real = &head::t0, .keyword = "t0"},
        {.offset = 120, .real = &head::tbias, .keyword = "tbias"},
        {.offset = 128, .real = &head::prf, .keyword = "prf"},
        {.offset = 136, .real = &head::xlam, .keyword = "xlam"},
        {.offset = 144, .real = &head::scale, .keyword = "scale"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1 && hd.version != 2) return ZUV_BAD_VERSION;
        return hd.namp >= 1 && element_size(hd) == p.kw.elementsize ? ZUV_OK : ZUV_BAD_TYPE;
    }
    static void convert(const file& p, std::span<std::byte> element) {
        const std::size_t amps = amp_offset(p.hd);
        mcvt_f8(&element[0], amps / 8);
        mcvt_i2(&element[amps], static_cast<std::size_t>(p.hd.namp));
    }
    static int items(const file& p) { return p.hd.namp; }
    static constexpr zuvservice service = dop_service;
    static constexpr zuvkwservice keywords = dop_keyword_service;
    static inline int status = ZUV_OK;
};

} // namespace

int getdoperror() {
    return dop_type::status;
}

dopfile_ptr opendop(const std::string& name, const char* mode, int namp) {
    _dopheader head;
    head.namp = namp;
    return series_open<dop_type>(name, mode, namp < 1 ? 0 : element_size(head), head);
}

int getdop(_dopfile* p, double& tme, std::span<std::int16_t> amps) {
    double a = 0.0, e = 0.0;
    return getdopae(p, tme, a, e, amps);
}

int getdopae(_dopfile* p, double& tme, double& a, double& e, std::span<std::int16_t> amps) {
    if (int status = series_read<dop_type>(p); status != ZUV_OK) return status;
    const std::span<const std::byte> element = p->elembuf.span();
    const bool extra = p->hd.version == 2;
    tme = get_at<double>(element, 0);
    a = extra ? get_at<double>(element, 8) : 0.0;
    e = extra ? get_at<double>(element, 16) : 0.0;
    const std::size_t n = std::min(amps.size(), static_cast<std::size_t>(p->hd.namp));
    for (std::size_t j = 0; j < n; j++) amps[j] = get_at<std::int16_t>(element, amp_offset(p->hd) + 2 * j);
    std::ranges::fill(amps.subspan(n), std::int16_t{0});
    return ZUV_OK;
}

int putdop(_dopfile* p, double tme, std::span<const std::int16_t> amps) {
    return putdopae(p, tme, 0.0, 0.0, amps);
}

int putdopae(_dopfile* p, double tme, double a, double e, std::span<const std::int16_t> amps) {
    const std::span<std::byte> element = series_blank<dop_type>(p);
    if (element.empty()) return dop_type::status;
    if (std::ssize(amps) != p->hd.namp) return series_status<dop_type>(ZUV_BAD_ARGUMENT);
    put_at(element, 0, tme);
    if (p->hd.version == 2) {
        put_at(element, 8, a);
        put_at(element, 16, e);
    }
    std::memcpy(&element[amp_offset(p->hd)], amps.data(), amps.size_bytes());
    return series_status<dop_type>(zuvfilewriteblock(p, element, 1));
}

int getdoptme(_zuvfile* file, std::int64_t element, double& tme) {
    return series_time<dop_type>(file, element, tme);
}

int getdopkeys(_dopfile* p, double& t0, double& tbias, double& prf, double& xlam) {
    return series_getkeys<dop_type>(p, t0, tbias, prf, xlam);
}

int putdopkeys(_dopfile* p, double t0, double tbias, double prf, double xlam) {
    return series_putkeys<dop_type>(p, t0, tbias, prf, xlam);
}

int getdophead(_dopfile* p, _dopheader& head) {
    return series_gethead<dop_type>(p, head);
}

int putdophead(_dopfile* p, const _dopheader& head) {
    return series_puthead<dop_type>(p, head);
}

int dop_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<dop_type>(file, opcode, arg);
}

int dop_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    return series_keyword_service<dop_type>(file, opcode, name, arg);
}

} // namespace norva
