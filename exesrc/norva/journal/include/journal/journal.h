#pragma once
// Steps of an analysis: jrnl writes one, mng_jrnl goes to one.
//
// Every action of the user that changes what is computed calls jrnl with the tag of the step. A step is kept
// as its parameters only; going to a position computes the results again through the handlers that the
// buttons use, while `managing` is 1 and jrnl is mute.

#include "zuvsys/jbuf.h"

#include <cstdint>
#include <span>
#include <string>

namespace norva {

struct wi_obj;

// Writes the step `tag` with the present state: tags 0 to 88. Special tags: 89 motion compensation record
// (always behind the last step, whatever the position is), 90 begin a journal for user.rdfile under the name
// user.jfile, 93 save and close, 95 abort (frees the raw data too), 96 show the listing.
//
// A step that was written makes user.count and eoj its index. The journal file and the crash file are up to
// date when the call returns. A folder that cannot be written is reported once; the steps stay in memory and
// each later step tries again (journal_unsaved() tells). The last place of the journal is kept free for tag
// 89, so a journal takes 200 steps, 0 to 199, and no more words than leave room for that record.
void jrnl(int tag);

// Goes to a position: tag 0 the one asked for, 1 forward, 2 back, -1 loads the journal user.jfile, -2 steps
// back in the store only. A null wo means a call from inside the program. Done by the function that the
// application has registered below.
void mng_jrnl(wi_obj* wo, int tag);

// The stored actions of the image, on their way between the image window and the journal: word 0 the number
// of words k, word 1 the number of actions, the actions, word k-1 the motion compensation pointer. Not
// allocated when there are none. Set by the image processor and by replay, freed by jrnl(27).
extern jbuf<std::int32_t> jary;

// A fitted spline as a step keeps it: number of fitted values, and the work array, whose first two 32-bit
// words are counts a and b; it holds 2a + 3b + 1 doubles.
struct journal_spline {
    int n = 0;
    std::span<const double> work;
};

// What the journal asks of the windows above it. Until the application fills this in, the calls do nothing
// and the values are empty.
struct journal_calls {
    void (*show_count)();                          // user.count into the position field
    void (*enable_fields)(int enable);             // lock or unlock the main window's fields
    void (*show_track_button)(bool show);          // the button "Mocomp w/Trk"
    void (*show_listing)(const std::string& text); // into the edit page
    void (*show_journal_name)();                   // user.jfile has changed
    std::string (*track_file)();                   // name in the track window's selector
    journal_spline (*spline)();                    // the last fit
    void (*mng_jrnl)(wi_obj* wo, int tag);
    std::string (*head_note)(); // what else tells how user.rdfile is read, such as "VV"
};
extern journal_calls journal_hooks;

} // namespace norva
