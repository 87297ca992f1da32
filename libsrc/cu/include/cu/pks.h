#pragma once
// Peak files (type 102): the peaks found at each instant, one instant an element, each with its time.
//
//   header, 184 bytes   text (104), version 1, npks, type, nfft, wdw, lag, weight, spare, then the doubles
//   t0,
//                       prf, tbias, xlam, hz1, hz2
//   element             time (double), npks pairs of position and amplitude (floats), npks flag bytes, padded
//                       to a multiple of 8 bytes
//
// The header's values are served as keywords by the names "text", "npks", "type", "nfft", "wdw", "lag",
// "weight" (ints), "t0", "prf", "tbias", "xlam", "hz1", "hz2", spelled exactly so.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int PKS_HEADSIZE = 184; // bytes on disk

struct _pksheader {
    std::string text;         // comment, up to 103 characters
    std::int32_t version = 1; // 1
    std::int32_t npks = 0;    // peak slots of an element, above 0
    std::int32_t type = 0;    // what the positions are: 0 frequencies (Hz), others their rates (Hz/sec)
    std::int32_t nfft = 0;    // transform size
    std::int32_t wdw = 0;     // window length, records
    std::int32_t lag = 0;     // records from one window to the next
    std::int32_t weight = 0;  // weighting
    std::int32_t spare = 0;
    double t0 = 0.0; // seconds
    double prf = 1.0;
    double tbias = 0.0;
    double xlam = 1.0;           // wavelength, metres
    double hz1 = 0.0, hz2 = 0.0; // frequency limits
};

struct _pksfile : _zuvfile {
    _pksheader hd;
    int curnpks = 0;         // peaks in use, 0 .. hd.npks; all of them after an open
    jbuf<std::byte> elembuf; // scratch element
};

using pksfile_ptr = std::unique_ptr<_pksfile, zuvfile_closer>;

int getpkserror(); // last status of the layer

// Mode as in openspl (cu/spl.h); a new file has npks slots an element.
pksfile_ptr openpks(const std::string& name, const char* mode, int npks);

// How many peaks getpks and putpks hand over, and u_nitems tells; -13 outside 0 .. npks.
int setpksnitems(_pksfile* p, int n);

// Reads the next element: its time and the first curnpks peaks. A flag other than 0 says that the peak is
// there. An array with room for fewer gets what it has room for; room beyond is zeroed.
int getpks(_pksfile* p, double& tme, std::span<float> poss, std::span<float> amps, std::span<char> flgs);
// Writes the next element from exactly curnpks of each, else -13; slots beyond are written as 0.
int putpks(_pksfile* p, double tme, std::span<const float> poss, std::span<const float> amps,
           std::span<const char> flgs);

int getpkstme(_zuvfile* file, std::int64_t element, double& tme); // feeds filefind

int getpkskeys(_pksfile* p, double& t0, double& tbias, double& prf, double& xlam);
int putpkskeys(_pksfile* p, double t0, double tbias, double prf, double xlam);

int getpkshead(_pksfile* p, _pksheader& head);
int putpkshead(_pksfile* p, const _pksheader& head); // -13 when npks does not fit the element size

int pks_service(_zuvfile* file, int opcode, uarg& arg);
int pks_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
