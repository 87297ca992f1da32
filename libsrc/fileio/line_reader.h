#pragma once
// Lines of a text file of any size, one at a time, for the readers of the text forms.

#include <string>
#include <string_view>
#include <vector>

namespace norva {

class line_reader {
public:
    static constexpr std::size_t LONGEST = 65536; // characters of a line

    enum class outcome { line, end, fault };

    // A name that is no regular file (folders, devices) does not open. "-" is standard input.
    explicit line_reader(const std::string& name);
    ~line_reader();
    line_reader(const line_reader&) = delete;
    line_reader& operator=(const line_reader&) = delete;

    // The next line without its end (LF or CR LF); it holds until the next call.
    outcome next(std::string_view& line);

    long number() const { return number_; }             // of the line read last, from 1
    double size() const { return size_; }               // bytes of a regular file, else infinite
    const std::string& fault() const { return fault_; } // why it does not open or go on; empty when it does
    std::string at(const std::string& text) const;      // "line N: " + text

private:
    bool fill(); // reads on behind what is kept; false at the end or on an error

    int fd_ = -1;
    bool own_ = false;
    std::vector<char> buffer_;
    std::size_t first_ = 0, last_ = 0; // what is read and not yet given
    long number_ = 0;
    double size_ = 0;
    std::string fault_;
};

// The text without blanks, tabs and the like at both ends.
std::string_view trimmed(std::string_view text);

} // namespace norva
