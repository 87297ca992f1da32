#pragma once
// Rows of complex samples from a file of any type that holds them, in one view: IQ (a row is one sample),
// gate (ngat samples) and Doppler files (namp amplitudes as real parts).
//
// The open file answers the calls of fileio/ufile.h, for reading:
//   u_nitems              complex samples of a row
//   u_getelem, u_getnelem rows as interleaved floats, u_elemsize = 8 * u_nitems bytes each
//   u_kwget_d             "t0", "tbias", "prf", "xlam", "scale" are always there: from the header, else from
//   the
//                         keyword list, else 0, 0, 1, 1, 1. A sample times the scale is its value.
// Times, element numbers and all other keywords are those of the type.

#include "fileio/zuvfile.h"

#include <string>

namespace norva {

int getgeniqerror(); // status of the last open and of the last row read through this view

// Null for a type other than these three (-12), for rows of 2 gigabytes and more (-3), and when the type's
// own open fails, with its status.
zuvfile_ptr opengeniq(const std::string& name);

} // namespace norva
