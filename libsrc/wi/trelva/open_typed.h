#pragma once
// Opening a data file of any type for reading.

#include "fileio/zuvfile.h"

#include <string>

namespace norva {

// By the type code in the file's head; null for an unknown type and for a file that does not open.
zuvfile_ptr sp_open_typed(const std::string& name);

} // namespace norva
