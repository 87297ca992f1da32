#pragma once
// printf into a std::string. The process keeps LC_NUMERIC at "C", so the decimal point is always a point.

#include <string>

namespace norva {

[[gnu::format(printf, 1, 2)]] std::string strprintf(const char* format, ...);

} // namespace norva
