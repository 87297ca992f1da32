// Spline files on the container: opening, header, one element at a time, services.
#include "cu/spl.h"

#include "fileio/filefind.h"
#include "fileio/mcvt.h"
#include "series_head.h"
#include "zuvsys/basicstr.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace norva {
namespace {

int last_status = ZUV_OK;

int spl_status(int status) {
    return last_status = status;
}

constexpr std::size_t coe_offset = 16; // of the coefficients in an element

constexpr header_field<_splheader> field_table[] = {
    {.offset = 0, .text = &_splheader::text, .size = SPL_TEXT_LEN + 1, .keyword = "text"},
    {.offset = 104, .whole = &_splheader::version},
    {.offset = 108, .whole = &_splheader::ncoe, .keyword = "ncoe"},
    {.offset = 112, .text = &_splheader::type, .size = SPL_UNITS_LEN + 1, .keyword = "type"},
    {.offset = 136, .text = &_splheader::xunits, .size = SPL_UNITS_LEN + 1, .keyword = "xunits"},
    {.offset = 160, .text = &_splheader::yunits, .size = SPL_UNITS_LEN + 1, .keyword = "yunits"},
    {.offset = 184, .whole = &_splheader::ider, .keyword = "ider"},
    {.offset = 188, .whole = &_splheader::space},
};
constexpr std::span<const header_field<_splheader>> fields = field_table;

using head_bytes = std::array<std::byte, SPL_HEADSIZE>;

void hdconvert(_zuvfile*, std::span<std::byte> head, int) {
    convert_header(fields, head);
}

void elemconvert(_zuvfile* file, std::span<std::byte> element, int) {
    mcvt_f8(&element[0]);
    mcvt_i4(&element[8], 2);
    mcvt_f8(&element[coe_offset], static_cast<std::size_t>(static_cast<_splfile*>(file)->hd.ncoe));
}

// Whether a header can be that of this file. 1 or a status.
int check(const _splfile& p, const _splheader& head) {
    if (head.version != 1) return ZUV_BAD_VERSION;
    if (head.ncoe < 1 || std::int64_t{head.ncoe} * SPL_ELEMSIZE != p.kw.elementsize) return ZUV_BAD_TYPE;
    return ZUV_OK;
}

int install(_splfile& p) {
    p.ucall = spl_service;
    p.ukwcall = spl_keyword_service;
    return zuvfileconvert(&p, hdconvert, elemconvert, p.kw.headsize, p.kw.elementsize);
}

int open_existing(_splfile& p, const std::string& name, bool update) {
    if (int status = zuvfileopen_record(p, name, update); status != ZUV_OK) return status;
    if (p.kw.filetype != FILETYPE_SPL) return ZUV_BAD_TYPE;
    if (p.kw.headsize != SPL_HEADSIZE) return ZUV_BAD_HEADSIZE;
    if (int status = install(p); status != ZUV_OK) return status;
    return getsplhead(&p, p.hd);
}

int create(_splfile& p, const std::string& name, int ncoe) {
    if (ncoe < 1 || ncoe > std::numeric_limits<std::int32_t>::max() / SPL_ELEMSIZE) return ZUV_BAD_ARGUMENT;
    int status = zuvfilecreate_record(p, name, FILETYPE_SPL, SPL_HEADSIZE, ncoe * SPL_ELEMSIZE);
    if (status == ZUV_OK) status = install(p);
    if (status == ZUV_OK) {
        _splheader head;
        head.ncoe = ncoe;
        status = putsplhead(&p, head);
    }
    return status;
}

// The scratch element, taken at first use.
std::span<std::byte> scratch(_splfile& p) {
    if (!p.elembuf) p.elembuf.reset(static_cast<std::size_t>(p.elemsize));
    return p.elembuf.span();
}

int time_answer(_splfile& p, std::int64_t element, double& t) {
    return getspltme(&p, element, t);
}

int move_to_time(_splfile& p, double t) {
    std::int64_t element = 0;
    if (p.nelements > 0) {
        const int status = filefind(&p, t, element, 0, p.nelements - 1, getspltme);
        if (status != ZUV_OK) return status;
    }
    return zuvfileseek(&p, element);
}

int get_header(const _splfile& p, std::span<std::byte> data) {
    if (data.size() < SPL_HEADSIZE) return ZUV_BAD_ARGUMENT;
    pack_header(fields, p.hd, data.first(SPL_HEADSIZE));
    return ZUV_OK;
}

int put_header(_splfile& p, std::span<const std::byte> data) {
    if (data.size() < SPL_HEADSIZE) return ZUV_BAD_ARGUMENT;
    return putsplhead(&p, unpack_header(fields, data.first(SPL_HEADSIZE)));
}

int answer(std::int64_t& to, std::int64_t value) {
    to = value;
    return ZUV_OK;
}

} // namespace

int getsplerror() {
    return last_status;
}

splfile_ptr openspl(const std::string& name, const char* mode, int ncoe) {
    splfile_ptr p(new _splfile);
    int status = ZUV_BAD_ARGUMENT;
    switch (mode ? toupperx(static_cast<unsigned char>(*mode)) : 0) {
    case 'O':
    case 'R': status = open_existing(*p, name, false); break;
    case 'U': status = open_existing(*p, name, true); break;
    case 'N':
    case 'C': status = create(*p, name, ncoe); break;
    default: break;
    }
    return spl_status(status) == ZUV_OK ? std::move(p) : nullptr;
}

int getspl(_splfile* p, double& tme, int& ncont, int& flg2, std::span<double> coe) {
    if (!p) return spl_status(ZUV_NULL_FILE);
    if (p->nextelem >= p->nelements) return spl_status(ZUV_EOF);
    std::span<std::byte> element = scratch(*p);
    if (int status = zuvfilereadblock(p, element, 1); status != ZUV_OK) return spl_status(status);
    std::int32_t flags[2];
    std::memcpy(&tme, &element[0], sizeof tme);
    std::memcpy(flags, &element[8], sizeof flags);
    ncont = flags[0];
    flg2 = flags[1];
    const std::size_t n = std::min(coe.size(), static_cast<std::size_t>(p->hd.ncoe));
    if (n > 0) std::memcpy(coe.data(), &element[coe_offset], n * sizeof(double));
    std::ranges::fill(coe.subspan(n), 0.0);
    return spl_status(ZUV_OK);
}

int putspl(_splfile* p, double tme, int ncont, int flg2, std::span<const double> coe) {
    if (!p) return spl_status(ZUV_NULL_FILE);
    if (p->rdonly) return spl_status(ZUV_READ_ONLY);
    if (std::ssize(coe) != p->hd.ncoe) return spl_status(ZUV_BAD_ARGUMENT);
    std::span<std::byte> element = scratch(*p);
    std::ranges::fill(element, std::byte{0});
    const std::int32_t flags[2] = {ncont, flg2};
    std::memcpy(&element[0], &tme, sizeof tme);
    std::memcpy(&element[8], flags, sizeof flags);
    std::memcpy(&element[coe_offset], coe.data(), coe.size_bytes());
    return spl_status(zuvfilewriteblock(p, element, 1));
}

int getspltme(_zuvfile* file, std::int64_t element, double& tme) {
    if (!file) return ZUV_NULL_FILE;
    if (element < 0 || element >= file->nelements) return ZUV_EOF;
    std::array<std::byte, sizeof(double)> bytes;
    if (int status = zuvfilereadraw(file, element, 0, bytes); status != ZUV_OK) return status;
    if (setmcvt(file->machine, MACHINE_THIS) != 1) return ZUV_NO_CONVERSION;
    mcvt_f8(bytes.data());
    std::memcpy(&tme, bytes.data(), sizeof tme);
    return ZUV_OK;
}

int getsplkeys(_splfile* p, std::string& type, std::string& xunits, std::string& yunits, int& ider) {
    if (!p) return spl_status(ZUV_NULL_FILE);
    type = p->hd.type;
    xunits = p->hd.xunits;
    yunits = p->hd.yunits;
    ider = p->hd.ider;
    return spl_status(ZUV_OK);
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
    if (!p) return spl_status(ZUV_NULL_FILE);
    head_bytes bytes{};
    if (int status = zuvfilegethead(p, bytes); status != ZUV_OK) return spl_status(status);
    const _splheader read = unpack_header(fields, bytes);
    if (int status = check(*p, read); status != ZUV_OK) return spl_status(status);
    head = p->hd = read;
    return spl_status(ZUV_OK);
}

int putsplhead(_splfile* p, const _splheader& head) {
    if (!p) return spl_status(ZUV_NULL_FILE);
    if (p->rdonly) return spl_status(ZUV_READ_ONLY);
    if (check(*p, head) != ZUV_OK) return spl_status(ZUV_BAD_ARGUMENT);
    head_bytes bytes{};
    pack_header(fields, head, bytes);
    const int status = zuvfileputhead(p, bytes);
    if (status == ZUV_OK) p->hd = unpack_header(fields, bytes); // as it reads back: texts cut
    return spl_status(status);
}

int spl_service(_zuvfile* file, int opcode, uarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<_splfile&>(*file);
    switch (opcode) {
    case UOP_FIRSTTIME: return time_answer(p, 0, arg.t);
    case UOP_LASTTIME: return time_answer(p, p.nelements - 1, arg.t);
    case UOP_NELEM: return answer(arg.n, p.nelements);
    case UOP_CANWRITE: return answer(arg.n, !p.rdonly);
    case UOP_NEXTTIME: return time_answer(p, p.nextelem, arg.t);
    case UOP_NEXTELEM: return answer(arg.n, p.nextelem);
    case UOP_TIMEMOVE: return move_to_time(p, arg.t);
    case UOP_ELEMMOVE: return zuvfileseek(&p, arg.n);
    case UOP_GETELEM: return zuvfilereadblock(&p, arg.data, 1);
    case UOP_GETNELEM: return zuvfilereadblock(&p, arg.data, arg.n);
    case UOP_PUTELEM: return zuvfilewriteblock(&p, arg.data, 1);
    case UOP_GETHEAD: return get_header(p, arg.data);
    case UOP_PUTHEAD: return put_header(p, arg.data);
    case UOP_ELEMSIZE: return answer(arg.n, p.elemsize);
    case UOP_HEADSIZE: return answer(arg.n, p.hdsize);
    case UOP_NITEMS: return answer(arg.n, p.hd.ncoe);
    case UOP_TYPE: arg.s = p.fname; return answer(arg.n, FILETYPE_SPL);
    case UOP_CLOSE: return ZUV_OK; // nothing of its own
    default: return -1;
    }
}

int spl_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<_splfile&>(*file);
    auto put = [&](const _splheader& head) { return putsplhead(&p, head); };
    return header_keywords(file, fields, p.hd, put, opcode, name, arg);
}

} // namespace norva
