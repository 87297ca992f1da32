#pragma once
// An element of a typed file as a line of text.

#include "fileio/zuvfile.h"

#include <cstdint>
#include <string>

namespace norva {

std::string type_name(int filetype); // "gat", "iq", ... ; empty for an unknown type

// Opens a file for reading as what its head says it is. Null when its type is unknown or it does not open;
// `status` then tells why.
zuvfile_ptr open_typed(const std::string& name, int& status);

// The next element in one line, of its items the first `items`. Empty when it cannot be read; `status` tells
// why.
std::string element_text(_zuvfile* file, std::int64_t items, int& status);

std::string number_text(double value); // the shortest text that reads back as the same value
std::string number_text(float value);

} // namespace norva
