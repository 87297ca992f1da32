#pragma once
// The geometry that polar formatting needs, from the keywords of a raw file or from the user.

#include <string>

namespace norva {

struct _zuvfile;

struct plr_kws {
    int eflag = 0; // 0 no keywords read; 1 all found in the file or set by hand; 2 at least one missing
    int dtyp = 0;  // 0 turntable, 1 rail
    float xex = 0; // extent of the target across range, metres
    float yex = 0; // and along range, metres
    float rc = 0;  // distance to the rotation axis or focal point, metres
    float da = 0;  // rotation of the turntable between samples, radians
    float du = 0;  // increment along the rail between samples, metres
    float sa = 0;  // squint angle, radians
    float de = 0;  // depression angle against the turntable's plane, radians
};

plr_kws* get_pkw(); // the one record of the run
void reset_kws();   // all zero

// Fills the record from DTYPE, XEX, YEX, RC and, for a turntable, DE and DA, for a rail DU and SA. Sets eflag
// to 1, or to 2 when a keyword is missing or no number.
void rd_plr_kw(_zuvfile* p);

// Why no turntable image can be formed with these values, as a message; empty when one can.
std::string polar_fault(const plr_kws& kws);

} // namespace norva
