#pragma once
// One calling surface over all typed files: a caller that holds an open file needs no knowledge of its type.
// Each routine calls the service that the type registered. Results come as values; u_error() tells whether
// they hold: 1 success, -10 null file, -1 a file without that service, otherwise the type's status.
//
// Times are seconds, elements are counted from 0.

#include "fileio/zuvfile.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// Opcodes of the element service, with the members of uarg they use.
constexpr int UOP_FIRSTTIME = 1; // t out
constexpr int UOP_LASTTIME = 2;  // t out
constexpr int UOP_NELEM = 3;     // n out
constexpr int UOP_CANWRITE = 4;  // n out, 1 or 0
constexpr int UOP_NEXTTIME = 5;  // t out
constexpr int UOP_NEXTELEM = 6;  // n out
constexpr int UOP_TIMEMOVE = 7;  // t in
constexpr int UOP_ELEMMOVE = 8;  // n in
constexpr int UOP_GETELEM = 9;   // data out
constexpr int UOP_GETNELEM = 10; // n in, data out
constexpr int UOP_PUTELEM = 11;  // data in
constexpr int UOP_GETHEAD = 12;  // data out
constexpr int UOP_PUTHEAD = 13;  // data in
constexpr int UOP_ELEMSIZE = 14; // n out, bytes
constexpr int UOP_HEADSIZE = 15; // n out, bytes
constexpr int UOP_NITEMS = 16;   // n out
constexpr int UOP_TYPE = 17;     // n out the type code, s out the file name
constexpr int UOP_CLOSE = 18;    // whatever the type has to do before the container is closed

int u_error(); // status of the last call of this layer

double u_firsttime(_zuvfile* file);
double u_lasttime(_zuvfile* file);
std::int64_t u_nelem(_zuvfile* file);
int u_canwrite(_zuvfile* file);
double u_nexttime(_zuvfile* file);        // time of the next element
std::int64_t u_nextelem(_zuvfile* file);  // number of the next element
int u_timemove(_zuvfile* file, double t); // to the first element at or past t, held to 0..nelements
int u_elemmove(_zuvfile* file, std::int64_t n);
int u_getelem(_zuvfile* file, std::span<std::byte> element); // reads the next element, in this machine's form
int u_getnelem(_zuvfile* file, std::span<std::byte> elements, std::int64_t n);
int u_putelem(_zuvfile* file, std::span<const std::byte> element);
int u_gethead(_zuvfile* file, std::span<std::byte> head);
int u_puthead(_zuvfile* file, std::span<const std::byte> head);
int u_elemsize(_zuvfile* file);
int u_headsize(_zuvfile* file);
int u_nitems(_zuvfile* file); // items in an element: samples of a gate file's row
int u_type(_zuvfile* file);
std::string u_filename(_zuvfile* file);
int u_close(zuvfile_ptr file); // u_close(std::move(owner))

int u_kwput_d(_zuvfile* file, std::string_view name, double value);
int u_kwput_i(_zuvfile* file, std::string_view name, int value);
int u_kwput_s(_zuvfile* file, std::string_view name, std::string_view value);
int u_kwdelete(_zuvfile* file, std::string_view name);
double u_kwget_d(_zuvfile* file, std::string_view name);      // 0 and a status other than 1 when absent
int u_kwget_i(_zuvfile* file, std::string_view name);         // 0 and a status other than 1 when absent
std::string u_kwget_s(_zuvfile* file, std::string_view name); // empty and a status other than 1 when absent
int u_kwget_n(_zuvfile* file); // number of keywords, those of the header included
int u_kwexist(_zuvfile* file, std::string_view name);
// Name and type (KW_INT, KW_DOUBLE, KW_STRING) of keyword indx, from 0; the header's come first. Returns the
// status.
int u_kwindx(_zuvfile* file, int indx, std::string& name, int& type);

int u_reg(_zuvfile* file, zuvservice routine);
int u_kwreg(_zuvfile* file, zuvkwservice routine);

} // namespace norva
