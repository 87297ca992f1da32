// The gate type on the container: opening, header, one row at a time. The fast reading of a window is in
// gatwindow.cpp, the services in gatservice.cpp.
#include "fileio/gat.h"

#include "fileio/mcvt.h"
#include "gat_int.h"
#include "zuvsys/basicstr.h"

#include <array>
#include <cstring>
#include <limits>

namespace norva {

namespace {

thread_local int last_status = ZUV_OK;

using head_bytes = std::array<std::byte, GAT_HEADSIZE>;

void hdconvert(_zuvfile*, std::span<std::byte> head, int) {
    mcvt_i4(&head[0], 4);
    mcvt_f8(&head[16], 2);
}

void elemconvert(_zuvfile* file, std::span<std::byte> element, int) {
    const _gatheader& hd = static_cast<_gatfile*>(file)->hd;
    auto range = static_cast<std::size_t>(gat_rangesize(hd));
    std::size_t values = 2 * static_cast<std::size_t>(hd.ngat);
    if (range) mcvt_f8(&element[0]);
    if (hd.dattype == GAT_SHORT) mcvt_i2(&element[range], values);
    if (hd.dattype != GAT_SHORT && hd.dattype != GAT_BYTE) mcvt_f4(&element[range], values);
}

head_bytes pack(const _gatheader& hd) {
    head_bytes bytes;
    const std::int32_t ints[4] = {hd.version, hd.ngat, hd.dattype, hd.incrng};
    const double doubles[2] = {hd.t0, hd.prf};
    std::memcpy(&bytes[0], ints, sizeof ints);
    std::memcpy(&bytes[16], doubles, sizeof doubles);
    return bytes;
}

_gatheader unpack(const head_bytes& bytes) {
    std::int32_t ints[4];
    double doubles[2];
    std::memcpy(ints, &bytes[0], sizeof ints);
    std::memcpy(doubles, &bytes[16], sizeof doubles);
    return {ints[0], ints[1], ints[2], ints[3], doubles[0], doubles[1]};
}

int install(_gatfile& p) {
    p.ucall = gat_service;
    p.ukwcall = gat_keyword_service;
    return zuvfileconvert(&p, hdconvert, elemconvert, p.kw.headsize, p.kw.elementsize);
}

int open_existing(_gatfile& p, const std::string& name, bool update) {
    if (int status = zuvfileopen_record(p, name, update); status != ZUV_OK) return status;
    if (p.kw.filetype != FILETYPE_GAT) return ZUV_BAD_TYPE;
    if (p.kw.headsize != GAT_HEADSIZE) return ZUV_BAD_HEADSIZE;
    if (int status = install(p); status != ZUV_OK) return status;
    return getgathead(&p, p.hd);
}

int create(_gatfile& p, const std::string& name, int ngat, int dattype, int incrng) {
    if (dattype != GAT_BYTE && dattype != GAT_SHORT) dattype = GAT_FLOAT;
    std::int64_t size = gat_elementsize(ngat, dattype, incrng);
    if (ngat < 1 || size > std::numeric_limits<std::int32_t>::max()) return ZUV_BAD_ARGUMENT;
    int status = zuvfilecreate_record(p, name, FILETYPE_GAT, GAT_HEADSIZE, static_cast<int>(size));
    if (status == ZUV_OK) status = install(p);
    if (status == ZUV_OK) status = putgathead(&p, {1, ngat, dattype, incrng != 0, 0.0, 1.0});
    return status;
}

gatfile_ptr owned(gatfile_ptr p, int status) {
    gat_status(status);
    return status == ZUV_OK ? std::move(p) : gatfile_ptr();
}

// The scratch element. It is taken at first use: the size that a file declares is only trusted once a row is
// there.
std::span<std::byte> scratch(_gatfile& p) {
    if (!p.elembuf) p.elembuf.reset(static_cast<std::size_t>(p.elemsize));
    return p.elembuf.span();
}

// Time of an element that is read or written next.
double next_time(const _gatfile& p) {
    return static_cast<double>(p.nextelem) / p.hd.prf + p.hd.t0;
}

int put(_gatfile* p, double rng, int type, const void* values, std::size_t n) {
    if (!p) return gat_status(ZUV_NULL_FILE);
    if (p->rdonly) return gat_status(ZUV_READ_ONLY);
    if (n != 2 * static_cast<std::size_t>(p->hd.ngat)) return gat_status(ZUV_BAD_ARGUMENT);
    std::span<std::byte> element = scratch(*p);
    auto range = static_cast<std::size_t>(gat_rangesize(p->hd));
    std::memcpy(element.data(), &rng, range);
    gatconv(n, type, p->hd.dattype, values, &element[range]);
    return gat_status(zuvfilewriteblock(p, element, 1));
}

} // namespace

int gat_status(int status) {
    return last_status = status;
}

int getgaterror() {
    return last_status;
}

std::int64_t gat_samplesize(int dattype) {
    return dattype == GAT_BYTE ? 1 : dattype == GAT_SHORT ? 2 : 4;
}

std::int64_t gat_rangesize(const _gatheader& hd) {
    return hd.incrng ? 8 : 0;
}

std::int64_t gat_elementsize(std::int64_t ngat, int dattype, int incrng) {
    return 2 * ngat * gat_samplesize(dattype) + (incrng ? 8 : 0);
}

int gat_check(const _gatfile& p, const _gatheader& head) {
    if (head.version != 1) return ZUV_BAD_VERSION;
    if (head.ngat < 1 || gat_elementsize(head.ngat, head.dattype, head.incrng) != p.kw.elementsize)
        return ZUV_BAD_TYPE;
    return ZUV_OK;
}

gatfile_ptr opengat(const std::string& name, const char* mode, int ngat) {
    switch (mode ? toupperx(static_cast<unsigned char>(*mode)) : 0) {
    case 'O':
    case 'R':
    case 'U': {
        gatfile_ptr p(new _gatfile);
        int status = open_existing(*p, name, toupperx(static_cast<unsigned char>(*mode)) == 'U');
        return owned(std::move(p), status);
    }
    case 'N':
    case 'C': return opengat_opt(name, ngat, GAT_FLOAT, 1);
    default: gat_status(ZUV_BAD_ARGUMENT); return {};
    }
}

gatfile_ptr opengat_opt(const std::string& name, int ngat, int dattype, int incrng) {
    gatfile_ptr p(new _gatfile);
    int status = create(*p, name, ngat, dattype, incrng);
    return owned(std::move(p), status);
}

int getgat(_gatfile* p, double& tme, double& rng, std::span<float> gats) {
    if (!p) return gat_status(ZUV_NULL_FILE);
    if (p->nextelem >= p->nelements) return gat_status(ZUV_EOF);
    double time = next_time(*p);
    std::span<std::byte> element = scratch(*p);
    if (int status = zuvfilereadblock(p, element, 1); status != ZUV_OK) return gat_status(status);

    auto range = static_cast<std::size_t>(gat_rangesize(p->hd));
    std::size_t n = std::min(gats.size(), 2 * static_cast<std::size_t>(p->hd.ngat));
    tme = time;
    rng = 0.0;
    std::memcpy(&rng, element.data(), range);
    gatconv(n, p->hd.dattype, GAT_FLOAT, &element[range], gats.data());
    std::fill(gats.begin() + static_cast<std::ptrdiff_t>(n), gats.end(), 0.0F);
    return gat_status(ZUV_OK);
}

int putgat(_gatfile* p, double rng, std::span<const float> gats) {
    return put(p, rng, GAT_FLOAT, gats.data(), gats.size());
}

int putgat_b(_gatfile* p, double rng, std::span<const std::int8_t> gats) {
    return put(p, rng, GAT_BYTE, gats.data(), gats.size());
}

int putgat_bb(_gatfile* p, double rng, std::span<const std::int16_t> gats) {
    return put(p, rng, GAT_SHORT, gats.data(), gats.size());
}

int getgathead(_gatfile* p, _gatheader& head) {
    if (!p) return gat_status(ZUV_NULL_FILE);
    head_bytes bytes{};
    if (int status = zuvfilegethead(p, bytes); status != ZUV_OK) return gat_status(status);
    _gatheader read = unpack(bytes);
    if (int status = gat_check(*p, read); status != ZUV_OK) return gat_status(status);
    if (!(read.prf > 0.0)) read.prf = 1.0;
    head = p->hd = read;
    return gat_status(ZUV_OK);
}

int putgathead(_gatfile* p, const _gatheader& head) {
    if (!p) return gat_status(ZUV_NULL_FILE);
    if (p->rdonly) return gat_status(ZUV_READ_ONLY);
    if (gat_check(*p, head) != ZUV_OK || !(head.prf > 0.0)) return gat_status(ZUV_BAD_ARGUMENT);
    int status = zuvfileputhead(p, pack(head));
    if (status == ZUV_OK) p->hd = head;
    return gat_status(status);
}

} // namespace norva
