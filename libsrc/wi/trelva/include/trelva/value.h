#pragma once
// One value of the script language: nothing, an array, a word, a string, a number, or an error. All numbers
// are doubles. Values are copied freely: the elements of an array are shared until one copy is written.

#include "zuvsys/jbuf.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// Value types.
constexpr int SP_NULL = 0;   // no value: what an unknown name and an empty formula give
constexpr int SP_ARRAY = 1;  // npts() doubles
constexpr int SP_WORD = 2;   // enumeration word, as red or AP
constexpr int SP_STRING = 3; // text
constexpr int SP_SCALER = 4; // one double
constexpr int SP_ERROR = 5;  // a message

constexpr std::size_t SP_NAME_LENGTH = 32; // characters of a name or word that count

// Limits on what a formula may make, so that a script ends with a message instead of the machine's memory.
constexpr std::size_t SP_MAX_ELEMENTS = std::size_t{1} << 25; // elements of one array: 256 MB
constexpr std::size_t SP_MAX_LIVE = std::size_t{1} << 28;     // elements of all arrays together: 2 GB
constexpr std::size_t SP_MAX_STRING = std::size_t{1} << 16;   // characters of a string made by joining

// The elements of an array. Copies share them; own() gives a copy of its own to write on.
class sp_array {
public:
    sp_array() = default;

    std::size_t size() const { return elems_ ? elems_->buf.size() : 0; }
    bool empty() const { return size() == 0; }
    const double* data() const { return elems_ ? elems_->buf.data() : nullptr; }
    const double* begin() const { return data(); }
    const double* end() const { return data() + size(); }
    const double& operator[](std::size_t i) const { return elems_->buf[i]; }
    std::span<const double> span() const { return {data(), size()}; }

    // The elements for writing; parts from the other copies first.
    std::span<double> own();
    // True when no other copy holds the elements, so that own() costs nothing.
    bool alone() const { return elems_.use_count() <= 1; }

    static std::size_t live(); // elements of all arrays together

    friend sp_array sp_mkary(std::size_t npts);

private:
    struct block {
        explicit block(std::size_t n);
        ~block();
        block(const block&) = delete;
        block& operator=(const block&) = delete;
        jbuf<double> buf;
    };
    std::shared_ptr<block> elems_;
};

struct sp_value {
    int type = SP_NULL;
    std::string ename;  // SP_WORD: the word, at most SP_NAME_LENGTH characters
    sp_array ary;       // SP_ARRAY: the elements
    std::string string; // SP_STRING, SP_ERROR: the text
    double scaler = 0;  // SP_SCALER: the number

    std::size_t npts() const { return ary.size(); }
};

// npts zeros; a copy of elements. No limit is applied here: the program's own data may be of any size.
sp_array sp_mkary(std::size_t npts);
sp_array sp_cpary(std::span<const double> ary);

// Values of each type. A word is cut at SP_NAME_LENGTH characters.
sp_value sp_get_blank_value();
sp_value sp_mkarray(sp_array ary);
sp_value sp_mkword(std::string_view word);
sp_value sp_mkstring(std::string text);
sp_value sp_mkscaler(double number);
sp_value sp_mkerror(std::string message);

// An array value of npts zeros for a formula's result, or the error "Array is too large." beyond the limits.
sp_value sp_new_array(std::size_t npts);

// Text of a value for people: 7   [1 2 3]   red   "AB"   NULL   error: Divide By Zero Error.
// Numbers have ten digits.
std::string sp_show(const sp_value& val);

} // namespace norva
