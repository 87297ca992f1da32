#pragma once
// Instants of a track from a file of any type that holds them, in one view: track files, and gate files whose
// rows have a range (elevation, azimuth and flag are 0 then).
//
// The open file answers the calls of fileio/ufile.h, for reading; an element is a _reaelement of 32 bytes
// (rea_unpack, cu/rea.h). Times, element numbers and keywords are those of the type.

#include "fileio/zuvfile.h"

#include <string>

namespace norva {

int getgenreaerror(); // status of the last open and of the last element read through this view

// Null for a type other than these two and for a gate file without ranges (-12), and when the type's own open
// fails, with its status.
zuvfile_ptr opengenrea(const std::string& name);

} // namespace norva
