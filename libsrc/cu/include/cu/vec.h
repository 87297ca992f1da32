#pragma once
// Vector files (type 111): rows of nvec doubles, evenly in time: row n, from 0, lies at t0 + n / prf.
//
// The header (version 1, nvec; 8 bytes) has no room for the times, so t0 and prf are kept as items "t0" and
// "prf" of the keyword list. The keywords "nvec" (int), "t0" and "prf" (doubles) are always there and come
// first when keywords are listed; a put of a prf that is not above 0 gives -13.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int VEC_HEADSIZE = 8; // bytes on disk

struct _vecheader {
    std::int32_t version = 1;
    std::int32_t nvec = 0; // values of a row, above 0
};

struct _vecfile : _zuvfile {
    _vecheader hd;
    double t0 = 0.0;         // time of row 0, seconds
    double prf = 1.0;        // rows per second, above 0
    jbuf<std::byte> elembuf; // scratch element
};

using vecfile_ptr = std::unique_ptr<_vecfile, zuvfile_closer>;

int getvecerror(); // last status of the layer

// Mode as in openspl (cu/spl.h); a new file has nvec values a row.
vecfile_ptr openvec(const std::string& name, const char* mode, int nvec);

// Reads the next row. When `row` has room for fewer than nvec values the rest is left out; room beyond is
// zeroed.
int getvec(_vecfile* p, double& tme, std::span<double> row);
int putvec(_vecfile* p, std::span<const double> row); // writes it, from exactly nvec values, else -13

// Takes t0 and prf into the record from the keyword list: 0 and 1 where it does not say, or says a prf that
// is not above 0. Done at open and after every change of a keyword.
void vec_update(_vecfile& p);

int getvechead(_vecfile* p, _vecheader& head);
int putvechead(_vecfile* p, const _vecheader& head);

int vec_service(_zuvfile* file, int opcode, uarg& arg);
int vec_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
