#pragma once
// Array kernels. Elements count from 1 in the formulas; n is the count. Where it is said, a negative n means
// |n| elements with the one scalar a(1) for the operand a. c may be a or b unless said otherwise.

namespace norva {

// Copies. b(k) = a(k); negative n: b(1..-n) = a(1). xmt and ixmt copy 32-bit words by their bits.
void xmit(int n, const float* a, float* b);
void xmt(int n, const void* a, void* b);
void ixmt(int n, const void* a, void* b);

void prod(int n, const float* a, const float* b, float* c); // a*b; negative n: a(1)*b
void asum(int n, const float* a, const float* b, float* c); // a+b; negative n: a(1)+b
// a-b; negative n: "IN APROC/ADIF...N CANNOT BE NEGATIVE".
void adif(int n, const float* a, const float* b, float* c);
void powr(int n, const float* a, const float* b, float* c); // a*a + b*b
float engy(int n, const float* a, const float* b);          // sum of a*a + b*b
float zsum(int n, const float* a);                          // sum of a
float dot(int n, const float* a, const float* b);           // sum of a*b
float zmax(int n, const float* a);                          // largest; 0 for n < 1
float zmin(int n, const float* a);                          // smallest; 0 for n < 1
void swap(int n, float* a, float* b);                       // exchanges a and b
void asqrt(int n, const float* a, float* b);                // b = sqrt(a)

// Interleaved complex values. reima splits n of them into xr and xi; cpxmul forms c(i) = a(i)*b(i), with a(1)
// for negative n; powrc forms the power re*re + im*im of n values into p, which may be x itself.
void reima(const float* x, int n, float* xr, float* xi);
void cpxmul(int n, const float* a, const float* b, float* c);
void powrc(int n, const float* x, float* p);

// a(1) = a1, a(i) = a(i-1) + da.
void linseq(float* a, int n, float a1, float da);

// Rotates a in place by n places: element k moves to k+n, wrapping at len.
void shaft(float* a, int len, int n);

// Copies mx by my words out of nx by ny words into b, from the linear index k0 (from 1) on, wrapping around
// in both directions. A negative k0 uses the inverse offset, so that k0 and -k0 rotate an array and rotate it
// back. Complex rows count two words a sample. b must not be a.
void arrext(const float* a, int nx, int ny, int k0, int mx, int my, float* b);

// Rotates ny rows of nx complex samples so that sample (nx/2, ny/2), counted from 0, comes first; with back
// set, so that the first comes there. b must not be a.
void half_rotate(const float* a, int nx, int ny, float* b, bool back = false);

// Strided kernels: each array is given by the addresses of its first two elements, whose distance is the
// stride, so powrg(n, x, x + 2, x + 1, x + 3, p, p + 1) is the power of interleaved data. n = 0 does nothing;
// negative n: " STOP IN GPROC.....N must be positive".
float sumg(int n, const float* a, const float* a2);
float dotg(int n, const float* a, const float* a2, const float* b, const float* b2);
void swapg(int n, float* a, float* a2, float* b, float* b2);
void asumg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2);
void prodg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2);
void powrg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2);
void xmitg(int n, const float* a, const float* a2, float* b, float* b2);

// Keeps what lies between the indices ich(1) and ich(2), ich(3) and ich(4), ...; an odd last index keeps all
// to the end; the rest becomes 0. A kept sample next to a zeroed stretch is halved, unless it is the first or
// last of the array. nx samples, ich rising within 1..nx. edatc: complex samples, edata: real ones.
void edatc(float* x, int nx, const int* ich, int nch);
void edata(float* x, int nx, const int* ich, int nch);

// Length of s without its trailing blanks.
int length(const char* s);

} // namespace norva
