#pragma once
// Spline files (type 106): the breakpoints of a piecewise polynomial, one an element, each with its time.
//
//   header, 192 bytes   text (104), version 1, ncoe, type (24), xunits (24), yunits (24), ider, spare
//   element             time (double), ncont, flg2 (int), at byte 16 ncoe doubles; ncoe * 128 bytes in all,
//                       the rest spare and written as 0
//
// The header's values are served as keywords by the names "text", "ncoe" (int), "type", "xunits", "yunits",
// "ider" (int), spelled exactly so. Texts are padded with blanks on file and come back without them; one that
// is too long is cut. A put of "ncoe" that does not fit the element size gives -13.

#include "fileio/ufile.h"
#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace norva {

constexpr int SPL_HEADSIZE = 192; // bytes on disk
constexpr int SPL_ELEMSIZE = 128; // bytes of an element for each coefficient
constexpr int SPL_TEXT_LEN = 103; // most characters of the header's text
constexpr int SPL_UNITS_LEN = 23; // and of type, xunits, yunits

struct _splheader {
    std::string text;         // comment
    std::int32_t version = 1; // 1
    std::int32_t ncoe = 0;    // coefficients of an element, above 0
    std::string type;         // what the spline is
    std::string xunits, yunits;
    std::int32_t ider = 0; // derivative order
    std::int32_t space = 0;
};

struct _splfile : _zuvfile {
    _splheader hd;           // the header in memory
    jbuf<std::byte> elembuf; // scratch element
};

using splfile_ptr = std::unique_ptr<_splfile, zuvfile_closer>;

int getsplerror(); // last status of the spline file layer

// Mode, by its first letter in either case: "Old" or "Read" open for reading, "Update" for reading and
// writing, "New" or "Create" create, with ncoe coefficients an element (used then only). Null on failure;
// getsplerror tells why: a status of the container, -5 a version other than 1, -11 another header size, -12
// another type or an element size that is not ncoe * 128, -13 a bad mode or ncoe.
splfile_ptr openspl(const std::string& name, const char* mode, int ncoe);

// Reads the next element. When `coe` has room for fewer than ncoe coefficients the rest is left out; room
// beyond them is zeroed.
int getspl(_splfile* p, double& tme, int& ncont, int& flg2, std::span<double> coe);
// Writes the next element from exactly ncoe coefficients, else -13.
int putspl(_splfile* p, double tme, int ncont, int flg2, std::span<const double> coe);

// Time of an element, without moving the next one; feeds filefind.
int getspltme(_zuvfile* file, std::int64_t element, double& tme);

// The keys of a spline at once: what it is, its units, its derivative order.
int getsplkeys(_splfile* p, std::string& type, std::string& xunits, std::string& yunits, int& ider);
int putsplkeys(_splfile* p, const std::string& type, const std::string& xunits, const std::string& yunits,
               int ider);

// Header alone: read from or written to the file, with p->hd kept in step.
int getsplhead(_splfile* p, _splheader& head);
int putsplhead(_splfile* p, const _splheader& head);

// The type's services (ufile.h, zuvfile.h). UOP_GETHEAD and UOP_PUTHEAD carry the 192 bytes of the header in
// this machine's form.
int spl_service(_zuvfile* file, int opcode, uarg& arg);
int spl_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
