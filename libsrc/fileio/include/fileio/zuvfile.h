#pragma once
// The container under every binary data file: a head of 20 bytes, a reserved area with a keyword list, a
// typed header, and a run of elements of one size. It counts in elements, knows nothing of what they hold,
// and keeps a file in the representation of the machine that wrote it (mcvt.h).
//
//   offset 0   machine, version (1), filetype, space (0)       one byte each
//   4, 8, 12   reservesize, headsize, elementsize              32-bit integers, bytes
//   16         nelements                                       32-bit integer
//   20         reserved area: version byte 1, keyword list     reservesize bytes
//   then       typed header                                    headsize bytes
//   then       elements                                        nelements of elementsize bytes
//
// Use: an open gives an owner, all else takes the plain pointer from get(). The owner closes the file when it
// dies; zuvfileclose(std::move(owner)) does so where the status of the last writes matters.
//
//   zuvfile_ptr file = zuvfileopen(name, type, headsize, elementsize);
//   if (!file) return zuvfileerror();
//
// Nothing here prints. Files are untrusted: sizes and counts are checked against the file's real length
// before they are used, whatever stands in the head. Head and reserved area are written at close, in one
// write, after all elements: until then the file on disk is the old one plus bytes that its head does not
// count.

#include "fileio/kwlist.h"
#include "zuvsys/jbuf.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// Status codes of this layer, and of the typed layers above it (-11 to -16).
constexpr int ZUV_OK = 1;
constexpr int ZUV_EOF = -2;            // block beyond the last element, or a read of 0 bytes
constexpr int ZUV_NO_MEMORY = -3;      // out of memory
constexpr int ZUV_NO_OPEN = -4;        // the system's open failed, or the name is no regular file
constexpr int ZUV_BAD_VERSION = -5;    // version is not 1
constexpr int ZUV_TOO_SHORT = -6;      // shorter than its head declares; a head whose sizes cannot be true
constexpr int ZUV_WRITE_FAILED = -7;   // a write failed or was short
constexpr int ZUV_SHORT_READ = -8;     // a read was short
constexpr int ZUV_SEEK_FAILED = -9;    // a seek failed, or the element is outside 0..nelements
constexpr int ZUV_NULL_FILE = -10;     // null file
constexpr int ZUV_BAD_HEADSIZE = -11;  // typed layers: wrong header size
constexpr int ZUV_BAD_TYPE = -12;      // nelements negative; typed layers: wrong type or element size
constexpr int ZUV_BAD_ARGUMENT = -13;  // negative count, memory sizes below disk sizes, buffer too small
constexpr int ZUV_NO_CONVERSION = -14; // unknown machine, or a needed converter is missing
constexpr int ZUV_READ_ONLY = -15;     // write attempt on a read-only file
constexpr int ZUV_BAD_HEADER = -16;    // iq and rea: prf or xlam is not above 0

// File type codes.
constexpr int FILETYPE_IQ = 101;
constexpr int FILETYPE_PKS = 102;
constexpr int FILETYPE_REA = 103;
constexpr int FILETYPE_DOP = 105;
constexpr int FILETYPE_SPL = 106;
constexpr int FILETYPE_GAT = 109;
constexpr int FILETYPE_IMG = 110;
constexpr int FILETYPE_VEC = 111;

constexpr int ressize = 1024; // bytes of a new file's reserved area; it never grows

// The 20 bytes of the head in this machine's order.
struct _keywords {
    unsigned char machine = 0, version = 0, filetype = 0, space = 0;
    std::int32_t reservesize = 0, headsize = 0, elementsize = 0, nelements = 0;
};

struct _zuvfile;

// Header or element converter: `object` is the header or one element, of memory size. flag 1: from disk form
// to memory, 0: from memory to disk form. setmcvt has been called for the right direction.
using zuvconverter = void (*)(_zuvfile* file, std::span<std::byte> object, int flag);

// What a keyword call hands over or brings back (zuvkwdef tells which member an opcode uses).
struct kwarg {
    int i = 0;
    double d = 0.0;
    std::string s = {};
};
using zuvkwservice = int (*)(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

// What an element call hands over or brings back (ufile.h tells which member an opcode uses).
struct uarg {
    double t = 0.0;
    std::int64_t n = 0;
    std::span<std::byte> data = {};
    std::string s = {};
};
using zuvservice = int (*)(_zuvfile* file, int opcode, uarg& arg);

// An open file. Typed files (gat.h) derive from it and add their header.
struct _zuvfile {
    int handle = -1;                // operating system file handle
    _keywords kw;                   // the head
    std::int64_t byte0 = 0;         // file position of element 0
    std::int64_t nextelem = 0;      // element the next read or write acts on
    std::int64_t nelements = 0;     // current number of elements
    std::int64_t curpos = -1;       // element at which the system's file position stands, -1 when unknown
    int hdsize = 0;                 // size of the header in memory
    int elemsize = 0;               // size of an element in memory
    int dirty = 0;                  // something was written
    int convert = 0;                // data need converting or spreading
    int machine = 0;                // the file's machine code
    int lastoper = 0;               // 0 none or seek, 1 write, 2 read
    int rdonly = 0;                 // opened for reading only
    zuvconverter hdcvt = nullptr;   // header converter
    zuvconverter elemcvt = nullptr; // element converter
    zuvservice ucall = nullptr;     // the type's service routine (ufile.h)
    zuvkwservice ukwcall = nullptr; // the type's keyword service routine, zuvkwdef unless the type has one
    int rsize = 0;                  // bytes in the reserved area
    int rchng = 0;                  // the reserved area changed
    jbuf<char> rspace;              // the reserved area in memory
    std::string fname;              // file name, cut to 254 characters

    _zuvfile() = default;
    _zuvfile(const _zuvfile&) = delete;
    _zuvfile& operator=(const _zuvfile&) = delete;
    virtual ~_zuvfile() = default;
};

struct zuvfile_closer {
    void operator()(_zuvfile* file) const; // zuvfileclose
};
using zuvfile_ptr = std::unique_ptr<_zuvfile, zuvfile_closer>;

// Status of the last operation of this layer, opens included.
int zuvfileerror();

// Open for reading, or for reading and writing; null on failure. Out: type code, size of the typed header on
// disk, size of an element on disk.
zuvfile_ptr zuvfileopen(const std::string& name, int& filetype, int& headsize, int& elementsize);
zuvfile_ptr zuvfileupdate(const std::string& name, int& filetype, int& headsize, int& elementsize);

// Makes a file of this machine, truncating any old one, with an empty keyword list, a zeroed header, no
// elements. Permissions of a new file: read and write for the owner.
zuvfile_ptr zuvfilecreate(const std::string& name, int filetype, int headsize, int elementsize);

// The same three into a record made by the caller, which is how a typed layer gets its own record (a struct
// derived from _zuvfile) opened. 1 or the status; after a failure the record holds no open file.
int zuvfileopen_record(_zuvfile& file, const std::string& name, bool update);
int zuvfilecreate_record(_zuvfile& file, const std::string& name, int filetype, int headsize,
                         int elementsize);

int zuvfilemode(_zuvfile* file, int& rdonly);

// Installs converters and the memory sizes of header and element, which may exceed the sizes on disk: a file
// from an older revision of its format is read into the current structure, with zeros behind what it holds.
int zuvfileconvert(_zuvfile* file, zuvconverter hdcvt, zuvconverter elemcvt, int hdsize, int elemsize);

// Sets the next element, 0 <= n <= nelements.
int zuvfileseek(_zuvfile* file, std::int64_t n);

// Reads or writes `count` elements from `nextelem` on. The buffer holds at least count elements of memory
// size.
int zuvfilereadblock(_zuvfile* file, std::span<std::byte> buffer, std::int64_t count);
int zuvfilewriteblock(_zuvfile* file, std::span<const std::byte> buffer, std::int64_t count);
int zuvfilereadelement(_zuvfile* file, std::span<std::byte> buffer, std::int64_t n);
int zuvfilewriteelement(_zuvfile* file, std::span<const std::byte> buffer, std::int64_t n);

// Disk bytes first .. first + bytes.size() - 1, counted from the start of element n, as they stand in the
// file and without moving the next element: for readers that take parts of many elements. They must lie
// within the elements.
int zuvfilereadraw(_zuvfile* file, std::int64_t n, std::int64_t first, std::span<std::byte> bytes);
// The same part of every element from n on: `width` bytes from byte `first` of each, as many as fill `bytes`.
int zuvfilereadparts(_zuvfile* file, std::int64_t n, std::int64_t first, std::int64_t width,
                     std::span<std::byte> bytes);

// The typed header; the buffer holds at least hdsize bytes.
int zuvfilegethead(_zuvfile* file, std::span<std::byte> header);
int zuvfileputhead(_zuvfile* file, std::span<const std::byte> header);

int zuvfilemaxelement(_zuvfile* file, std::int64_t& value); // nelements - 1
int zuvfilenextelement(_zuvfile* file, std::int64_t& value);

// Writes what changed and frees everything, also on failure. The status is that of the first failure.
int zuvfileclose(zuvfile_ptr file);

// Type code of a file, -1 when it cannot be opened or has no whole head.
int zuvfiletype(const std::string& name);
// Machine code of a file: 1, or 0 when it cannot be opened or has no whole head.
int zuvfilemachine(const std::string& name, int& machine);

// The keyword list in the reserved area. 1 or -1: no file, no usable area, no such keyword of that type, no
// room, or a write to a read-only file. zuvfile_res_get_n and zuvfile_res_exist give 1 with a 0 result when
// the area is unusable.
int zuvfile_res_new(_zuvfile* file); // an empty list
int zuvfile_res_cvt(_zuvfile* file); // converts all numbers by the routines that setmcvt installed
int zuvfile_res_put_int(_zuvfile* file, std::string_view name, int value);
int zuvfile_res_put_dbl(_zuvfile* file, std::string_view name, double value);
int zuvfile_res_put_str(_zuvfile* file, std::string_view name, std::string_view value);
int zuvfile_res_delete(_zuvfile* file, std::string_view name);
int zuvfile_res_get_int(_zuvfile* file, std::string_view name, int& value);
int zuvfile_res_get_dbl(_zuvfile* file, std::string_view name, double& value);
int zuvfile_res_get_str(_zuvfile* file, std::string_view name, std::string& value);
int zuvfile_res_get_n(_zuvfile* file, int& n);
int zuvfile_res_get_indx(_zuvfile* file, int indx, std::string& name, int& type);
int zuvfile_res_exist(_zuvfile* file, std::string_view name, int& yes);

// Opcodes of the keyword service.
constexpr int KWOP_PUT_DBL = 1; // arg.d
constexpr int KWOP_PUT_INT = 2; // arg.i
constexpr int KWOP_PUT_STR = 3; // arg.s
constexpr int KWOP_DELETE = 4;
constexpr int KWOP_GET_DBL = 5; // arg.d, 0 when absent
constexpr int KWOP_GET_INT = 6; // arg.i, 0 when absent
constexpr int KWOP_GET_STR = 7; // arg.s, empty when absent
constexpr int KWOP_COUNT = 8;   // arg.i
constexpr int KWOP_EXIST = 9;   // arg.i
constexpr int KWOP_ITEM = 10;   // name and arg.i, the type, of the item selected by KWOP_SELECT
constexpr int KWOP_SELECT = 11; // arg.i, index from 0

// The default keyword service: the list of the reserved area. 1; -10 for a null file; -1 for another opcode
// and for what the zuvfile_res_ routine refused.
int zuvkwdef(_zuvfile* file, int opcode, std::string& name, kwarg& arg);

} // namespace norva
