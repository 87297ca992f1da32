#pragma once
// Doppler files (type 105): amplitude spectra, one an element, each with its time. An amplitude is a signed
// 16-bit number; times the header's scale it is the value.
//
//   element   time (double); in version 2 two more doubles; namp amplitudes, padded to a multiple of 8 bytes
//
// The header's values are served as keywords by the names "text", "namp" (int), "t0", "tbias", "prf", "xlam",
// "scale", spelled exactly so.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int DOP_HEADSIZE = 152; // bytes on disk

struct _dopheader {
    std::string text;         // comment, up to 103 characters
    std::int32_t version = 2; // 1 or 2
    std::int32_t namp = 0;    // amplitudes of an element, above 0
    double t0 = 0.0;          // seconds
    double tbias = 0.0;
    double prf = 1.0;
    double xlam = 1.0;
    double scale = 1.0; // value of amplitude 1
};

struct _dopfile : _zuvfile {
    _dopheader hd;
    jbuf<std::byte> elembuf; // scratch element
};

using dopfile_ptr = std::unique_ptr<_dopfile, zuvfile_closer>;

int getdoperror(); // last status of the layer

// Mode as in openspl (cu/spl.h). A new file has version 2 and namp amplitudes an element.
dopfile_ptr opendop(const std::string& name, const char* mode, int namp);

// Reads the next element. When `amps` has room for fewer than namp the rest is left out; room beyond is
// zeroed. The two doubles of a version 1 element are 0.
int getdop(_dopfile* p, double& tme, std::span<std::int16_t> amps);
int getdopae(_dopfile* p, double& tme, double& a, double& e, std::span<std::int16_t> amps);
// Writes the next element from exactly namp amplitudes, else -13. Version 1 drops the two doubles.
int putdop(_dopfile* p, double tme, std::span<const std::int16_t> amps);
int putdopae(_dopfile* p, double tme, double a, double e, std::span<const std::int16_t> amps);

int getdoptme(_zuvfile* file, std::int64_t element, double& tme); // feeds filefind

int getdopkeys(_dopfile* p, double& t0, double& tbias, double& prf, double& xlam);
int putdopkeys(_dopfile* p, double t0, double tbias, double prf, double xlam);

int getdophead(_dopfile* p, _dopheader& head);
int putdophead(_dopfile* p, const _dopheader& head);

int dop_service(_zuvfile* file, int opcode, uarg& arg);
int dop_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
