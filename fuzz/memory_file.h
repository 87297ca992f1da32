#pragma once
// A file that lives in memory and has a name to open it by, so that thousands of damaged files cost no disk.

#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace norva {

class memory_file {
public:
    memory_file() : fd_(memfd_create("norva", MFD_CLOEXEC)) {
        if (fd_ < 0) throw std::runtime_error("cannot make a file in memory");
    }
    ~memory_file() { close(fd_); }
    memory_file(const memory_file&) = delete;
    memory_file& operator=(const memory_file&) = delete;

    std::string name() const { return "/proc/self/fd/" + std::to_string(fd_); }
    void hold(std::string_view bytes) {
        bool held = ftruncate(fd_, 0) == 0;
        for (std::size_t done = 0; held && done < bytes.size();) {
            ssize_t n = pwrite(fd_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
            held = n > 0;
            done += static_cast<std::size_t>(n);
        }
        if (!held) throw std::runtime_error("cannot write a file in memory");
    }
    std::size_t size() const { return static_cast<std::size_t>(lseek(fd_, 0, SEEK_END)); }

private:
    int fd_;
};

} // namespace norva
