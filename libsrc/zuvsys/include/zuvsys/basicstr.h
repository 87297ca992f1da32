#pragma once
// The older set of string routines. Unlike those of cstrings.h they do not accept empty pointers.

#include <cstddef>

namespace norva {

int toupperx(int c); // ASCII letters only
int tolowerx(int c);
char* struprx(char* s); // in place
char* strlwrx(char* s);
void extendstr(char* s, int n); // pads with blanks to length n; a longer string stays
void ridstartws(char* s);       // blanks, tabs and newlines
void ridendws(char* s);
int strcmpx(const char* s, const char* t); // case-insensitive difference of the first differing characters
int strncmpx(const char* s, const char* t, int n); // the same over at most n characters; 0 when n is below 1
// Position of the first occurrence of s2 in s1, or -1. Two empty strings give 0, exactly one gives -1.
int strindx(const char* s1, const char* s2);
void strlimcpy(char* s, const char* t, int n); // at most n - 1 characters; nothing when n is below 1
void xmove(void* target, const void* source, std::size_t n); // byte move, safe on overlap

} // namespace norva
