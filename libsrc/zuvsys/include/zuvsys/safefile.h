#pragma once
// Writing a file so that its old content is never lost: the new content goes to a temporary beside the
// target, is flushed to the disk, and is renamed over it.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>

namespace norva {

// Writes a whole file. False on any failure, with a text in *why that names the file and the cause; the
// target then is as it was and no temporary remains. An existing target keeps its permissions and must be a
// writable regular file; a link is followed. A new one gets the permissions any new file gets.
bool write_file_safely(const std::string& name, std::span<const std::byte> bytes, std::string* why = nullptr);
bool write_text_safely(const std::string& name, std::string_view text, std::string* why = nullptr);

// The same for content that is made piece by piece, or by a writer that opens the temporary by its name:
//
//   safe_file out(name);
//   out.write(bytes);                     // as often as needed; a failure sticks
//   if (!out.commit()) tell(out.why());
//
// Without commit() the temporary goes with the object, and the target is as it was.
class safe_file {
public:
    explicit safe_file(const std::string& name);
    ~safe_file();
    safe_file(const safe_file&) = delete;
    safe_file& operator=(const safe_file&) = delete;

    bool good() const { return why_.empty(); } // no failure so far, the target can be replaced
    const std::string& temporary() const { return temporary_; }
    void write(std::span<const std::byte> bytes);
    void write(std::string_view text) { write(std::as_bytes(std::span(text.data(), text.size()))); }
    bool commit();                                  // false on any failure so far
    const std::string& why() const { return why_; } // names the file and the cause

private:
    void fail(int error);

    std::string name_, target_, temporary_, why_;
    int fd_ = -1;
    bool replaces_ = false; // a file that was there before
    struct stat old_ {};
};

// The calls of the system by which this is done. A test replaces one of them to make a full disk.
struct safefile_calls {
    ssize_t (*write)(int fd, const void* bytes, std::size_t n);
    int (*fsync)(int fd);
    int (*close)(int fd);
    int (*rename)(const char* from, const char* to);
};
extern safefile_calls safefile_system;

} // namespace norva
