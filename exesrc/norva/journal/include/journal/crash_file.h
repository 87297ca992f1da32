#pragma once
// The crash file "norva.mc.sav" in the current folder: the journal position and the corrections of the raw
// data, which a journal that was not closed lacks. All numbers little-endian:
//
//   user.count, mc.ptr, mc.nrecs                       32-bit integers
//   flag, nf0, nf, nt0, nt                             mc.nrecs integers each
//   for each correction 2 doubles when flag is 1, otherwise nt + 1

#include "state/mcfile.h"

#include <string>

namespace norva {

extern const char* const CRASH_FILE;

// False: jrnl leaves the file alone. For a replay without a user, which must not touch the file of a program
// that was killed.
extern bool crash_file_kept;

// str "w" writes user.count and user.mc, "r" reads them. False after a message, on reading with the state as
// it was. The file is replaced as a whole, so that it is complete at every moment.
bool rw_mc(const char* str);

// The bytes of the file, and back. decode checks every count and length against the limits and against the
// size of the file; false leaves count and mc as they were.
std::string encode_crash_file(int count, const mcfile& mc);
bool decode_crash_file(const std::string& bytes, int& count, mcfile& mc);

} // namespace norva
