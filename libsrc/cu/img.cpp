// Image files.
#include "cu/img.h"

#include "list_clock.h"
#include "series.h"

namespace norva {
namespace {

struct img_type {
    using file = _imgfile;
    using head = _imgheader;
    static constexpr int code = FILETYPE_IMG;
    static constexpr int headsize = IMG_HEADSIZE;
    static constexpr bool stored_time = false;
    static constexpr header_field<head> fields[] = {
        {.offset = 0, .whole = &head::version},
        {.offset = 4, .whole = &head::nsamp, .keyword = "nsamp"},
    };
    static int check(const file& p, const head& hd) {
        if (hd.version != 1) return ZUV_BAD_VERSION;
        return hd.nsamp >= 1 && std::int64_t{hd.nsamp} * 8 == p.kw.elementsize ? ZUV_OK : ZUV_BAD_TYPE;
    }
    static void convert(const file& p, std::span<std::byte> element) {
        mcvt_f4(&element[0], 2 * static_cast<std::size_t>(p.hd.nsamp));
    }
    static int items(const file& p) { return p.hd.nsamp; }
    static constexpr zuvservice service = img_service;
    static constexpr zuvkwservice keywords = img_keyword_service;
    static inline int status = ZUV_OK;
};

void update_times(_imgfile& p) {
    const list_clock clock = read_list_clock(p);
    p.t0 = clock.t0;
    p.prf = clock.prf;
}

} // namespace

int getimgerror() {
    return img_type::status;
}

imgfile_ptr openimg(const std::string& name, const char* mode, int nsamp) {
    imgfile_ptr p = series_open<img_type>(name, mode, std::int64_t{nsamp} * 8, {.nsamp = nsamp});
    if (p) update_times(*p);
    return p;
}

int getimg(_imgfile* p, double& tme, std::span<float> row) {
    return series_getrow<img_type>(p, tme, row);
}

int putimg(_imgfile* p, std::span<const float> row) {
    return series_putrow<img_type>(p, row);
}

int getimghead(_imgfile* p, _imgheader& head) {
    return series_gethead<img_type>(p, head);
}

int putimghead(_imgfile* p, const _imgheader& head) {
    return series_puthead<img_type>(p, head);
}

int img_service(_zuvfile* file, int opcode, uarg& arg) {
    return series_service<img_type>(file, opcode, arg);
}

int img_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    const int status = series_keyword_service<img_type>(file, opcode, name, arg);
    if (file) update_times(static_cast<_imgfile&>(*file));
    return status;
}

} // namespace norva
