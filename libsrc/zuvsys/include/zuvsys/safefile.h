#pragma once
// Writing a file so that its old content is never lost: the new content goes to a temporary beside the
// target, is flushed to the disk, and is renamed over it.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace norva {

// Writes a whole file. False on any failure, with a text in *why that names the file and the cause; the
// target then is as it was and no temporary remains. An existing target keeps its permissions and must be a
// writable regular file; a link is followed. A new one gets the permissions any new file gets.
bool write_file_safely(const std::string& name, std::span<const std::byte> bytes, std::string* why = nullptr);
bool write_text_safely(const std::string& name, std::string_view text, std::string* why = nullptr);

// The calls of the system by which this is done. A test replaces one of them to make a full disk.
struct safefile_calls {
    ssize_t (*write)(int fd, const void* bytes, std::size_t n);
    int (*fsync)(int fd);
    int (*close)(int fd);
    int (*rename)(const char* from, const char* to);
};
extern safefile_calls safefile_system;

} // namespace norva
