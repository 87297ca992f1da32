#pragma once
// What all types of series files have in common: opening, header, times, services. A type T is a struct that
// tells what differs, as spl_type in spl.cpp:
//
//   file, head           its records: a _zuvfile with hd and elembuf, and what hd is
//   code, headsize       type code; bytes of the typed header on disk
//   stored_time          each element begins with its time; else element n lies at t0 + n / prf
//   fields               the header (series_head.h)
//   check(file, head)    1, or why the header cannot be that of this file
//   convert(file, elem)  converts an element by the routines that setmcvt installed
//   items(file)          items in an element
//   service, keywords    the type's services under their own names
//   status               the last status of the type

#include "fileio/filefind.h"
#include "fileio/ufile.h"
#include "series_head.h"
#include "zuvsys/basicstr.h"

#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace norva {

template <class T> using series_ptr = std::unique_ptr<typename T::file, zuvfile_closer>;
template <class T> constexpr std::span<const header_field<typename T::head>> series_fields = T::fields;

template <class T> int series_status(int status) {
    return T::status = status;
}

// --- Header

template <class T> int series_gethead(typename T::file* p, typename T::head& head) {
    if (!p) return series_status<T>(ZUV_NULL_FILE);
    std::array<std::byte, T::headsize> bytes{};
    if (int status = zuvfilegethead(p, bytes); status != ZUV_OK) return series_status<T>(status);
    typename T::head read = unpack_header<typename T::head>(series_fields<T>, bytes);
    if (int status = T::check(*p, read); status != ZUV_OK) return series_status<T>(status);
    p->hd = read;
    head = std::move(read);
    return series_status<T>(ZUV_OK);
}

template <class T> int series_puthead(typename T::file* p, const typename T::head& head) {
    if (!p) return series_status<T>(ZUV_NULL_FILE);
    if (p->rdonly) return series_status<T>(ZUV_READ_ONLY);
    if (T::check(*p, head) != ZUV_OK) return series_status<T>(ZUV_BAD_ARGUMENT);
    std::array<std::byte, T::headsize> bytes{};
    pack_header<typename T::head>(series_fields<T>, head, bytes);
    const int status = zuvfileputhead(p, bytes);
    if (status == ZUV_OK) p->hd = unpack_header<typename T::head>(series_fields<T>, bytes); // texts cut
    return series_status<T>(status);
}

// --- Opening

template <class T> int series_install(typename T::file& p) {
    p.ucall = T::service;
    p.ukwcall = T::keywords;
    auto hdconvert = [](_zuvfile*, std::span<std::byte> head, int) {
        convert_header<typename T::head>(series_fields<T>, head);
    };
    auto elemconvert = [](_zuvfile* file, std::span<std::byte> element, int) {
        T::convert(static_cast<const typename T::file&>(*file), element);
    };
    return zuvfileconvert(&p, hdconvert, elemconvert, p.kw.headsize, p.kw.elementsize);
}

template <class T> int series_open_old(typename T::file& p, const std::string& name, bool update) {
    if (int status = zuvfileopen_record(p, name, update); status != ZUV_OK) return status;
    if (p.kw.filetype != T::code) return ZUV_BAD_TYPE;
    if (p.kw.headsize != T::headsize) return ZUV_BAD_HEADSIZE;
    if (int status = series_install<T>(p); status != ZUV_OK) return status;
    return series_gethead<T>(&p, p.hd);
}

template <class T>
int series_create(typename T::file& p, const std::string& name, std::int64_t elemsize,
                  const typename T::head& head) {
    if (elemsize < 1 || elemsize > INT32_MAX) return ZUV_BAD_ARGUMENT;
    int status = zuvfilecreate_record(p, name, T::code, T::headsize, static_cast<int>(elemsize));
    if (status == ZUV_OK) status = series_install<T>(p);
    return status == ZUV_OK ? series_puthead<T>(&p, head) : status;
}

// By the first letter of the mode. A file that is created gets that element size and header; a size below 1
// stands for a bad argument of the caller.
template <class T>
series_ptr<T> series_open(const std::string& name, const char* mode, std::int64_t elemsize,
                          const typename T::head& head) {
    series_ptr<T> p(new typename T::file);
    int status = ZUV_BAD_ARGUMENT;
    switch (mode ? toupperx(static_cast<unsigned char>(*mode)) : 0) {
    case 'O':
    case 'R': status = series_open_old<T>(*p, name, false); break;
    case 'U': status = series_open_old<T>(*p, name, true); break;
    case 'N':
    case 'C': status = series_create<T>(*p, name, elemsize, head); break;
    default: break;
    }
    return series_status<T>(status) == ZUV_OK ? std::move(p) : nullptr;
}

// --- Elements

// The scratch element, taken at first use: the size that a file declares is only trusted once an element is
// there.
template <class T> std::span<std::byte> series_scratch(typename T::file& p) {
    if (!p.elembuf) p.elembuf.reset(static_cast<std::size_t>(p.elemsize));
    return p.elembuf.span();
}

// The next element into the scratch element.
template <class T> int series_read(typename T::file* p) {
    if (!p) return series_status<T>(ZUV_NULL_FILE);
    if (p->nextelem >= p->nelements) return series_status<T>(ZUV_EOF);
    return series_status<T>(zuvfilereadblock(p, series_scratch<T>(*p), 1));
}

// The scratch element, blank; empty with a status when the file cannot be written.
template <class T> std::span<std::byte> series_blank(typename T::file* p) {
    series_status<T>(!p ? ZUV_NULL_FILE : p->rdonly ? ZUV_READ_ONLY : ZUV_OK);
    if (T::status != ZUV_OK) return {};
    std::span<std::byte> element = series_scratch<T>(*p);
    std::ranges::fill(element, std::byte{0});
    return element;
}

template <class V> V get_at(std::span<const std::byte> bytes, std::size_t offset) {
    V value;
    std::memcpy(&value, &bytes[offset], sizeof value);
    return value;
}

template <class V> void put_at(std::span<std::byte> bytes, std::size_t offset, V value) {
    std::memcpy(&bytes[offset], &value, sizeof value);
}

// --- Times

// What holds t0 and prf of an even series: its header, or the open file itself.
template <class F> const auto& series_clock(const F& p) {
    if constexpr (requires { p.prf; })
        return p;
    else
        return p.hd;
}

// Time of an element, without moving the next one.
template <class T> int series_time(_zuvfile* file, std::int64_t element, double& t) {
    if (!file) return ZUV_NULL_FILE;
    if constexpr (T::stored_time) {
        if (element < 0 || element >= file->nelements) return ZUV_EOF;
        std::array<std::byte, sizeof(double)> bytes;
        if (int status = zuvfilereadraw(file, element, 0, bytes); status != ZUV_OK) return status;
        if (setmcvt(file->machine, MACHINE_THIS) != 1) return ZUV_NO_CONVERSION;
        mcvt_f8(bytes.data());
        t = get_at<double>(bytes, 0);
    } else {
        const auto& clock = series_clock(static_cast<typename T::file&>(*file));
        t = static_cast<double>(element) / clock.prf + clock.t0;
    }
    return ZUV_OK;
}

// To the first element at or past t, held to 0..nelements. An even series takes a time that is an element's
// own up to rounding as that element's.
template <class T> int series_move(typename T::file& p, double t) {
    std::int64_t element = 0;
    if constexpr (T::stored_time) {
        if (p.nelements > 0) {
            const int status = filefind(&p, t, element, 0, p.nelements - 1, series_time<T>);
            if (status != ZUV_OK) return status;
        }
    } else {
        const auto& clock = series_clock(p);
        const double x = (t - clock.t0) * clock.prf;
        double nearest = std::round(x);
        if (std::fabs(x - nearest) > 1e-9 * std::max(1.0, std::fabs(x))) nearest = std::ceil(x);
        if (nearest > 0.0)
            element = static_cast<std::int64_t>(std::min(nearest, static_cast<double>(p.nelements)));
    }
    return zuvfileseek(&p, element);
}

// --- Rows of an even series whose elements are values of one kind

// The next row. A shorter `row` gets what it has room for; room beyond the row is zeroed.
template <class T, class V> int series_getrow(typename T::file* p, double& tme, std::span<V> row) {
    const std::int64_t n = p ? p->nextelem : 0;
    if (int status = series_read<T>(p); status != ZUV_OK) return status;
    const std::span<const std::byte> element = p->elembuf.span();
    const std::size_t bytes = std::min(row.size_bytes(), element.size());
    std::memcpy(row.data(), element.data(), bytes);
    std::ranges::fill(row.subspan(bytes / sizeof(V)), V{0});
    return series_status<T>(series_time<T>(p, n, tme));
}

template <class T, class V> int series_putrow(typename T::file* p, std::span<const V> row) {
    if (!p) return series_status<T>(ZUV_NULL_FILE);
    if (std::ssize(std::as_bytes(row)) != p->elemsize) return series_status<T>(ZUV_BAD_ARGUMENT);
    return series_status<T>(zuvfilewriteblock(p, std::as_bytes(row), 1));
}

// --- Services

template <class T> int series_service(_zuvfile* file, int opcode, uarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<typename T::file&>(*file);
    auto answer = [&](std::int64_t n) {
        arg.n = n;
        return ZUV_OK;
    };
    auto head_bytes = [&] { return arg.data.first(static_cast<std::size_t>(T::headsize)); };
    const bool head_fits = arg.data.size() >= static_cast<std::size_t>(T::headsize);
    switch (opcode) {
    case UOP_FIRSTTIME: return series_time<T>(&p, 0, arg.t);
    case UOP_LASTTIME: return series_time<T>(&p, std::max<std::int64_t>(p.nelements - 1, 0), arg.t);
    case UOP_NELEM: return answer(p.nelements);
    case UOP_CANWRITE: return answer(!p.rdonly);
    case UOP_NEXTTIME: return series_time<T>(&p, p.nextelem, arg.t);
    case UOP_NEXTELEM: return answer(p.nextelem);
    case UOP_TIMEMOVE: return series_move<T>(p, arg.t);
    case UOP_ELEMMOVE: return zuvfileseek(&p, arg.n);
    case UOP_GETELEM: return zuvfilereadblock(&p, arg.data, 1);
    case UOP_GETNELEM: return zuvfilereadblock(&p, arg.data, arg.n);
    case UOP_PUTELEM: return zuvfilewriteblock(&p, arg.data, 1);
    case UOP_GETHEAD:
        if (!head_fits) return ZUV_BAD_ARGUMENT;
        pack_header<typename T::head>(series_fields<T>, p.hd, head_bytes());
        return ZUV_OK;
    case UOP_PUTHEAD:
        if (!head_fits) return ZUV_BAD_ARGUMENT;
        return series_puthead<T>(&p, unpack_header<typename T::head>(series_fields<T>, head_bytes()));
    case UOP_ELEMSIZE: return answer(p.elemsize);
    case UOP_HEADSIZE: return answer(p.hdsize);
    case UOP_NITEMS: return answer(T::items(p));
    case UOP_TYPE: arg.s = p.fname; return answer(T::code);
    case UOP_CLOSE: return ZUV_OK; // nothing of its own
    default: return -1;
    }
}

template <class T> int series_keyword_service(_zuvfile* file, int opcode, std::string& name, kwarg& arg) {
    if (!file) return ZUV_NULL_FILE;
    auto& p = static_cast<typename T::file&>(*file);
    auto put = [&](const typename T::head& head) { return series_puthead<T>(&p, head); };
    return header_keywords<typename T::head>(file, series_fields<T>, p.hd, put, opcode, name, arg);
}

} // namespace norva
