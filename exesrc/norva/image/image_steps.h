#pragma once
// What a picture depends on and the processor's stored actions do not hold: how the image was opened, and the
// clip levels of its peak scalings. It is kept beside the actions, and travels with them in jary, behind the
// last action: readers of the actions stop before it.
//
//   words of jary: length, number of actions, actions, [extension], motion compensation level
//   extension:     ifx ify npmx kscl apmn diam, polar (0 or 1), dtyp xex yex rc da du sa de,
//                  number of clip levels, (step, level) each, words of the extension, a mark

#include "mocomp/polar_keywords.h"
#include "zuvsys/jbuf.h"

#include <cstdint>
#include <span>
#include <vector>

namespace norva {

struct proimag_parms;

struct clip_level {
    int step = 0;    // of the peak scaling
    float level = 1; // diameter that dots are held to, over that of the strongest peak
};

struct image_steps {
    // As the image was formed.
    int ifx = 1, ify = 1, npmx = 1, kscl = 1;
    float apmn = 0, diam = 0;
    bool polar = false;
    plr_kws geometry;

    std::vector<clip_level> clips; // rising steps
    // Centerings whose correction is in force, by step; not stored.
    std::vector<int> centred;
    bool data_stale = false; // user.pfdata is not what user.mc says, after steps back over a centering

    float clip_at(int step) const; // level in force at a step
    void forget_from(int step);    // a fresh action has taken the place of this step
};

// jary with the extension.
jbuf<std::int32_t> with_image_steps(const jbuf<std::int32_t>& plain, const image_steps& steps);

// The extension of a jary taken off: `plain` gets what is left, in the form of a jary. False, with `steps` as
// they were, when there is none or it does not hold together.
bool take_image_steps(std::span<const std::int32_t> jary, std::vector<std::int32_t>& plain,
                      image_steps& steps);

} // namespace norva
