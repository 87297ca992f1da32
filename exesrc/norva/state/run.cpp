// The one instance of the run state.
#include "state/run.h"

#include "state/defaults.h"
#include "state/user.h"
#include "state/write_out.h"

namespace norva {

user_parms user;
gpf_parms gp;
defaults def;

int eoj, managing, stsf, ntime, nfreq, dec_ok;
float yx_scale = 1;
double kw_r0;
std::string homedir;
int imgwinon, rpwinon, dpwinon, pkswinon, mcwinon, kwinon, msgwinon, procwinon;

bool analysis_window_open() {
    return imgwinon || rpwinon || dpwinon || pkswinon || mcwinon;
}

void reset_run_state() {
    user = {};
    gp = {};
    norva_init_defaults(def);
    eoj = managing = stsf = ntime = nfreq = dec_ok = 0;
    yx_scale = 1;
    kw_r0 = 0;
    homedir.clear();
    reduced = {};
    imgwinon = rpwinon = dpwinon = pkswinon = mcwinon = kwinon = msgwinon = procwinon = 0;
}

} // namespace norva
