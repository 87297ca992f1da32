#include "line_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace norva {

line_reader::line_reader(const std::string& name) : buffer_(2 * LONGEST) {
    own_ = name != "-";
    fd_ = own_ ? open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY) : STDIN_FILENO;
    struct stat status {};
    if (fd_ < 0 || fstat(fd_, &status) != 0)
        fault_ = std::strerror(errno);
    else if (S_ISDIR(status.st_mode) || (own_ && !S_ISREG(status.st_mode)))
        fault_ = "it is no regular file";
    else
        size_ = S_ISREG(status.st_mode) ? static_cast<double>(status.st_size)
                                        : std::numeric_limits<double>::infinity();
}

line_reader::~line_reader() {
    if (own_ && fd_ >= 0) close(fd_);
}

std::string line_reader::at(const std::string& text) const {
    return "line " + std::to_string(number_) + ": " + text;
}

bool line_reader::fill() {
    if (first_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + first_, last_ - first_);
        last_ -= first_;
        first_ = 0;
    }
    ssize_t n = 0;
    do n = read(fd_, buffer_.data() + last_, buffer_.size() - last_);
    while (n < 0 && errno == EINTR);
    if (n < 0) fault_ = std::strerror(errno);
    if (n > 0) last_ += static_cast<std::size_t>(n);
    return n > 0;
}

line_reader::outcome line_reader::next(std::string_view& line) {
    if (!fault_.empty()) return outcome::fault;
    std::size_t searched = 0;
    const char* end = nullptr;
    while (true) {
        const std::string_view kept(buffer_.data() + first_, last_ - first_);
        const std::size_t at_newline = kept.find('\n', searched);
        if (at_newline != std::string_view::npos) {
            end = kept.data() + at_newline;
            break;
        }
        searched = kept.size();
        if (searched > LONGEST || !fill()) break;
    }
    if (!fault_.empty()) return outcome::fault;
    if (!end && first_ == last_) return outcome::end;
    number_++;
    const char* const begin = buffer_.data() + first_;
    if (!end) end = buffer_.data() + last_; // the last line has no end
    line = std::string_view(begin, static_cast<std::size_t>(end - begin));
    if (line.size() > LONGEST) {
        fault_ = at("longer than " + std::to_string(LONGEST) + " characters");
        return outcome::fault;
    }
    first_ = std::min(last_, static_cast<std::size_t>(end - buffer_.data()) + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return outcome::line;
}

std::string_view trimmed(std::string_view text) {
    constexpr const char* blanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace norva
