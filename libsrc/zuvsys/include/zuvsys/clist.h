#pragma once
// Array makers, and string lists: an array of character pointers ended by the first empty pointer. A list
// owns its strings and has no length field; where a routine needs the capacity it lies in an integer of the
// caller's (mn). Everything comes from jmalloc. Empty pointers are normal input.

namespace norva {

// Copies of a string, in a block of strlen+2 bytes; empty in, empty out.
char* c_mkstr(const char* str);
char* c_cpstr(const char* str);

// Zeroed storage of n bytes, doubles, floats, ints; empty when n is below 1.
char* c_mkstrn(int n);
double* c_mkdary(int n);
float* c_mkfary(int n);
int* c_mkiary(int n);
// Copies of n elements; empty when n is below 1 or the source is empty.
double* c_cpdary(const double* d, int n);
float* c_cpfary(const float* f, int n);
int* c_cpiary(const int* ia, int n);

// A zeroed pointer array of n entries, so at most n - 1 strings.
char** c_mklist(int n);
// An empty list becomes c_mklist(n). Otherwise, when n exceeds the current length (not the capacity), the
// array is resized to n entries, zero from the old length on. Returns the list, which may have moved.
char** c_growlist(char** slst, int n);

// Store a copy of str at the end. The first does not grow the list nor check its capacity, and does nothing
// on an empty one. The second grows a list that holds *mn - 2 strings or more to length + 4 entries, starts
// an empty one with *mn entries (4 when *mn is below 1), keeps *mn up to date and returns the list, which may
// have moved.
void c_addlist(char** slst, const char* str);
char** c_addlistgrow(char** slst, const char* str, int* mn);
// Store sptr itself: ownership passes to the list. The second grows by the same test, but by 10 entries, and
// returns empty when slst is empty.
void c_mvtolist(char** slst, char* sptr);
char** c_mvtolistgrow(char** slst, char* sptr, int* mn);

void c_freelist(char** slst);
int c_listlen(char* const* slst); // 0 for an empty list

// Index of the first equal entry or -1; 1 or 0. The x forms disregard case.
int c_locinlist(char* const* slst, const char* str);
int c_locinlistx(char* const* slst, const char* str);
int c_isinlist(char* const* slst, const char* str);
int c_isinlistx(char* const* slst, const char* str);

// Words of a text as a new list. Blank, tab and newline separate outside double quotes; quotes stay in the
// word. c_words writes zero bytes over the separators of str; c_words_new leaves str alone, gives a list with
// no entries for an empty str, and leaves room for two entries beyond the words.
char** c_words(char* str);
char** c_words_new(const char* str);

} // namespace norva
