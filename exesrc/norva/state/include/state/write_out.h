#pragma once
// Where an image leaves its edited data for the output file. The "WRITE" window, which stands above all
// analyses, asks for them when it is about to write; the image answers with write_pfx_out.

#include "zuvsys/jbuf.h"

#include <span>

namespace norva {

// Raw data made out of an edited image. Of the span of frequencies and times of user.pfdata; the numbers of
// samples, and with them the steps, are the image's own.
struct reduced_data {
    int nf = 0, nt = 0;
    int ksx = -1;        // crossrange sign, which a flop of the image turns
    jbuf<float> samples; // nt rows of nf complex samples, as user.pfdata; empty when there are none
};
extern reduced_data reduced;

// Called by the image with its edited data: 2 nf nt floats, row = time. They are copied.
void write_pfx_out(int nf, int nt, int ksx, std::span<const float> samples);

struct write_calls {
    void (*image_hands_over)(); // asks the open image to call write_pfx_out; default: nothing
};
extern write_calls write_hooks;

} // namespace norva
