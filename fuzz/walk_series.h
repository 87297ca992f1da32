#pragma once
// Does with a series file whatever the program could do with it: for files of which nothing is known. Used by
// the fuzz target and by the tests that damage files.

#include "cu/dop.h"
#include "cu/espl.h"
#include "cu/geniq.h"
#include "cu/genrea.h"
#include "cu/iq.h"
#include "cu/rea.h"
#include "cu/track.h"
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

// IQ, track, Doppler and gate files: as themselves, as complex rows, as a track.
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
    }
    walk_elements(opengeniq(name));
    walk_elements(opengenrea(name));
    if (rea_track_ptr track = rea_setup(name)) {
        rea_rd_and_avg(track.get(), 0.0, 12.0, 3);
        rea_rehash(track.get());
    }
}

} // namespace norva
