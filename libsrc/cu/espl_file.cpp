// The evaluated spline on file: reading it whole or piece by piece, and writing it.
#include "cu/espl.h"

#include "espl_int.h"
#include "zuvsys/safefile.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <new>
#include <span>
#include <unistd.h>
#include <utility>
#include <vector>

namespace norva {
namespace {

// The two breakpoints in hand, as one of them is read.
int read_piece(_espl& e, double& time, std::vector<double>& coe) {
    int ncont = 0, flg2 = 0;
    coe.resize(static_cast<std::size_t>(e.ncoe));
    return getspl(e.fp, time, ncont, flg2, coe);
}

void upper_to_lower(_espl& e) {
    e.tbrk0 = e.tbrk1;
    e.coe0 = e.coe1;
    e.ibrk++;
}

// The last breakpoint in both places.
int load_last(_espl& e) {
    int status = u_elemmove(e.fp, e.nbrks - 1);
    if (status == ZUV_OK) status = read_piece(e, e.tbrk0, e.coe0);
    if (status != ZUV_OK) return status;
    e.tbrk1 = e.tbrk0;
    e.coe1 = e.coe0;
    e.ibrk = e.nbrks - 1;
    return ZUV_OK;
}

// The piece around t0 <= t < t1, found by the time index of the file layer.
int load_inside(_espl& e, double t) {
    int status = u_timemove(e.fp, t);
    std::int64_t i = 0;
    if (status == ZUV_OK) status = zuvfilenextelement(e.fp, i);
    if (status == ZUV_OK) status = load_from_file(e, std::clamp<std::int64_t>(i - 1, 0, e.nbrks - 2));
    // The time found is the first at or past t, which begins the wanted piece when it is t itself.
    while (status == ZUV_OK && t >= e.tbrk1 && e.ibrk < e.nbrks - 1) {
        upper_to_lower(e);
        if (e.ibrk < e.nbrks - 1) status = read_piece(e, e.tbrk1, e.coe1);
    }
    return status;
}

int read_all(_espl& e) {
    int status = u_elemmove(e.fp, 0);
    for (int i = 0; i < e.nbrks && status == ZUV_OK; i++) {
        _brkpoint& brk = e.brks.emplace_back();
        brk.coe.resize(static_cast<std::size_t>(e.ncoe));
        status = getspl(e.fp, brk.time, brk.ncont, brk.flg2, brk.coe);
    }
    return status;
}

bool times_rise(const std::vector<_brkpoint>& brks) {
    return std::ranges::all_of(brks, [](const _brkpoint& b) { return std::isfinite(b.time); }) &&
           std::ranges::is_sorted(brks, {}, &_brkpoint::time);
}

// Count, sizes and bounds as the file has them now.
int read_bounds(_espl& e) {
    e.ncoe = u_nitems(e.fp);
    if (u_error() != ZUV_OK) return u_error();
    const std::int64_t n = u_nelem(e.fp);
    if (u_error() != ZUV_OK) return u_error();
    if (n < 2 || e.ncoe < 1 || e.ncoe > ESPL_MAX_NCOE) return ESPL_NO_SPLINE;
    e.nbrks = static_cast<int>(n);
    e.t0 = u_firsttime(e.fp);
    if (u_error() != ZUV_OK) return u_error();
    e.t1 = u_lasttime(e.fp);
    if (u_error() != ZUV_OK) return u_error();
    return std::isfinite(e.t0) && std::isfinite(e.t1) && e.t0 <= e.t1 ? ZUV_OK : ESPL_NO_SPLINE;
}

int write_spline(const _espl& e, const std::string& name, const std::string& text, const std::string& type,
                 const std::string& xunits, const std::string& yunits, int ider) {
    splfile_ptr file = openspl(name, "New", e.ncoe);
    if (!file) return getsplerror();
    int status = putsplkeys(file.get(), type, xunits, yunits, ider);
    if (status == ZUV_OK) status = u_kwput_s(file.get(), "text", text);
    for (const _brkpoint& brk : e.brks)
        if (status == ZUV_OK) status = putspl(file.get(), brk.time, brk.ncont, brk.flg2, brk.coe);
    const int closed = u_close(std::move(file));
    return status == ZUV_OK ? closed : status;
}

std::vector<std::byte> bytes_of(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    const std::string chars{std::istreambuf_iterator<char>(file), {}};
    const std::span<const std::byte> bytes = std::as_bytes(std::span(chars));
    return {bytes.begin(), bytes.end()};
}

// The breakpoints in hand are read anew at the next evaluation, unless this one succeeds.
void forget(_espl& e) {
    e.tbrk0 = e.tbrk1 = 0.0;
    e.ibrk = -1;
}

} // namespace

int load_from_file(_espl& e, std::int64_t i) {
    int status = u_elemmove(e.fp, i);
    if (status == ZUV_OK) status = read_piece(e, e.tbrk0, e.coe0);
    if (status == ZUV_OK) status = read_piece(e, e.tbrk1, e.coe1);
    e.ibrk = static_cast<int>(i);
    return status;
}

int espl_load_file(_espl& e, double t) {
    int status = ZUV_OK;
    if (t >= e.t1) {
        if (e.ibrk != e.nbrks - 1) status = load_last(e);
    } else if (t >= e.t0) {
        status = load_inside(e, t);
    } else if (e.ibrk != 0) {
        status = load_from_file(e, 0);
    }
    if (status != ZUV_OK) forget(e);
    return status;
}

int espl_rehash_file(_espl& e) {
    const int ncoe = e.ncoe;
    forget(e);
    int status = read_bounds(e);
    if (status == ZUV_OK && e.ncoe != ncoe) status = ESPL_NO_SPLINE;
    e.ncoe = ncoe;
    return status == ZUV_OK ? load_from_file(e, 0) : status;
}

espl_ptr espl_init_with_file(_splfile* fp, int mode) {
    auto e = std::make_unique<_espl>();
    e->fp = fp;
    int status = mode == ESPL_MEMORY || mode == ESPL_FILE ? read_bounds(*e) : ZUV_BAD_ARGUMENT;
    if (status == ZUV_OK && mode == ESPL_FILE) {
        e->mode = ESPL_FILE;
        status = espl_rehash_file(*e);
    } else if (status == ZUV_OK) {
        try {
            status = read_all(*e);
        } catch (const std::bad_alloc&) {
            status = ZUV_NO_MEMORY;
        }
        e->fp = nullptr;
        if (status == ZUV_OK) status = times_rise(e->brks) ? espl_rehash(e.get()) : ESPL_NO_SPLINE;
    }
    espl_status(status);
    return status == ZUV_OK ? std::move(e) : nullptr;
}

espl_ptr espl_read(const std::string& name) {
    splfile_ptr file = openspl(name, "Old", 0);
    if (!file) {
        espl_status(getsplerror());
        return {};
    }
    return espl_init_with_file(file.get(), ESPL_MEMORY);
}

int espl_write(const _espl* e, const std::string& name, const std::string& text, const std::string& type,
               const std::string& xunits, const std::string& yunits, int ider) {
    if (!e || e->mode != ESPL_MEMORY) return espl_status(ZUV_BAD_ARGUMENT);
    std::string temporary = name.substr(0, name.rfind('/') + 1) + ".norva-XXXXXX"; // in the same folder
    const int handle = mkstemp(temporary.data());
    if (handle < 0) return espl_status(ZUV_NO_OPEN);
    close(handle);
    int status = write_spline(*e, temporary, text, type, xunits, yunits, ider);
    if (status == ZUV_OK) {
        const std::vector<std::byte> bytes = bytes_of(temporary);
        if (bytes.empty() || !write_file_safely(name, bytes)) status = ZUV_WRITE_FAILED;
    }
    unlink(temporary.c_str());
    return espl_status(status);
}

} // namespace norva
