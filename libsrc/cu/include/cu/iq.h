#pragma once
// IQ files (type 101): the complex samples of one channel, one an element, evenly in time: element n, from 0,
// lies at t0 + n / prf.
//
// The header's values are served as keywords by the names "text", "t0", "prf", "tbias", "xlam", spelled
// exactly so.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace norva {

constexpr int IQ_HEADSIZE = 144; // bytes on disk
constexpr int IQ_ELEMSIZE = 8;   // I and Q as floats

struct _iqheader {
    std::int32_t version = 1;
    std::int32_t pad = 0;
    std::string text;   // comment, up to 103 characters
    double t0 = 0.0;    // start time, seconds
    double prf = 1.0;   // elements per second, above 0
    double tbias = 0.0; // time bias, seconds
    double xlam = 1.0;  // wavelength, metres, above 0
};

struct _iqfile : _zuvfile {
    _iqheader hd;
    jbuf<std::byte> elembuf; // scratch element
};

using iqfile_ptr = std::unique_ptr<_iqfile, zuvfile_closer>;

int getiqerror(); // last status of the layer

// Mode as in openspl (cu/spl.h). Status besides those: -16 when prf or xlam is not above 0.
iqfile_ptr openiq(const std::string& name, const char* mode);

int getiq(_iqfile* p, double& tme, float& i, float& q); // reads the next element
int putiq(_iqfile* p, float i, float q);                // writes it

int getiqkeys(_iqfile* p, double& t0, double& tbias, double& prf, double& xlam);
int putiqkeys(_iqfile* p, double t0, double tbias, double prf, double xlam); // -13 for keys that cannot be

int getiqhead(_iqfile* p, _iqheader& head);
int putiqhead(_iqfile* p, const _iqheader& head);

int iq_service(_zuvfile* file, int opcode, uarg& arg);
int iq_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
