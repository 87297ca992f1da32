#pragma once
// String routines on zero-terminated text. An empty pointer as string argument is tolerated by all of them,
// which then return their first argument or 0 (c_strcmpx: 1). Case is that of ASCII letters.

namespace norva {

// First c outside double quotes, empty when there is none. The test for c comes before a quote is counted.
char* c_strchrq(char* str, char c);
const char* c_strchrq(const char* str, char c);

// 1 when equal, exactly or in any case.
int c_iseq(const char* s1, const char* s2);
int c_iseqx(const char* s1, const char* s2);
// Difference of the first differing characters, both folded to upper case; 0 when equal, 1 when either is
// empty.
int c_strcmpx(const char* s1, const char* s2);

// Is s2 an abbreviation of s1, a full word with one break character c in it ("MAX~ELEMENTS")? What stands
// ahead of the break is required, what follows it may be cut at any point.
int c_isabbr(const char* s1, const char* s2, char c);
int c_isabbrx(const char* s1, const char* s2, char c);

// Does s match the pattern t? "?" takes one character, "*" any number of them; but a "*" that faces the end
// of s fails, so "a*" does not match "a".
int c_iswild(const char* t, const char* s);
int c_iswildx(const char* t, const char* s);

char* c_strupcase(char* str);
char* c_strlowcase(char* str);

// Appends as much of s2 as fits when s1 has room for n bytes in all; with fewer than 2 bytes free s1 stays
// unchanged.
char* c_strncat(char* s1, const char* s2, int n);
// Appends s2 to the heap string s1 of *n bytes, which is made or grown as needed. Returns it, as it may have
// moved.
char* c_strcatgrow(char* s1, const char* s2, int* n);
// Copies at most n - 1 characters and always terminates; an empty s2 gives an empty string; n below 1 does
// nothing.
char* c_strncpy(char* s1, const char* s2, int n);

// Pad with blanks to length n. A longer string stays, or is cut at n.
char* c_extendstr(char* str, int n);
char* c_setstrlen(char* str, int n);

// Remove blanks, tabs and newlines at the start, the end, or both, in place.
char* c_ridstartws(char* str);
char* c_ridendws(char* str);
char* c_ridedgews(char* str);

// Expands tabs to columns that are multiples of 8; the result is limited to mxn - 1 characters.
char* c_ridtab(char* str, int mxn);

} // namespace norva
