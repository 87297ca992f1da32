#pragma once
// Private state of the image processor, and how its actions are told to the dispatcher.
//
// An action is a handler that checks its words, then works on the state. It returns the text of a failure,
// before it has changed anything, or null. The dispatcher counts the step and keeps the action's words. The
// first record is not kept as words: the image it gave is, and a replay begins with that.

#include "image/proimag.h"
#include "signal/aligned_buffer.h"
#include "state/image_cut.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace norva::image {

using words_in = std::span<const std::int32_t>;
using words_out = std::span<std::int32_t>;
using failure = const char*; // null: none

inline float real_at(words_in words, std::size_t i) {
    return std::bit_cast<float>(words[i]);
}
inline std::int32_t bits(float value) {
    return std::bit_cast<std::int32_t>(value);
}

struct processor {
    bool ready = false;  // an image was formed
    int init = PI_INIT;  // what formed it: action 0 or 10
    int is = 0;          // current step
    int ns = 0;          // highest step that can be advanced to
    int il = 0;          // last state-changing action
    int last = 0;        // action of the current step
    bool fresh = true;   // the action at work was asked for, not replayed
    int target = 0;      // step at which the call ends
    bool edited = false; // a box was cut out: later cuts may leave it

    // Stored actions, one behind the other; words of the journal counted with those of the first record.
    std::vector<std::int32_t> actions;
    std::size_t np = 0;     // place of the next action
    int first_words = 0;    // of the first record
    std::size_t cut_at = 0; // il = PI_CUT: place of the length of the cut's stored journal

    float wct = 0, dct = 0; // of the last cut

    // Complex samples, nx fastest: the image, scratch, and the first image once the present one differs.
    aligned_buffer qa, qb, qc;
    bool kept = false;             // qc holds the first image
    bool touched = false;          // qa no longer does
    image_parms first;             // img as it was with the first image
    std::vector<std::int32_t> own; // what the last action itself produced

    bool landing() const { return is + 1 == target; } // the action at work is the call's last
    std::size_t samples() const {
        return static_cast<std::size_t>(img.nx) * static_cast<std::size_t>(img.ny);
    }
    std::size_t journal_words() const { return static_cast<std::size_t>(first_words) + np; }
};

// Before qa is changed: the first image is put aside.
void keep_first(processor& p);
// Back to step 0.
void to_first(processor& p);

// Actions that make a step; `words` are those behind the action's number.
failure act_flop(processor& p, words_in words);
failure act_peak_scaling(processor& p, words_in words);
failure act_edit(processor& p, words_in words);
failure act_interpolate(processor& p, words_in words);
failure act_peak_parameters(processor& p, words_in words);
failure act_cut(processor& p, words_in words);
failure act_center(processor& p, words_in words);
failure act_nothing(processor& p, words_in words); // status, write: only their results differ

// Results of the step at which a call ends. A failure here means that `out` is too short.
failure result_image(processor& p, words_out out);
failure result_status(processor& p, words_out out);
failure result_data(processor& p, words_out out);
failure result_left(processor& p, words_out out); // end that was replayed: nothing to export

// Requests that are no step. `in` is the whole record.
failure do_init(processor& p, words_in in, words_out out);
failure do_polar_init(processor& p, words_in in, words_out out);
failure do_go(processor& p, words_in in, words_out out);
failure do_step(processor& p, words_in in, words_out out);
failure do_store_cut(processor& p, words_in in, words_out out);
failure do_export(processor& p, words_in in, words_out out);
failure do_restore(processor& p, words_in in, words_out out);
failure do_end(processor& p, words_in in, words_out out);

// A sample of the data; what is no number counts as nothing.
inline float finite_sample(std::int32_t word) {
    const auto value = std::bit_cast<float>(word);
    return std::fabs(value) <= std::numeric_limits<float>::max() ? value : 0.0F;
}

// What actions 0 and 10 have in common: the checks, with the texts of each, of a record whose data start at
// `data_word`, and its parameters; and the beginning with the new image, which stands in qb.
struct init_texts {
    failure memory, peaks, scaling;
};
failure read_init(words_in in, std::size_t data_word, const init_texts& texts, image_parms& parms);
failure begin_with(processor& p, const image_parms& parms, int init, std::size_t data_word, words_out out);

// Replays stored actions up to step `target`, writes the result of the last.
failure replay(processor& p, int target, words_out out);
// Words of the whole actions that begin at `place`, or 0 when they are not whole, or no action.
std::size_t stored_length(words_in actions, std::size_t place);

// The amplitudes of the image divided by the largest, in scratch. Sets img.ascl, and resolves a threshold
// that is given as a factor of the mean amplitude.
float* amplitudes(processor& p);

constexpr failure NOT_INITIALIZED = "***Initialization must be done first.";
constexpr failure NOT_ACTIVATED = "***Action not activated";
constexpr failure INVALID_MODE = "***Error 99...Invalid mode";
constexpr failure JOURNAL_FULL = "***Error 99...not enough memory for proimag journal";
constexpr failure SHORT_RECORD = "***Error 99...Incomplete record";
constexpr failure SHORT_RESULT = "***Error 99...Result does not fit";

} // namespace norva::image
