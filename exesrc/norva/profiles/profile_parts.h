#pragma once
// What the range and the Doppler profile window do alike.

#include "time_span.h"
#include "vgph/vggph.h"
#include "vgph/vgxw.h"
#include "zuvsys/jbuf.h"

#include <string>

namespace norva {

constexpr int MOUSE_PRESS = 0, MOUSE_MOTION = 1;
constexpr int LEFT_BUTTON = 0, MIDDLE_BUTTON = 1, RIGHT_BUTTON = 2;

// A press in the control box: left one step forward, middle one back, right to the beginning.
void control_journal(int ibut);

// The display takes the shape of its draw area, so that the picture fills it at any window size.
void fit_display(_vgdisplay& disp);

// A picture on paper, over a whole sheet, with the journal's name on top. Returns the file it went to, empty
// when to a printer or nowhere. `line` may be null.
std::string profile_hardcopy(const char* name, const _vgdisplay& disp, const _vgframe* picture,
                             const _vgframe* box, const _vgobject* line);

// Narrows the window of data to the records from stime to etime, closes the profile window with `close` and
// journals the step. False, after a message where the user would wonder, when the data stay as they are.
bool narrow_data(double stime, double etime, void (*close)());

// Applies a delay history to user.pfdata, adds it to user.mc and journals it. False after a message when it
// holds a value that is not finite; nothing is changed then.
bool apply_correction(jbuf<double> t, int journal_tag);

// Fresh memory is slow at first touch, so a block of the right size is kept.
inline void resize_block(jbuf<float>& block, std::size_t n) {
    if (block.size() != n) block.reset(n);
}

} // namespace norva
