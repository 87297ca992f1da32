#pragma once
// What the sources of the container share: the last status and unbuffered access to bytes.

#include "fileio/zuvfile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace norva {

constexpr int zuv_headbytes = 20; // the head on disk

// Remembers a status as the module's last one and returns it.
int zuv_status(int status);

// Opens a regular file without ever waiting for one (a pipe, a terminal). -1 for anything else.
int zuv_open_handle(const std::string& name, int flags);

// Bytes read from the file position on, fewer at the end of the file; -1 on an error.
std::int64_t zuv_read(int handle, std::span<std::byte> bytes);
bool zuv_read_at(int handle, std::int64_t position, std::span<std::byte> bytes);
// The same for stretches of `width` bytes with `gap` others between them, which go one behind the other.
bool zuv_read_stretches_at(int handle, std::int64_t position, std::size_t width, std::size_t gap,
                           std::span<std::byte> bytes);
bool zuv_write(int handle, std::span<const std::byte> bytes);
bool zuv_write_at(int handle, std::int64_t position, std::span<const std::byte> bytes);
// What has been written is on the disk when this returns true.
bool zuv_flush(int handle);

// The head from and to its 20 bytes on disk, in the representation of machine kw.machine. False when unknown.
bool zuv_unpack_head(std::span<const std::byte> bytes, _keywords& kw);
bool zuv_pack_head(const _keywords& kw, std::span<std::byte> bytes);

} // namespace norva
