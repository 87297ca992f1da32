#pragma once
// What the image processor and the cut processor share: the parameters of the one image, the sign of the one
// cut, and the cut's stored actions, which the image keeps as part of its Compute Cut step.

#include <cstdint>
#include <vector>

namespace norva {

// Coordinates in gates, angles in degrees. Set by the image processor unless said otherwise.
struct image_parms {
    int nf = 0, nt = 0;   // frequencies and time samples of the data
    int kw = 0;           // weighting selector, kept only
    int ksx = 0, ksy = 0; // transform sign along crossrange and range; a flop turns it
    int ifx = 0, ify = 0; // interpolation factors of the last image formation or interpolation
    int npmx = 0;         // largest number of peaks
    int kscl = 0;         // peak dots follow 1 power, 2 amplitude, 3 its square root
    float apmn = 0;       // low amplitude threshold, as resolved
    float diam = 0;       // dot diameter of the highest peak
    int nx = 0;           // crossrange samples, the first and their spacing
    float x1 = 0, dx = 0;
    int ny = 0; // range likewise
    float y1 = 0, dy = 0;
    float ascl = 0;                  // amplitude that a normalised amplitude of 1 stands for
    int npk = 0;                     // peaks found
    float xpk = 0, ypk = 0, apk = 0; // result of the last peak search
    float xc1 = 0, yc1 = 0;          // first sample of the last cut
    float dxc = 0, dyc = 0;          // its step
    float xpv = 0, ypv = 0, ang = 0; // its pivot point and angle
};
extern image_parms img;

extern int kss; // transform sign of the cut

// Words that the stored actions of one cut may take, ns and np included. A cut processor refuses an action
// that would pass it.
constexpr int CUT_JOURNAL_WORDS = 524288;

// A cut's stored actions. The image keeps the words ns, np, ir(0..np-1).
struct cut_journal {
    int isi = 0; // image step of this cut, times 100
    int jf = 0;  // to the cut processor: 1 when ir is a stored journal to be replayed. Back: 1 when changed
    int ns = 0;  // highest step that can be advanced to
    int np = 0;  // index in ir of the next action; ir has at least np words
    std::vector<std::int32_t> ir{-1}; // from 0; ir(0) is negative while no cut is initialised
};
extern cut_journal cutj;

} // namespace norva
