#pragma once
// Does with a series file whatever the program could do with it: for files of which nothing is known. Used by
// the fuzz target and by the tests that damage files.

#include "cu/dop.h"
#include "cu/espl.h"
#include "cu/geniq.h"
#include "cu/genrea.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/track.h"
#include "cu/vec.h"
#include "walk_container.h"

#include <cmath>
#include <stdexcept>
#include <string>

namespace norva {

inline void evaluate_around(_espl* e) {
    const double span = e->t1 - e->t0;
    for (double at : {-0.5, 0.0, 0.001, 0.3, 0.2, 0.999, 1.0, 2.0, 0.5})
        for (int der : {0, 1, e->ncoe - 1, e->ncoe}) espl(e, e->t0 + at * span, der);
    for (double t : {std::nan(""), -HUGE_VAL, HUGE_VAL, 1e-300, -1e300}) espl(e, t, 0);
}

// What the file's own routines and the evaluated spline make of it. A spline read into memory keeps what is
// promised of one.
inline void walk_spline(const std::string& name) {
    for (const char* mode : {"Old", "Update"}) {
        splfile_ptr p = openspl(name, mode, 1);
        if (!p) continue;
        walk_keywords(p.get());
        std::string type, xunits, yunits;
        int ider = 0, ncont = 0, flg2 = 0;
        double tme = 0.0;
        getsplkeys(p.get(), type, xunits, yunits, ider);
        u_timemove(p.get(), -1e29);
        for (int i = 0; i < 20 && getspl(p.get(), tme, ncont, flg2, {}) == ZUV_OK; i++) {
        }
        u_timemove(p.get(), u_lasttime(p.get()));
        espl_ptr e = espl_init_with_file(p.get(), ESPL_FILE);
        if (e) evaluate_around(e.get());
        putsplkeys(p.get(), "type", "x", "y", 1);
        u_elemmove(p.get(), u_nelem(p.get()));
        if (p->hd.ncoe < 100)
            putspl(p.get(), 5.0, 1, 2, std::vector<double>(static_cast<std::size_t>(p->hd.ncoe), 1.0));
        if (e) espl_rehash(e.get());
        if (e) evaluate_around(e.get());
        u_close(std::move(p));
    }
    espl_ptr e = espl_read(name);
    if (!e) return;
    if (e->nbrks < 2 || e->ncoe < 1 || !(e->t0 <= e->t1)) throw std::logic_error("no spline");
    evaluate_around(e.get());
    espl_ptr integral = espl_integrate(e.get(), 1.0), slope = espl_diff(e.get());
    if (integral) evaluate_around(integral.get());
    if (slope) evaluate_around(slope.get());
    if (e->nbrks < 50 && e->ncoe < 20) {
        if (espl_ptr sum = espl_add(e.get(), e.get())) evaluate_around(sum.get());
        espl_plttimes(e.get(), 3);
    }
}

// Keywords, times and raw elements of a file of any type, through the common calls.
inline void walk_elements(zuvfile_ptr file) {
    if (!file) return;
    walk_keywords(file.get());
    std::vector<std::byte> head(static_cast<std::size_t>(u_headsize(file.get())));
    u_gethead(file.get(), head);
    for (double t : {u_firsttime(file.get()), u_lasttime(file.get()), std::nan(""), 1e300, -1e300})
        u_timemove(file.get(), t);
    u_elemmove(file.get(), 0);
    std::vector<std::byte> element(static_cast<std::size_t>(std::min(u_elemsize(file.get()), 1 << 16)));
    for (int i = 0; i < 20 && u_getelem(file.get(), element) == ZUV_OK; i++) {
    }
    u_elemmove(file.get(), 0);
    u_getnelem(file.get(), element, 3);
    u_puthead(file.get(), head);
    u_close(std::move(file));
}

// Peaks are read and written with all slots in use and with some. What is written last is read back.
inline void walk_peaks(const std::string& name, const char* mode) {
    pksfile_ptr p = openpks(name, mode, 1);
    if (!p) return;
    double tme = 0.0;
    std::vector<float> pos(7), amp(50);
    std::vector<char> flags(9);
    for (int i = 0; i < 20 && getpks(p.get(), tme, pos, amp, flags) == ZUV_OK; i++) {
    }
    for (int n : {0, 1, p->hd.npks}) {
        if (n > 4096) continue;
        if (setpksnitems(p.get(), n) != ZUV_OK) throw std::logic_error("peaks in use");
        const std::vector<float> values(static_cast<std::size_t>(n), 2.5F);
        u_elemmove(p.get(), u_nelem(p.get()));
        if (putpks(p.get(), 1e9, values, values, std::vector<char>(values.size(), 1)) != ZUV_OK) continue;
        u_elemmove(p.get(), u_nelem(p.get()) - 1);
        if (getpks(p.get(), tme, pos, amp, flags) != ZUV_OK || (n > 0 && pos[0] != 2.5F))
            throw std::logic_error("peaks written");
    }
    walk_elements(std::move(p));
}

// Rows of an image or vector file; what is written last is read back.
template <class Ptr, class Get, class Put, class V>
void walk_rows(Ptr p, Get get, Put put, int n, std::vector<V> some) {
    double tme = 0.0;
    while (get(p.get(), tme, some) == ZUV_OK && u_nextelem(p.get()) < 20) {
    }
    u_kwput_d(p.get(), "prf", 7.0);
    u_kwput_i(p.get(), "T0", -3);
    u_elemmove(p.get(), u_nelem(p.get()));
    if (n <= 4096 && put(p.get(), std::vector<V>(static_cast<std::size_t>(n), V{1.5})) == ZUV_OK) {
        u_elemmove(p.get(), u_nelem(p.get()) - 1);
        if (get(p.get(), tme, some) != ZUV_OK || some[0] != V{1.5}) throw std::logic_error("row written");
    }
    walk_elements(std::move(p));
}

// Files of all types but splines: as themselves, as complex rows, as a track.
inline void walk_series(const std::string& name) {
    for (const char* mode : {"Old", "Update"}) {
        walk_elements(openiq(name, mode));
        walk_elements(openrea(name, mode));
        if (dopfile_ptr dop = opendop(name, mode, 0)) {
            double tme = 0.0;
            std::vector<std::int16_t> amps(50);
            while (getdop(dop.get(), tme, amps) == ZUV_OK && u_nextelem(dop.get()) < 20) {
            }
            walk_elements(std::move(dop));
        }
        walk_peaks(name, mode);
        if (imgfile_ptr img = openimg(name, mode, 1)) {
            const int n = img->hd.nsamp <= 2048 ? 2 * img->hd.nsamp : 4097;
            walk_rows(std::move(img), getimg, putimg, n, std::vector<float>(50));
        }
        if (vecfile_ptr vec = openvec(name, mode, 1)) {
            const int n = vec->hd.nvec;
            walk_rows(std::move(vec), getvec, putvec, n, std::vector<double>(50));
        }
    }
    walk_elements(opengeniq(name));
    walk_elements(opengenrea(name));
    if (rea_track_ptr track = rea_setup(name)) {
        rea_rd_and_avg(track.get(), 0.0, 12.0, 3);
        rea_rehash(track.get());
    }
}

} // namespace norva
