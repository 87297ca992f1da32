#pragma once
// Reading one item of a data file. What a kind of file has and how an element's values are found is told by a
// table row; the pass over the elements in the time window is the same for all.

#include "file_args.h"
#include "fileio/ufile.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// Where the values of the asked item come from: `width` values for each element, read one element after the
// other. No width: the kind does not have the item, or `refused` tells why it cannot be read.
inline constexpr std::string_view SP_BAD_TYPE = "Bad data type for file type.";

struct sp_item_source {
    std::size_t width = 0;
    std::function<bool(std::span<double> values)> next = {}; // false when a read fails
    std::string_view refused = SP_BAD_TYPE;
};

struct sp_file_kind {
    zuvfile_ptr (*open)(const std::string& name);
    // A header word's value; of type SP_NULL when the kind does not have it.
    sp_value (*header)(_zuvfile* file, int datatype);
    sp_item_source (*items)(_zuvfile* file, const fileparams& parms);
    const char* read_failed;
};

extern const sp_file_kind sp_iq_kind, sp_gat_kind, sp_img_kind; // read_complex.cpp
extern const sp_file_kind sp_rea_kind;                          // read_rea.cpp
extern const sp_file_kind sp_pks_kind;                          // read_pks.cpp

// The asked item: an array, a number or a text, or an error.
sp_value sp_read_file(const sp_file_kind& kind, const fileparams& parms);

// The readers, one for each kind of file.
sp_value read_iq(const fileparams& parms);  // read_complex.cpp
sp_value read_gat(const fileparams& parms); // read_complex.cpp
sp_value read_img(const fileparams& parms); // read_complex.cpp
sp_value read_rea(const fileparams& parms); // read_rea.cpp
sp_value read_pks(const fileparams& parms); // read_pks.cpp
sp_value read_spl(const fileparams& parms); // read_spl.cpp

// Why data from `first` to `last` cannot have anything in the time window; empty when they may.
std::string sp_outside(double first, double last, const fileparams& parms);

// A source of no width, refused with a message.
sp_item_source sp_no_items(std::string_view refused);

// A keyword of the file as a value: a number or a text; of type SP_NULL when the file does not have it.
sp_value sp_keyword_value(_zuvfile* file, const std::string& name);

// What any kind of file may answer, of type SP_NULL when this one does not: text, first and last time, number
// of elements, and the keyword that has the name of the asked data type.
sp_value sp_common_word(_zuvfile* file, int datatype);

} // namespace norva
