#pragma once
// Opening data files for reading, one type each or all of them. Null when a file does not open.

#include "fileio/zuvfile.h"

#include <string>

namespace norva {

zuvfile_ptr sp_open_pks(const std::string& name);
zuvfile_ptr sp_open_gat(const std::string& name);
zuvfile_ptr sp_open_img(const std::string& name);

// By the type code in the file's head; null for an unknown type, too.
zuvfile_ptr sp_open_typed(const std::string& name);

} // namespace norva
