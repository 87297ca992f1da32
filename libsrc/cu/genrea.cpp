// Instants of a track from track and gate files in one view.
#include "cu/genrea.h"

#include "cu/rea.h"
#include "fileio/gat.h"
#include "fileio/mcvt.h"

#include <array>
#include <cstring>
#include <utility>

namespace norva {
namespace {

int last_status = ZUV_OK;

int genrea_status(int status) {
    return last_status = status;
}

int genrea_rea_service(_zuvfile* file, int opcode, uarg& arg) {
    const int status = rea_service(file, opcode, arg);
    return opcode == UOP_GETELEM || opcode == UOP_GETNELEM ? genrea_status(status) : status;
}

// n instants from the rows of a gate file; their samples are not read.
int genrea_gat_read_block(_gatfile* p, std::int64_t n, std::span<std::byte> data) {
    if (n < 0 || std::ssize(data) / REA_ELEMSIZE < n) return ZUV_BAD_ARGUMENT;
    if (n > p->nelements - p->nextelem) return ZUV_EOF;
    if (setmcvt(p->machine, MACHINE_THIS) != 1) return ZUV_NO_CONVERSION;
    for (std::int64_t i = 0; i < n; i++) {
        std::array<std::byte, sizeof(double)> range;
        if (int status = zuvfilereadraw(p, p->nextelem, 0, range); status != ZUV_OK) return status;
        mcvt_f8(range.data());
        _reaelement element;
        std::memcpy(&element.range, range.data(), sizeof element.range);
        uarg next;
        gat_service(p, UOP_NEXTTIME, next);
        element.time = next.t;
        rea_pack(element, data.subspan(static_cast<std::size_t>(i) * REA_ELEMSIZE));
        if (int status = zuvfileseek(p, p->nextelem + 1); status != ZUV_OK) return status;
    }
    return ZUV_OK;
}

int genrea_gat_service(_zuvfile* file, int opcode, uarg& arg) {
    auto* p = static_cast<_gatfile*>(file);
    if (!p) return ZUV_NULL_FILE;
    switch (opcode) {
    case UOP_GETELEM: return genrea_status(genrea_gat_read_block(p, 1, arg.data));
    case UOP_GETNELEM: return genrea_status(genrea_gat_read_block(p, arg.n, arg.data));
    case UOP_ELEMSIZE: arg.n = REA_ELEMSIZE; return ZUV_OK;
    case UOP_NITEMS: arg.n = 1; return ZUV_OK;
    default: return gat_service(file, opcode, arg);
    }
}

zuvfile_ptr seen(zuvfile_ptr file, int status, zuvservice service) {
    genrea_status(status);
    if (file) file->ucall = service;
    return file;
}

} // namespace

int getgenreaerror() {
    return last_status;
}

zuvfile_ptr opengenrea(const std::string& name) {
    switch (zuvfiletype(name)) {
    case FILETYPE_REA: {
        zuvfile_ptr file = openrea(name, "Old");
        return seen(std::move(file), getreaerror(), genrea_rea_service);
    }
    case FILETYPE_GAT: {
        gatfile_ptr file = opengat(name, "Old", 0);
        if (file && !file->hd.incrng) break;
        return seen(std::move(file), getgaterror(), genrea_gat_service);
    }
    case -1: genrea_status(ZUV_NO_OPEN); return {};
    default: break;
    }
    genrea_status(ZUV_BAD_TYPE);
    return {};
}

} // namespace norva
