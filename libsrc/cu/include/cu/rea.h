#pragma once
// Track files (type 103): range, elevation and azimuth of a target over time, one instant an element.
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

constexpr int REA_HEADSIZE = 144; // bytes on disk
constexpr int REA_ELEMSIZE = 32;

struct _reaheader {
    std::int32_t version = 1;
    std::string text; // comment, up to 103 characters
    std::int32_t spare = 0;
    double t0 = 0.0;    // start time, seconds
    double prf = 1.0;   // elements per second, above 0
    double tbias = 0.0; // time bias, seconds
    double xlam = 1.0;  // wavelength, metres, above 0
};

// An element: on disk these fields one behind the other, 32 bytes.
struct _reaelement {
    double time = 0.0;  // seconds
    double range = 0.0; // metres
    float elevation = 0.0F;
    float azimuth = 0.0F;
    std::int32_t flag = 0;
    std::int32_t spare = 0;
};

struct _reafile : _zuvfile {
    _reaheader hd;
    jbuf<std::byte> elembuf; // scratch element
};

using reafile_ptr = std::unique_ptr<_reafile, zuvfile_closer>;

int getreaerror(); // last status of the layer

// Mode as in openspl (cu/spl.h). Status besides those: -16 when prf or xlam is not above 0.
reafile_ptr openrea(const std::string& name, const char* mode);

// The next element.
int getrea(_reafile* p, double& tme, double& rng, float& el, float& az, int& iflg);
int putrea(_reafile* p, double tme, double rng, float el, float az, int iflg);

// The bytes of an element in this machine's form, which is what u_getelem delivers.
_reaelement rea_unpack(std::span<const std::byte> bytes);
void rea_pack(const _reaelement& element, std::span<std::byte> bytes);

int getreatme(_zuvfile* file, std::int64_t element, double& tme); // feeds filefind

int getreakeys(_reafile* p, double& t0, double& tbias, double& prf, double& xlam);
int putreakeys(_reafile* p, double t0, double tbias, double prf, double xlam); // -13 for keys that cannot be

int getreahead(_reafile* p, _reaheader& head);
int putreahead(_reafile* p, const _reaheader& head);

int rea_service(_zuvfile* file, int opcode, uarg& arg);
int rea_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
