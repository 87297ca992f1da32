#pragma once
// Gate files (type 109): the raw data of the program. A row (element) is one record in time: ngat complex
// samples, I then Q, led by a range when the file has ranges. The time of row n, from 0, is t0 + n / prf.
//
// The header's values are served as keywords by the names "ngat", "dattype", "incrng" (int), "t0", "prf"
// (double), spelled exactly so; "T0" or "PRF" are items of the keyword list. A put that would leave the file
// unreadable (ngat, dattype or incrng against the element size) gives -13.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int GAT_BYTE = 4;  // signed byte pairs
constexpr int GAT_SHORT = 5; // signed 16-bit pairs
constexpr int GAT_FLOAT = 6; // float pairs

constexpr int GAT_HEADSIZE = 32; // bytes on disk

struct _gatheader {
    std::int32_t version = 0; // 1
    std::int32_t ngat = 0;    // samples per element, at least 1
    std::int32_t dattype = 0; // GAT_BYTE, GAT_SHORT; any other value means GAT_FLOAT
    std::int32_t incrng = 0;  // 1 when each element starts with a range as a double
    double t0 = 0.0;          // time of element 0, seconds
    double prf = 0.0;         // elements per second, above 0
};

struct _gatfile : _zuvfile {
    _gatheader hd;           // the header in memory
    jbuf<std::byte> elembuf; // scratch element
};

using gatfile_ptr = std::unique_ptr<_gatfile, zuvfile_closer>;

int getgaterror(); // last status of the gate layer in this thread

// Mode, by its first letter in either case: "Old" or "Read" open for reading, "Update" for reading and
// writing, "New" or "Create" create. Null on failure; getgaterror tells why. `ngat` is used at create only:
// float rows with a range.
gatfile_ptr opengat(const std::string& name, const char* mode, int ngat);
// Create with a choice of representation. A dattype other than 4 and 5 makes a float file.
gatfile_ptr opengat_opt(const std::string& name, int ngat, int dattype, int incrng);

// Size on disk of an element, bytes.
std::int64_t gat_elementsize(std::int64_t ngat, int dattype, int incrng);

// Reads the next row: its time, its range (0 in a file without ranges) and its samples as float pairs. When
// `gats` has room for fewer than ngat pairs the rest of the row is left out; room beyond them is zeroed.
int getgat(_gatfile* p, double& tme, double& rng, std::span<float> gats);

// A window of many rows at about the speed of one large read: rows nrec0 .. nrec0 + nrec - 1, of each the
// samples nsamp0 .. nsamp0 + nsamp - 1, both from 1, into `out` as interleaved float pairs, row after row.
// Serves every dattype and machine. The next element does not move. -13 when the window is not
// inside 1..nelements, 1..ngat or `out` is smaller than 2 nrec nsamp floats. `progress` is called with (rows
// done, nrec), about fifty times at most. Several threads may read windows of one file at the same time.
int getgat_window(_gatfile* p, std::int64_t nrec0, std::int64_t nrec, std::int64_t nsamp0, std::int64_t nsamp,
                  std::span<float> out, const std::function<void(int, int)>& progress = {});

// Write a row from floats, bytes or 16-bit integers: exactly ngat pairs, else -13. The range is dropped in a
// file without.
int putgat(_gatfile* p, double rng, std::span<const float> gats);
int putgat_b(_gatfile* p, double rng, std::span<const std::int8_t> gats);
int putgat_bb(_gatfile* p, double rng, std::span<const std::int16_t> gats);

// Converts n values (2 ngat for a row) between the representations 4, 5 and 6. Float to integer clamps, then
// rounds halves away from zero; not-a-number gives 0. 16 to 8 bits clamps. `in` and `out` may not overlap and
// need no alignment.
void gatconv(std::size_t n, int intype, int outtype, const void* in, void* out);

// Header alone: read from or written to the file, with p->hd kept in step.
int getgathead(_gatfile* p, _gatheader& head);
int putgathead(_gatfile* p, const _gatheader& head);

// The type's services (ufile.h, zuvfile.h).
int gat_service(_zuvfile* file, int opcode, uarg& arg);
int gat_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
