#pragma once
// Compact text of a number: "2.0", "1000000.0", "3.5e+09". The decimal point is a point whatever the locale.
//
// Each routine has a ring of 10 buffers, so that a caller may hold ten results at once; the eleventh
// overwrites the first.

namespace norva {

// Twelve decimals, or fourteen with an exponent for magnitudes below 1e-06 or above 1e+06; trailing zeros are
// removed, one digit stays behind the point. Zero gives "0.0".
const char* c_sfmtd(double dd);
// The same in single precision, with five decimals, or six with an exponent.
const char* c_sfmtf(double ff);
const char* c_sfmti(int ii);

} // namespace norva
