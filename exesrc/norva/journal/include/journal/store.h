#pragma once
// The journal store: numbered records with a cursor, kept in memory and backed by one file. It knows nothing
// of what the records mean. A record is a short run of 32-bit words:
//
//   0 tag, 0 to 89 | 1 motion compensation pointer | 2 NA, number of arguments | 3 .. NA+2 arguments
//
// Floats and doubles are carried as their bits (low word first), text as bytes packed four to a word.
//
// The journal file holds four records. Each is preceded and followed by its length in bytes, and every number
// is a little-endian 32-bit integer:
//
//   head, 200 bytes: name of the raw data file up to a NUL | NC, NP | INDX(0..NC) | IR, NP words
//
// NC is the index of the last record, INDX(i) the place of record i in IR, counted from 0. Between the
// records there may be dead words: those of steps that were cut off by a later step.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

constexpr int JOURNAL_MAX_INDEX = 200;     // last possible record
constexpr int JOURNAL_MAX_WORDS = 1000000; // words of all records, dead ones included
constexpr int JOURNAL_HEAD_BYTES = 200;
constexpr int JOURNAL_NAME_BYTES = 72;

// Control actions. A first word below 90 is the tag of a record to append.
constexpr int JOURNAL_BEGIN = 90, JOURNAL_GOTO = 91, JOURNAL_STEP = 92, JOURNAL_SAVE = 93, JOURNAL_LOAD = 94,
              JOURNAL_ABORT = 95, JOURNAL_LIST = 96;

// One request. OUT is set to the length of the reply.
//
//   IN(0)      IN from 1 on                               OUT
//   below 90   (IN is the whole record)                   index, copy of the record
//   90 begin   50 words head, 18 words output file name   empty
//   91 go to   index; beyond the last: the last           index, record
//   92 step    signed number of records                   index, record
//   93 save    -                                          notice "Journal saved on file"
//   94 load    length of the name, its bytes              50 words head, 0, record 0
//   95 abort   -                                          notice "Journal aborted"
//   96 list    greatest length of OUT, in words           NC, then for each record its tag and pointer, and
//                                                         for tag 27 also NA - 4 and the words from 7 on
//
// Every error, and the two notices, have the form OUT(0) = -1, OUT(1) = 72, then 18 words of text padded with
// blanks; journal_text reads it. An error leaves the store as it was. A request that is shorter than its form
// demands is an invalid action.
//
// A step that is appended behind an earlier position cuts off all later records. The file is written after
// every append and at save; the first time under a name that must be free. Begin after a load keeps the
// loaded records and names the file for them; until then the store has no output file and takes no record.
// Abort deletes the file only when this store has written it.
//
// Not reentrant. Not for several threads.
void journal(std::span<const std::int32_t> in, std::vector<std::int32_t>& out);

// Text of an error or notice, without the padding; empty for any other reply.
std::string journal_text(std::span<const std::int32_t> out);

// Index that the next appended record gets.
int journal_next_index();

// Words that can still be appended, the three leading words of a record included.
int journal_words_left();

// The store holds records that its file does not: the last write failed.
bool journal_unsaved();

struct journal_store_calls {
    // The file cannot be written. The default stops the program with the text. When the call returns, the
    // records stay in memory, the request succeeds (but a save replies with the text and keeps the store),
    // and the next append or save tries again.
    void (*write_failed)(const char* text);
    // The name for the first write exists already. Returns another name, which is then tried in its place,
    // or an empty text (the default): the write fails.
    std::string (*name_taken)(const std::string& name);
};
extern journal_store_calls journal_store_hooks;

// Position, counted from 1, of the first character of a that equals (lbeq) or differs from (lbne) b; 0 when
// there is none. n > 0 looks from 1 up to n, n < 0 from -n down to 1.
int lbeq(const char* a, char b, int n);
int lbne(const char* a, char b, int n);

// Length of the text in a field of n bytes, up to its NUL; -1 when there is no NUL.
int lenb(const char* a, int n);

} // namespace norva
