// Opening data files for reading.
#include "open_typed.h"

#include "cu/dop.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/spl.h"
#include "cu/vec.h"
#include "fileio/gat.h"

namespace norva {

namespace {

zuvfile_ptr open_if(const std::string& name, int filetype) {
    return zuvfiletype(name) == filetype ? sp_open_typed(name) : nullptr;
}

} // namespace

zuvfile_ptr sp_open_typed(const std::string& name) {
    switch (zuvfiletype(name)) {
    case FILETYPE_IQ: return openiq(name, "Old");
    case FILETYPE_PKS: return openpks(name, "Old", 0);
    case FILETYPE_REA: return openrea(name, "Old");
    case FILETYPE_DOP: return opendop(name, "Old", 0);
    case FILETYPE_SPL: return openspl(name, "Old", 0);
    case FILETYPE_GAT: return opengat(name, "Old", 0);
    case FILETYPE_IMG: return openimg(name, "Old", 0);
    case FILETYPE_VEC: return openvec(name, "Old", 0);
    default: return nullptr;
    }
}

zuvfile_ptr sp_open_pks(const std::string& name) {
    return open_if(name, FILETYPE_PKS);
}

zuvfile_ptr sp_open_gat(const std::string& name) {
    return open_if(name, FILETYPE_GAT);
}

zuvfile_ptr sp_open_img(const std::string& name) {
    return open_if(name, FILETYPE_IMG);
}

} // namespace norva
