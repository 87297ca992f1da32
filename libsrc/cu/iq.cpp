// IQ files.
#include "cu/iq.h"

#include "series_keys.h"

namespace norva {
namespace {

struct iq_type {
    using file = _iqfile;
    using head = _iqheader;
    static constexpr int code = FILETYPE_IQ;
    static constexpr int headsize = IQ_HEADSIZE;
    static constexpr bool stored_time = false;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .whole = &head::version},
        {.offset = 4, .whole = &head::pad},
        {.offset = 8, .text = &head::text, .size = 104, .keyword = "text"},
        {.offset = 112, .real = &head::t0, .keyword = "t0"},
        {.offset = 120, .real = &head::prf, .keyword = "prf"},
        {.offset = 128, .real = &head::tbias, .keyword = "tbias"},
        {.offset = 136, .real = &head::xlam, .keyword = "xlam"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        if (p.kw.elementsize != IQ_ELEMSIZE) return ZUV_BAD_TYPE;
        return hd.prf > 0.0 && hd.xlam > 0.0 ? ZUV_OK : ZUV_BAD_HEADER;
    }
    static void convert(const file&, std::span<std::byte> element) { mcvt_f4(&element[0], 2); }
    static int items(const file&) { return 1; }
    static constexpr zuvservice service = iq_service;
    static constexpr zuvkwservice keywords = iq_keyword_service;
    static inline int status = ZUV_OK;
};

} // namespace

int getiqerror() {
    return iq_type::status;
}

iqfile_ptr openiq(const std::string& name, const char* mode) {
    return series_open<iq_type>(name, mode, IQ_ELEMSIZE, {});
}

int getiq(_iqfile* p, double& tme, float& i, float& q) {
    const std::int64_t n = p ? p->nextelem : 0;
    if (int status = series_read<iq_type>(p); status != ZUV_OK) return status;
    i = get_at<float>(p->elembuf.span(), 0);
    q = get_at<float>(p->elembuf.span(), 4);
    return series_status<iq_type>(series_time<iq_type>(p, n, tme));
}

int putiq(_iqfile* p, float i, float q) {
    const std::span<std::byte> element = series_blank<iq_type>(p);
    if (element.empty()) return iq_type::status;
    put_at(element, 0, i);
    put_at(element, 4, q);
    return series_status<iq_type>(zuvfilewriteblock(p, element, 1));
}

int getiqkeys(_iqfile* p, double& t0, double& tbias, double& prf, double& xlam) {
    return series_getkeys<iq_type>(p, t0, tbias, prf, xlam);
}

int putiqkeys(_iqfile* p, double t0, double tbias, double prf, double xlam) {
    return series_putkeys<iq_type>(p, t0, tbias, prf, xlam);
}

int getiqhead(_iqfile* p, _iqheader& head) {
    return series_gethead<iq_type>(p, head);
}

int putiqhead(_iqfile* p, const _iqheader& head) {
    return series_puthead<iq_type>(p, head);
}

int iq_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<iq_type>(file, opcode, arg);
}

int iq_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    return series_keyword_service<iq_type>(file, opcode, name, arg);
}

} // namespace norva
