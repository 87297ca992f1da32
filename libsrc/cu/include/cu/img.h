#pragma once
// Image files (type 110): rows of a complex image, nsamp pairs of floats each, evenly in time.
//
// Row n, from 0, lies at t0 + n / prf, where t0 and prf are items "t0" and "prf" of the keyword list; 0 and 1
// where the file does not say, or says a prf that is not above 0. The header (version 1, nsamp; 8 bytes)
// serves the keyword "nsamp" (int), spelled exactly so.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int IMG_HEADSIZE = 8; // bytes on disk

struct _imgheader {
    std::int32_t version = 1;
    std::int32_t nsamp = 0; // samples of a row, above 0
};

struct _imgfile : _zuvfile {
    _imgheader hd;
    double t0 = 0.0, prf = 1.0; // by the keyword list
    jbuf<std::byte> elembuf;    // scratch element
};

using imgfile_ptr = std::unique_ptr<_imgfile, zuvfile_closer>;

int getimgerror(); // last status of the layer

// Mode as in openspl (cu/spl.h); a new file has nsamp samples a row.
imgfile_ptr openimg(const std::string& name, const char* mode, int nsamp);

// Reads the next row, real and imaginary parts in turn. When `row` has room for fewer than 2 nsamp floats the
// rest is left out; room beyond is zeroed.
int getimg(_imgfile* p, double& tme, std::span<float> row);
int putimg(_imgfile* p, std::span<const float> row); // writes it, from exactly 2 nsamp floats, else -13

int getimghead(_imgfile* p, _imgheader& head);
int putimghead(_imgfile* p, const _imgheader& head);

int img_service(_zuvfile* file, int opcode, uarg& arg);
int img_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
