#pragma once
// The typed header of a series file as a table of its fields, from which its form on disk, its conversion
// between machines and its keywords follow.
//
//   constexpr header_field<_splheader> fields[] = {
//       {.offset = 104, .whole = &_splheader::version},
//       {.offset = 108, .whole = &_splheader::ncoe, .keyword = "ncoe"}, ...
//
// A text is padded with blanks on file and ended by a NUL in its last byte; it comes back without the
// padding, and is cut where it is too long.

#include "fileio/mcvt.h"
#include "fileio/zuvfile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace norva {

template <class H> struct header_field {
    std::size_t offset = 0;           // bytes, in the typed header
    std::int32_t H::*whole = nullptr; // one of these three
    double H::*real = nullptr;
    std::string H::*text = nullptr;
    std::size_t size = 0;          // of a text, bytes on file
    const char* keyword = nullptr; // name under which it is served, null for none
};

// Known when compiled: without it gcc believes that the texts of a header without any are used.
template <class H> constexpr bool head_has_text = requires(H head) {
    head.text;
};

// --- To and from the bytes on file, in this machine's form

void head_put_text(std::span<std::byte> field, const std::string& text);
std::string head_get_text(std::span<const std::byte> field);

template <class H>
void pack_header(std::span<const header_field<H>> fields, const H& head, std::span<std::byte> bytes) {
    std::ranges::fill(bytes, std::byte{0});
    for (const auto& f : fields) {
        if (f.whole) std::memcpy(&bytes[f.offset], &(head.*f.whole), sizeof(std::int32_t));
        if (f.real) std::memcpy(&bytes[f.offset], &(head.*f.real), sizeof(double));
        if (f.text) head_put_text(bytes.subspan(f.offset, f.size), head.*f.text);
    }
}

template <class H>
H unpack_header(std::span<const header_field<H>> fields, std::span<const std::byte> bytes) {
    H head;
    for (const auto& f : fields) {
        if (f.whole) std::memcpy(&(head.*f.whole), &bytes[f.offset], sizeof(std::int32_t));
        if (f.real) std::memcpy(&(head.*f.real), &bytes[f.offset], sizeof(double));
        if (head_has_text<H> && f.text) head.*f.text = head_get_text(bytes.subspan(f.offset, f.size));
    }
    return head;
}

// By the routines that setmcvt installed; texts need nothing.
template <class H> void convert_header(std::span<const header_field<H>> fields, std::span<std::byte> bytes) {
    for (const auto& f : fields) {
        if (f.whole) mcvt_i4(&bytes[f.offset]);
        if (f.real) mcvt_f8(&bytes[f.offset]);
    }
}

// --- Keywords

template <class H> int put_field(const header_field<H>& f, H& head, int opcode, const kwarg& arg) {
    if (opcode == KWOP_PUT_INT && f.whole)
        head.*f.whole = arg.i;
    else if (opcode == KWOP_PUT_DBL && f.real)
        head.*f.real = arg.d;
    else if (opcode == KWOP_PUT_STR && head_has_text<H> && f.text)
        head.*f.text = arg.s;
    else
        return -1; // of another type, or a delete
    return ZUV_OK;
}

template <class H> int get_field(const header_field<H>& f, const H& head, int opcode, kwarg& arg) {
    arg = {};
    if (opcode == KWOP_EXIST)
        arg.i = 1;
    else if (opcode == KWOP_GET_INT && f.whole)
        arg.i = head.*f.whole;
    else if (opcode == KWOP_GET_DBL && f.real)
        arg.d = head.*f.real;
    else if (opcode == KWOP_GET_STR && head_has_text<H> && f.text)
        arg.s = head.*f.text;
    else
        return -1;
    return ZUV_OK;
}

// The keyword service of a type with that header: names of the table are served from it, matched by exact
// spelling, and are counted ahead of the list; `put` writes a changed header and returns a status.
template <class H, class Put>
int header_keywords(_zuvfile* file, std::span<const header_field<H>> fields, const H& hd, Put put, int opcode,
                    std::string& name, kwarg& arg) {
    static int savedindx = 0;
    const auto served = [](const header_field<H>& f) { return f.keyword != nullptr; };
    const auto n = static_cast<int>(std::ranges::count_if(fields, served));
    if (opcode == KWOP_SELECT) {
        savedindx = arg.i;
        return ZUV_OK;
    }
    if (opcode == KWOP_COUNT) {
        const int status = zuvkwdef(file, opcode, name, arg);
        arg.i += n;
        return status;
    }
    if (opcode == KWOP_ITEM) {
        if (savedindx < 0) return -1;
        if (savedindx >= n) {
            kwarg select{.i = savedindx - n};
            zuvkwdef(file, KWOP_SELECT, name, select);
            return zuvkwdef(file, opcode, name, arg);
        }
        int left = savedindx;
        const auto at = std::ranges::find_if(fields, [&](const auto& f) { return served(f) && left-- == 0; });
        name = at->keyword;
        arg.i = at->whole ? KW_INT : at->real ? KW_DOUBLE : KW_STRING;
        return ZUV_OK;
    }
    const auto at =
        std::ranges::find_if(fields, [&](const auto& f) { return served(f) && name == f.keyword; });
    if (at == fields.end()) return zuvkwdef(file, opcode, name, arg);
    if (opcode == KWOP_PUT_INT || opcode == KWOP_PUT_DBL || opcode == KWOP_PUT_STR || opcode == KWOP_DELETE) {
        H head = hd;
        const int status = put_field(*at, head, opcode, arg);
        return status == ZUV_OK ? put(head) : status;
    }
    return get_field(*at, hd, opcode, arg);
}

} // namespace norva
