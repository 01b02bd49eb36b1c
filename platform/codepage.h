// Conversion between the system's 8-bit code page and UTF-16.
// Windows uses the ANSI code page (CP_ACP); elsewhere the code page is Windows-1252.
// Both follow MultiByteToWideChar / WideCharToMultiByte.
#pragma once

namespace plat {

// Converts srcLength bytes (-1: up to and including the terminating zero). With dst null or
// dstLength 0 returns the units needed. Returns 0 when dst is too small; the units that fit
// are written then.
int CodePageToWide(const char* src, int srcLength, char16_t* dst, int dstLength);

// Converts srcLength units (-1: up to and including the terminating zero) to bytes, same rules.
// Characters outside the code page become '?'.
int WideToCodePage(const char16_t* src, int srcLength, char* dst, int dstLength);

}  // namespace plat
