#pragma once
// The keyword list of a data file: items of name and value packed one after another into a block of fixed
// size, ended by an item of size 0. Works on the bytes alone; zuvfile.h puts it into files.
//
//   byte 0    size of the item in bytes, byte 1 its type
//   int       value (4 bytes), name with its NUL                           name length + 7
//   double    value (8 bytes), name with its NUL                           name length + 11
//   string    length with NUL (1 byte), string and NUL, name and NUL       string length + name length + 5
//
// Size and length bytes are read as signed: a walk that meets an item of more than 127 bytes ends there. A
// string keyword is therefore only dependable while its item stays within 127 bytes; a longer one is written,
// is not found again, and the next item written takes its place.
//
// Names compare without regard to the case of ASCII letters. Items are counted from 0. A changed item moves
// to the end, so the order of the list is the order of last change. Numbers stand in this machine's form,
// except between reading a file of another machine and kwl_convert. Every routine takes any bytes at all
// without reading or writing outside the block.

#include <span>
#include <string>
#include <string_view>

namespace norva {

constexpr int KW_INT = 1;
constexpr int KW_DOUBLE = 2;
constexpr int KW_STRING = 3;
constexpr int KW_MAX_NAME = 63;    // characters of a name, written or read
constexpr int KW_MAX_STRING = 179; // characters of a string, written

struct kwl_item {
    std::string name;
    int type = 0; // KW_INT, KW_DOUBLE or KW_STRING
    int ival = 0;
    double dval = 0.0;
    std::string sval;
};

// An empty list: all bytes 0.
void kwl_init(std::span<char> buf);

// Item `indx`. 1 with the item; -1 when the list ends before it; 0 when the item there is malformed: its size
// is 1 or it runs past the last byte but one of the block, its type is none of the three, or its parts do not
// fit its size. `item` is cleared first.
int kwl_read(std::span<const char> buf, int indx, kwl_item& item);

// Byte position of item `indx` in the block, -1 when kwl_read does not give 1 for it.
int kwl_tell(std::span<const char> buf, int indx);

// Items up to the end or the first malformed one. A search by name goes on behind a malformed item.
int kwl_nitems(std::span<const char> buf);
int kwl_find(std::span<const char> buf, std::string_view name); // index of the first item of that name, or -1

// Value of the first item of that name and of the asked type: 1, or 0 with a zero or empty result. An item of
// that name but of another type does not end the search.
int kwl_get_int(std::span<const char> buf, std::string_view name, int& value);
int kwl_get_dbl(std::span<const char> buf, std::string_view name, double& value);
int kwl_get_str(std::span<const char> buf, std::string_view name, std::string& value);

// Replaces the item of that name, whatever its type, or adds one. 1, or 0 with the list unchanged when the
// name (for strings, the name or the value) is empty or the block has no room.
int kwl_put_int(std::span<char> buf, std::string_view name, int value);
int kwl_put_dbl(std::span<char> buf, std::string_view name, double value);
int kwl_put_str(std::span<char> buf, std::string_view name, std::string_view value);

// Removes item `indx`; what follows moves down and the bytes set free are zeroed. 1, or 0 when there is none.
int kwl_delete(std::span<char> buf, int indx);

// Applies a routine to the value of every int item and another to that of every double item, in place.
void kwl_convert(std::span<char> buf, void (*int_routine)(void*), void (*double_routine)(void*));

} // namespace norva
