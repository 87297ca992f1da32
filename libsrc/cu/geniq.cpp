// Complex rows from IQ, gate and Doppler files in one view.
#include "cu/geniq.h"

#include "cu/dop.h"
#include "cu/iq.h"
#include "fileio/gat.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

namespace norva {
namespace {

int last_status = ZUV_OK;

int geniq_status(int status) {
    return last_status = status;
}

// --- n rows from the next one on, as interleaved floats; `out` holds n rows exactly

int geniq_iq_read_block(_zuvfile* file, std::int64_t n, std::span<float> out) {
    return zuvfilereadblock(file, std::as_writable_bytes(out), n);
}

int geniq_gat_read_block(_zuvfile* file, std::int64_t n, std::span<float> out) {
    auto* p = static_cast<_gatfile*>(file);
    const std::int64_t next = p->nextelem;
    if (n > p->nelements - next) return ZUV_EOF;
    const int status = getgat_window(p, next + 1, n, 1, p->hd.ngat, out);
    return status == ZUV_OK ? zuvfileseek(p, next + n) : status;
}

int geniq_dop_read_block(_zuvfile* file, std::int64_t n, std::span<float> out) {
    auto* p = static_cast<_dopfile*>(file);
    if (n > p->nelements - p->nextelem) return ZUV_EOF;
    const auto namp = static_cast<std::size_t>(p->hd.namp);
    std::vector<std::int16_t> amps(namp);
    double tme = 0.0;
    for (std::int64_t row = 0; row < n; row++) {
        if (int status = getdop(p, tme, amps); status != ZUV_OK) return status;
        float* to = &out[2 * namp * static_cast<std::size_t>(row)];
        for (std::size_t j = 0; j < namp; j++) {
            to[2 * j] = amps[j];
            to[2 * j + 1] = 0.0F;
        }
    }
    return ZUV_OK;
}

// --- The services: those of the type, but for the rows

using read_block = int (*)(_zuvfile* file, std::int64_t n, std::span<float> out);

// The caller's bytes need no alignment, so rows go through a buffer of a few thousand samples at a time.
int read_rows(_zuvfile* file, read_block read, std::int64_t samples, std::int64_t n,
              std::span<std::byte> data) {
    const std::int64_t row = 2 * samples; // floats
    if (n < 0) return ZUV_BAD_ARGUMENT;
    if (n > file->nelements - file->nextelem) return ZUV_EOF;
    if (std::ssize(data) / (4 * row) < n) return ZUV_BAD_ARGUMENT;
    const std::int64_t at_a_time = std::max<std::int64_t>(16384 / row, 1);
    std::vector<float> rows;
    for (std::int64_t done = 0; done < n;) {
        const std::int64_t some = std::min(at_a_time, n - done);
        rows.resize(static_cast<std::size_t>(some * row));
        if (int status = read(file, some, rows); status != ZUV_OK) return status;
        std::memcpy(&data[static_cast<std::size_t>(4 * row * done)], rows.data(),
                    rows.size() * sizeof(float));
        done += some;
    }
    return ZUV_OK;
}

int geniq_service(_zuvfile* file, int opcode, uarg& arg, zuvservice type, read_block read) {
    if (!file) return geniq_status(ZUV_NULL_FILE);
    uarg samples;
    if (int status = type(file, UOP_NITEMS, samples); status != ZUV_OK) return geniq_status(status);
    switch (opcode) {
    case UOP_GETELEM: return geniq_status(read_rows(file, read, samples.n, 1, arg.data));
    case UOP_GETNELEM: return geniq_status(read_rows(file, read, samples.n, arg.n, arg.data));
    case UOP_ELEMSIZE: arg.n = 8 * samples.n; return ZUV_OK;
    default: return type(file, opcode, arg);
    }
}

int geniq_iq_service(_zuvfile* file, int opcode, uarg& arg) {
    return geniq_service(file, opcode, arg, iq_service, geniq_iq_read_block);
}

int geniq_gat_service(_zuvfile* file, int opcode, uarg& arg) {
    return geniq_service(file, opcode, arg, gat_service, geniq_gat_read_block);
}

int geniq_dop_service(_zuvfile* file, int opcode, uarg& arg) {
    return geniq_service(file, opcode, arg, dop_service, geniq_dop_read_block);
}

// What a reader may ask of every file, and what it gets where the file does not say.
struct common_key {
    const char* name;
    double absent;
};
constexpr common_key common_keys[] = {
    {"t0", 0.0}, {"tbias", 0.0}, {"prf", 1.0}, {"xlam", 1.0}, {"scale", 1.0}};

int geniq_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    const zuvkwservice type = file->kw.filetype == FILETYPE_IQ    ? iq_keyword_service
                              : file->kw.filetype == FILETYPE_GAT ? gat_keyword_service
                                                                  : dop_keyword_service;
    const int status = type(file, opcode, name, arg);
    if (opcode != KWOP_GET_DBL && opcode != KWOP_EXIST) return status;
    const auto key = std::ranges::find_if(common_keys, [&](const common_key& k) { return name == k.name; });
    if (key == std::end(common_keys)) return status;
    if (opcode == KWOP_EXIST) arg.i = 1;
    if (opcode == KWOP_GET_DBL && status != ZUV_OK) arg.d = key->absent;
    return ZUV_OK;
}

zuvfile_ptr seen(zuvfile_ptr file, int status, zuvservice service) {
    geniq_status(status);
    if (!file) return {};
    uarg samples;
    file->ucall(file.get(), UOP_NITEMS, samples);
    if (8 * samples.n > INT32_MAX) { // the size of a row is an int to all callers
        geniq_status(ZUV_NO_MEMORY);
        return {};
    }
    file->ucall = service;
    file->ukwcall = geniq_keyword_service;
    return file;
}

} // namespace

int getgeniqerror() {
    return last_status;
}

zuvfile_ptr opengeniq(const std::string& name) {
    switch (zuvfiletype(name)) {
    case FILETYPE_IQ: {
        zuvfile_ptr file = openiq(name, "Old");
        return seen(std::move(file), getiqerror(), geniq_iq_service);
    }
    case FILETYPE_DOP: {
        zuvfile_ptr file = opendop(name, "Old", 0);
        return seen(std::move(file), getdoperror(), geniq_dop_service);
    }
    case FILETYPE_GAT: {
        zuvfile_ptr file = opengat(name, "Old", 0);
        return seen(std::move(file), getgaterror(), geniq_gat_service);
    }
    case -1: geniq_status(ZUV_NO_OPEN); return {};
    default: geniq_status(ZUV_BAD_TYPE); return {};
    }
}

} // namespace norva
