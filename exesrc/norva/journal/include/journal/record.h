#pragma once
// What the words of a step mean: the layout of each tag, built from the run state and read back with every
// count checked. Words 3..6 of each record are user.nf0, nf, nt0, nt (of record 0: the whole raw file).
//
//   tags            NA         words from 7 on
//   10..17          9          7 rpwinon
//   37..44          9          7 dpwinon, 8..10 user.dp_ni, dp_ip, dp_lag
//   19..26          9          7..10 user.mwi_nti, mwi_lag, mwi_npk, mwi_ncoe, 11 user.mwi_rh
//   30..36          7          7..9 user.dp_ni, dp_ip, dp_lag
//   46, 47          25         7 length of the track file name, 8..27 its bytes
//   13, 24, 40, 47  + 2 + 2nwk number of fitted values, nwk, nwk doubles
//   27              ns + 4     the tag array of the image's actions
//   28              k + 2      words 1..k-2 of jary; word 1 of the record holds the last word of jary
//   89              see below
//   others          4          -
//
// Tag 89 holds the corrections: word 3 their number n, then n words each of flag, nf, nt, nf0, nt0, then
// their doubles one correction after another. NA is 5n + 5 plus the words of the doubles; four words at the
// end are spare.

#include "journal/journal.h"
#include "journal/store.h"
#include "state/mcfile.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

using journal_words = std::vector<std::int32_t>;

constexpr int JRNL_MAX_WORDS = 640389;      // of one record that is written
constexpr int JRNL_MAX_READ_WORDS = 640381; // of one record that is gone to
constexpr int TRK_NAME_MAX = 80;            // bytes of a track file name

// The record of step `tag` (0 to 88) from the run state. `image` is the tag array for tag 27, all k words of
// jary for tag 28 (k at least 2), empty for the others. On a refusal the record is empty and `message` says
// why.
journal_words build_step(int tag, std::span<const std::int32_t> image, std::string& message);

// The record of tag 89 with the first n corrections of mc.
journal_words build_mc_record(const mcfile& mc, int n);

// Its length in words.
std::size_t mc_record_words(const mcfile& mc, int n);

// A record taken apart. Fields that the tag does not have stay as they are here.
struct journal_step {
    int tag = 0, mc_ptr = 0;
    int nf0 = 0, nf = 0, nt0 = 0, nt = 0;
    int window_on = 0; // rpwinon or dpwinon when the step was written
    int dp_ni = 0, dp_ip = 0, dp_lag = 0;
    int mwi_nti = 0, mwi_lag = 0, mwi_npk = 0, mwi_ncoe = 0;
    float mwi_rh = 0;
    std::string track_file;
    int uspl_n = 0;
    jbuf<double> uspl_wk;
    jbuf<std::int32_t> jary; // rebuilt, with 4000 bytes to spare; not allocated when no actions were stored
};

// Reads a record of any tag but 89 (starting at its word 0). False, with `step` unspecified, when it is
// shorter than its tag demands or holds a count that does not fit.
bool read_step(std::span<const std::int32_t> record, journal_step& step);

// Reads a record of tag 89 into mc. Returns an empty text, or the message to show; then mc is unchanged.
std::string read_mc_record(std::span<const std::int32_t> record, mcfile& mc);

// The corrections hold together: pointer and counts within limits, windows that begin at 1 or later, a
// decimation not to more samples than there were.
bool mc_is_sound(const mcfile& mc);

// The raw data file's name in the reply of a load: up to its NUL, or all of the 200 bytes.
std::string journal_head_name(std::span<const std::int32_t> load_reply);
// The note behind the name (journal_hooks.head_note), up to its own NUL; empty for a journal without one.
std::string journal_head_note(std::span<const std::int32_t> load_reply);

// Text packed four bytes to a word, first byte lowest, filled up with NULs; and back.
void put_text(std::span<std::int32_t> words, const std::string& text);
std::string get_text(std::span<const std::int32_t> words, std::size_t n_bytes);

// Doubles as pairs of words, low word first.
void put_doubles(journal_words& words, std::span<const double> values);
void get_doubles(std::span<const std::int32_t> words, std::span<double> values);

} // namespace norva
