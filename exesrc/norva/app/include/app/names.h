#pragma once
// File names and small numbers. Directories in names end at "/" or "\"; a name's own part is what stands
// behind the last of them, and "the first dot" below is the first dot of that part.

#include <optional>
#include <string>

namespace norva {

// The next free version of a name. Mode 1: the first of name;1, name;2, ... name;512 that does not exist
// (and whose plain successor name2, name3, ... does not either). Other modes: the latest existing name:i.
// Nothing for a name that already holds ";", or when none is found.
std::optional<std::string> versno(const std::string& name, int mode);

std::string rootname(const std::string& fname);     // up to the first dot
std::string rename_file(const std::string& fname);  // without the directory
std::string directory_of(const std::string& fname); // with its separator; empty when there is none
std::string version_part(const std::string& fname); // from the first ";" on; empty when there is none
std::string getdir(const std::string& fname);       // own part replaced by the wildcard of its kind of file
bool ext_eq(const std::string& fname, const std::string& ext); // from the first dot to the end or a version
bool rnm_eq(const std::string& a, const std::string& b);       // same up to the first dot

bool is_even(int num);
int nearest_elem(float xval, float c1, float dc); // i with c1 + i dc nearest to xval; 0 when dc is 0
int ipow(int base, int exponent);                 // by repeated multiplication; 1 for exponents below 1
double fpow(double base, int exponent);           // 0 for base 0; the reciprocal for a negative exponent
bool isfact(int f, int num);                      // num is a multiple of f; false for f 0
int near_factor(int dir, int f, int num); // from f, the next divisor of num upward (dir > 0) or downward
double absval(double x);

} // namespace norva
