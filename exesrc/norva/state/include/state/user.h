#pragma once
// The run state of the one analysis that is going on: a global record, read by the handlers of all windows.
// Numeric kernels never include this header; handlers pass them values.

#include "state/mcfile.h"
#include "zuvsys/jbuf.h"

#include <cstddef>
#include <string>

namespace norva {

struct user_parms {
    int count = 0; // journal position: last step applied, 0 before the first. Set by the journal, a new file
    int sigtype = 0;    // signal type of the raw file, as gp.sigtype
    int estyle = 0;     // edit page of the main window shows 0 the header text, 1 the journal listing
    int pstyle = 0;     // the window of data is typed in 0 MHz and seconds, 1 sample numbers
    std::string rdfile; // raw data file; empty means no usable file
    std::string jfile;  // journal file
    mcfile mc;

    // The window of data, twice: in units and in samples. cvrt_user_vals keeps the two in step.
    // Set by the main window, the journal, decimation.
    float f0 = 0, bw = 0;    // MHz; bw is always nf*df
    float t0 = 0, dwell = 0; // seconds; dwell is always nt*dt
    int nf0 = 0, nf = 0;     // first frequency sample counted from 1, number of samples
    int nt0 = 0, nt = 0;     // first record counted from 1, number of records
    float dt = 0;            // seconds; gp.wfri until a decimation
    float df = 0;            // MHz; gp.df until a decimation

    jbuf<float> pfdata; // nt rows of nf complex samples, row = time. Set by the raw data input, the journal
    float rh = 0;       // duty ratio gp.plen/gp.wfri, at most 1
    float wfri = 0;     // waveform repetition interval, seconds
    int ksx = -1;       // crossrange sign
    int ksy = 1;        // range sign: -1 for descending frequencies

    int nr = 0;         // gates of a range profile. Set by the range window
    int is = 0;         // range profile step parameter
    jbuf<float> rpdata; // range profile power, nt rows of nr. Set by the range window

    int dp_ni = 0, dp_ip = 0,
        dp_lag = 0;     // Doppler window length, interpolation factor, samples between windows
    int dp_nc = 0;      // Doppler profile columns
    float dp_t0 = 0;    // start time of the Doppler profiles, seconds
    jbuf<float> dpdata; // Doppler profile data
    jbuf<float> dp_w;   // Doppler weighting

    int mwi_nti = 0, mwi_lag = 0, mwi_npk = 0, mwi_ncoe = 0; // moving window image
    float mwi_rh = 0;

    // Runs of four and three that the journal and the fields walk as arrays.
    float* units() { return &f0; }    // f0, bw, t0, dwell
    int* samples() { return &nf0; }   // nf0, nf, nt0, nt
    int* doppler() { return &dp_ni; } // dp_ni, dp_ip, dp_lag
    int* mwi() { return &mwi_nti; }   // mwi_nti, mwi_lag, mwi_npk, mwi_ncoe
};

static_assert(offsetof(user_parms, dwell) == offsetof(user_parms, f0) + 3 * sizeof(float));
static_assert(offsetof(user_parms, nt) == offsetof(user_parms, nf0) + 3 * sizeof(int));
static_assert(offsetof(user_parms, dp_lag) == offsetof(user_parms, dp_ni) + 2 * sizeof(int));
static_assert(offsetof(user_parms, mwi_ncoe) == offsetof(user_parms, mwi_nti) + 3 * sizeof(int));

// Parameters of the raw file. Filled by the raw data input.
struct gpf_parms {
    int sigtype = 0; // 0 sampled cw, 1 narrowband multigate, 2 conventional LFM, 3 frequency stepping
    float f0 = 0;    // first frequency, MHz (Hz while the header is read)
    float bw = 0;    // MHz
    float t0 = 0;    // time of the first record, seconds
    float df = 0;    // frequency step, MHz (Hz while the header is read); negative for descending frequencies
    float plen = 0;  // pulse length, seconds
    float wfri = 0;  // waveform repetition interval, seconds
    int nf = 0;      // frequency samples
    int nrec = 0;    // records
    int ksx = 0;     // crossrange sign as the file gives it
};

extern user_parms user;
extern gpf_parms gp;

} // namespace norva
