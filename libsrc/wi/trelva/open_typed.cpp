// Opening a data file of any type for reading.
#include "open_typed.h"

#include "cu/spl.h"
#include "fileio/gat.h"

namespace norva {

zuvfile_ptr sp_open_typed(const std::string& name) {
    switch (zuvfiletype(name)) {
    case FILETYPE_SPL: return openspl(name, "Old", 0);
    case FILETYPE_GAT: return opengat(name, "Old", 0);
    default: return nullptr;
    }
}

} // namespace norva
