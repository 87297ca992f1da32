// The samples of the raw file: the fresh read of a window, and the cut out of data in memory.
#include "app/gpf.h"

#include "app/window_values.h"
#include "fileio/gat.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/strprintf.h"

#include <cstring>
#include <unistd.h>

namespace norva {

// The window of the last fresh read. Journal replay comes back to it.
static struct { int nrec = 0, nsamp = 0, nrec0 = 0, nsamp0 = 0; } fresh;

bool fresh_window_covers(int nf0, int nf, int nt0, int nt) {
    return nf0 >= fresh.nsamp0 && nf0 + nf <= fresh.nsamp0 + fresh.nsamp && nt0 >= fresh.nrec0 &&
           nt0 + nt <= fresh.nrec0 + fresh.nrec;
}

static bool fits_memory(double bytes) {
    const double memory = static_cast<double>(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGE_SIZE);
    return bytes < 0.8 * memory;
}

static bool open_failed(int status) {
    popmsg(strprintf("ERROR(%d) in get_gpf_data()/get_gpf --  Unable to open file ", status) + user.rdfile +
           " for reading!");
    user.pfdata.clear();
    return false;
}

static bool read_fresh(_gatfile* file) {
    take_raw_steps();
    if (!user.pfdata) {
        fresh = {user.nt, user.nf, user.nt0, user.nf0};
    } else {
        user.nt = fresh.nrec;
        user.nf = fresh.nsamp;
        user.nt0 = fresh.nrec0;
        user.nf0 = fresh.nsamp0;
    }
    const std::size_t floats =
        2 * static_cast<std::size_t>(fresh.nrec) * static_cast<std::size_t>(fresh.nsamp);
    if (user.pfdata.size() != floats) user.pfdata.clear(); // first, so that two windows never stand together
    if (!fits_memory(static_cast<double>(floats) * sizeof(float))) {
        popmsg(strprintf("The window of %d by %d samples does not fit into this machine's memory!",
                         fresh.nrec, fresh.nsamp));
        user.pfdata.clear();
        return false;
    }
    if (!user.pfdata) user.pfdata.reset(floats); // a block of the right size is read over
    const computation running;
    const int status = getgat_window(file, fresh.nrec0, fresh.nrec, fresh.nsamp0, fresh.nsamp,
                                     user.pfdata.span(), [](int done, int all) { rpt_progress(done, all); });
    return status == ZUV_OK || open_failed(status);
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
    if (tag != 0 && user.pfdata) {
        if (!cut(nf0, nt0, nf)) user.pfdata.clear();
        return;
    }
    const gatfile_ptr file = opengat(user.rdfile, "Old", gp.nf);
    if (!file) {
        open_failed(getgaterror());
        return;
    }
    read_fresh(file.get());
}

} // namespace norva
