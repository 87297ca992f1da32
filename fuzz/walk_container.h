#pragma once
// Does with a data file whatever the program could do with it: for files of which nothing is known. Used by
// the fuzz target and by the tests that damage files.

#include "fileio/gat.h"
#include "fileio/mcvt.h"
#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

// Every keyword by index, then by name and all three types.
inline void walk_keywords(_zuvfile* file) {
    int n = std::min(u_kwget_n(file), 300);
    for (int i = -1; i <= n; i++) {
        std::string name;
        int type = 0;
        u_kwindx(file, i, name, type);
        u_kwexist(file, name);
        u_kwget_i(file, name);
        u_kwget_d(file, name);
        u_kwget_s(file, name);
    }
    u_kwput_s(file, "SIG_TYPE", "frequency stepping");
    u_kwput_d(file, "t0", 4.0);
    u_kwput_i(file, "ngat", 3);
    u_kwput_i(file, "NREC", 7);
    u_kwput_s(file, "TRACK_INFO", std::string(179, 'x'));
    u_kwdelete(file, "NREC");
}

inline void walk_plain(const std::string& name, bool update) {
    int filetype = 0, headsize = 0, elementsize = 0;
    zuvfile_ptr file = update ? zuvfileupdate(name, filetype, headsize, elementsize)
                              : zuvfileopen(name, filetype, headsize, elementsize);
    if (!file) return;
    std::vector<std::byte> head(static_cast<std::size_t>(std::min(headsize, 1 << 16)));
    zuvfilegethead(file.get(), head);
    std::int64_t last = 0;
    zuvfilemaxelement(file.get(), last);
    std::vector<std::byte> element(static_cast<std::size_t>(std::min(elementsize, 1 << 16)));
    for (std::int64_t n : {last + 1, last, std::int64_t{0}}) {
        zuvfilereadelement(file.get(), element, n);
        zuvfilereadraw(file.get(), n, 1, element);
    }
    walk_keywords(file.get());
}

inline void walk_gate(const std::string& name, const char* mode) {
    gatfile_ptr p = opengat(name, mode, 1);
    if (!p) return;
    walk_keywords(p.get());
    std::int64_t rows = std::min<std::int64_t>(u_nelem(p.get()), 20);
    std::int64_t samples = std::min(p->hd.ngat, 500);
    std::vector<float> row(static_cast<std::size_t>(2 * samples));
    double tme = 0.0, rng = 0.0;
    while (getgat(p.get(), tme, rng, row) == ZUV_OK && u_nextelem(p.get()) < rows) {
    }
    std::vector<float> block(row.size() * static_cast<std::size_t>(rows));
    getgat_window(p.get(), 1, rows, 1, samples, block);
    getgat_window(p.get(), u_nelem(p.get()), 1, p->hd.ngat, 1, block);
    u_timemove(p.get(), u_lasttime(p.get()));
    u_timemove(p.get(), 1e300);
    u_elemmove(p.get(), 0);
    if (p->hd.ngat < 4096)
        putgat(p.get(), 1.0, std::vector<float>(static_cast<std::size_t>(2 * p->hd.ngat), 1e9F));
    u_close(std::move(p));
}

inline void walk_container(const std::string& name) {
    int machine = 0;
    zuvfiletype(name);
    zuvfilemachine(name, machine);
    walk_plain(name, false);
    walk_gate(name, "Old");
    walk_plain(name, true);
    walk_gate(name, "Update");
    walk_gate(name, "Old");
}

} // namespace norva
