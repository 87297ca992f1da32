// Peak files.
#include "cu/pks.h"

#include "series_keys.h"

namespace norva {
namespace {

constexpr std::size_t pair_offset = 8; // of the positions and amplitudes in an element

std::size_t flag_offset(const _pksheader& hd) {
    return pair_offset + 8 * static_cast<std::size_t>(hd.npks);
}

std::int64_t element_size(std::int64_t npks) {
    return (npks + (npks + 7) / 8 + 1) * 8;
}

struct pks_type {
    using file = _pksfile;
    using head = _pksheader;
    static constexpr int code = FILETYPE_PKS;
    static constexpr int headsize = PKS_HEADSIZE;
    static constexpr bool stored_time = true;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .text = &head::text, .size = 104, .keyword = "text"},
        {.offset = 104, .whole = &head::version},
        {.offset = 108, .whole = &head::npks, .keyword = "npks"},
        {.offset = 112, .whole = &head::type, .keyword = "type"},
        {.offset = 116, .whole = &head::nfft, .keyword = "nfft"},
        {.offset = 120, .whole = &head::wdw, .keyword = "wdw"},
        {.offset = 124, .whole = &head::lag, .keyword = "lag"},
        {.offset = 128, .whole = &head::weight, .keyword = "weight"},
        {.offset = 132, .whole = &head::spare},
        {.offset = 136, .real = &head::t0, .keyword = "t0"},
        {.offset = 144, .real = &head::prf, .keyword = "prf"},
        {.offset = 152, .real = &head::tbias, .keyword = "tbias"},
        {.offset = 160, .real = &head::xlam, .keyword = "xlam"},
        {.offset = 168, .real = &head::hz1, .keyword = "hz1"},
        {.offset = 176, .real = &head::hz2, .keyword = "hz2"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        return hd.npks >= 1 && element_size(hd.npks) == p.kw.elementsize ? ZUV_OK : ZUV_BAD_TYPE;
    }
    static void convert(const file& p, std::span<std::byte> element) {
        mcvt_f8(&element[0]);
        mcvt_f4(&element[pair_offset], 2 * static_cast<std::size_t>(p.hd.npks));
    }
    static int items(const file& p) { return p.curnpks; }
    static constexpr zuvservice service = pks_service;
    static constexpr zuvkwservice keywords = pks_keyword_service;
    static inline int status = ZUV_OK;
};

} // namespace

int getpkserror() {
    return pks_type::status;
}

pksfile_ptr openpks(const std::string& name, const char* mode, int npks) {
    _pksheader head;
    head.npks = npks;
    pksfile_ptr p = series_open<pks_type>(name, mode, npks < 1 ? 0 : element_size(npks), head);
    if (p) p->curnpks = p->hd.npks;
    return p;
}

int setpksnitems(_pksfile* p, int n) {
    if (!p) return series_status<pks_type>(ZUV_NULL_FILE);
    if (n < 0 || n > p->hd.npks) return series_status<pks_type>(ZUV_BAD_ARGUMENT);
    p->curnpks = n;
    return series_status<pks_type>(ZUV_OK);
}

int getpks(_pksfile* p, double& tme, std::span<float> poss, std::span<float> amps, std::span<char> flgs) {
    if (int status = series_read<pks_type>(p); status != ZUV_OK) return status;
    const std::span<const std::byte> element = p->elembuf.span();
    const auto n = static_cast<std::size_t>(p->curnpks);
    tme = get_at<double>(element, 0);
    auto fill = [&](auto out, std::size_t first, std::size_t step) {
        using value = typename decltype(out)::value_type;
        for (std::size_t j = 0; j < out.size(); j++)
            out[j] = j < n ? get_at<value>(element, first + step * j) : value{0};
    };
    fill(poss, pair_offset, 8);
    fill(amps, pair_offset + 4, 8);
    fill(flgs, flag_offset(p->hd), 1);
    return ZUV_OK;
}

int putpks(_pksfile* p, double tme, std::span<const float> poss, std::span<const float> amps,
           std::span<const char> flgs) {
    const std::span<std::byte> element = series_blank<pks_type>(p);
    if (element.empty()) return pks_type::status;
    const auto n = static_cast<std::size_t>(p->curnpks);
    if (poss.size() != n || amps.size() != n || flgs.size() != n)
        return series_status<pks_type>(ZUV_BAD_ARGUMENT);
    put_at(element, 0, tme);
    for (std::size_t j = 0; j < n; j++) {
        put_at(element, pair_offset + 8 * j, poss[j]);
        put_at(element, pair_offset + 8 * j + 4, amps[j]);
        put_at(element, flag_offset(p->hd) + j, flgs[j]);
    }
    return series_status<pks_type>(zuvfilewriteblock(p, element, 1));
}

int getpkstme(_zuvfile* file, std::int64_t element, double& tme) {
    return series_time<pks_type>(file, element, tme);
}

int getpkskeys(_pksfile* p, double& t0, double& tbias, double& prf, double& xlam) {
    return series_getkeys<pks_type>(p, t0, tbias, prf, xlam);
}

int putpkskeys(_pksfile* p, double t0, double tbias, double prf, double xlam) {
    return series_putkeys<pks_type>(p, t0, tbias, prf, xlam);
}

int getpkshead(_pksfile* p, _pksheader& head) {
    return series_gethead<pks_type>(p, head);
}

int putpkshead(_pksfile* p, const _pksheader& head) {
    return series_puthead<pks_type>(p, head);
}

int pks_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<pks_type>(file, opcode, arg);
}

int pks_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    return series_keyword_service<pks_type>(file, opcode, name, arg);
}

} // namespace norva
