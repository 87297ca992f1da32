// The samples of the raw file: the fresh read of a window, and the cut out of data in memory.
#include "app/gpf.h"

#include "app/cdf_input.h"
#include "app/window_values.h"
#include "fileio/gat.h"
#include "signal/parallel.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/memory.h"
#include "zuvsys/strprintf.h"

#include <atomic>
#include <cstring>
#include <span>

namespace norva {

static data_window fresh;  // of the last fresh read; journal replay comes back to it
static data_window loaded; // what user.pfdata holds

data_window loaded_window() {
    return loaded;
}

void loaded_window_is_users() {
    loaded = user_window();
}

bool fresh_window_covers(const data_window& w) {
    return w.nf0 >= fresh.nf0 && w.nf0 + w.nf <= fresh.nf0 + fresh.nf && w.nt0 >= fresh.nt0 &&
           w.nt0 + w.nt <= fresh.nt0 + fresh.nt;
}

static void open_failed(int status) {
    popmsg(strprintf("ERROR(%d) in get_gpf_data()/get_gpf --  Unable to open file ", status) + user.rdfile +
           " for reading!");
    user.pfdata.clear();
}

// The window `fresh` of a gate file, in parts by all cores.
static int read_gate_rows(_gatfile* gate, std::span<float> to) {
    constexpr int floats_of_a_part = 1 << 20;
    const std::size_t row = 2 * static_cast<std::size_t>(fresh.nf);
    std::atomic<int> status = ZUV_OK;
    auto read_part = [&](int first, int last) {
        if (status != ZUV_OK) return;
        const auto n = static_cast<std::size_t>(last - first);
        const int part = getgat_window(gate, fresh.nt0 + first, last - first, fresh.nf0, fresh.nf,
                                       to.subspan(static_cast<std::size_t>(first) * row, n * row));
        if (part != ZUV_OK) status = part;
    };
    parallel_chunks(fresh.nt, 1 + static_cast<int>(floats_of_a_part / row), read_part,
                    [](int done) { rpt_progress(done, fresh.nt); });
    return status;
}

static void read_rows(_gatfile* gate) {
    const computation running;
    if (data_type == raw_kind::cdf) {
        if (!rd_cdf(fresh)) user.pfdata.clear();
        return;
    }
    const int status = read_gate_rows(gate, user.pfdata.span());
    if (status != ZUV_OK) open_failed(status);
}

static void read_fresh(_gatfile* gate) {
    take_raw_steps();
    if (!user.pfdata)
        fresh = user_window();
    else
        set_user_window(fresh);
    const double samples = static_cast<double>(fresh.nt) * fresh.nf;
    if (user.pfdata.size() != 2 * samples)
        user.pfdata.clear(); // first, so that two windows never stand together
    if (fresh.nf < 1 || fresh.nt < 1 || !enough_memory(2 * samples * sizeof(float))) {
        popmsg(strprintf("The window of %d by %d samples does not fit into this machine's memory!", fresh.nt,
                         fresh.nf));
        user.pfdata.clear();
        return;
    }
    if (!user.pfdata)
        user.pfdata.reset(2 * static_cast<std::size_t>(fresh.nt) * static_cast<std::size_t>(fresh.nf));
    loaded = fresh;
    read_rows(gate);
}

// Moves the window's rows to the front of the block. Each row moves towards the front, so one pass in order
// is enough.
static bool cut(int nf0, int nt0, int nf) {
    const int i0 = user.nt0 - nt0, j0 = user.nf0 - nf0;
    const std::size_t old_row = 2 * static_cast<std::size_t>(nf), row = 2 * static_cast<std::size_t>(user.nf);
    if (i0 < 0 || j0 < 0 || user.nf < 1 || user.nt < 1 || j0 + user.nf > nf ||
        (static_cast<std::size_t>(i0) + static_cast<std::size_t>(user.nt)) * old_row > user.pfdata.size()) {
        popmsg("ERROR(1) in get_gpf_data()/get_gpf -- bad index!");
        return false;
    }
    loaded = user_window();
    if (i0 == 0 && j0 == 0 && nf == user.nf) return true;
    for (int i = 0; i < user.nt; i++)
        std::memmove(user.pfdata.data() + i * row,
                     user.pfdata.data() + (i + i0) * old_row + 2 * static_cast<std::size_t>(j0),
                     row * sizeof(float));
    return true;
}

void get_gpf_data(int tag, int nf0, int nt0, int nf) {
    if (data_type == raw_kind::none) {
        popmsg("ERROR: No valid data file to read from!");
        return;
    }
    if (tag != 0) {
        // Without data there is nothing to cut; what the file holds would lack the steps made since.
        if (user.pfdata && !cut(nf0, nt0, nf)) user.pfdata.clear();
        return;
    }
    const gatfile_ptr file = data_type == raw_kind::gate ? opengat(user.rdfile, "Old", gp.nf) : nullptr;
    if (data_type == raw_kind::gate && !file)
        open_failed(getgaterror());
    else
        read_fresh(file.get());
}

} // namespace norva
