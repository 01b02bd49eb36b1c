#include "platform/codepage.h"

#include <windows.h>

namespace plat {

int CodePageToWide(const char* src, int srcLength, char16_t* dst, int dstLength) {
    if (srcLength == 0) return 0;
    return MultiByteToWideChar(CP_ACP, 0, src, srcLength, reinterpret_cast<wchar_t*>(dst),
                               dst ? dstLength : 0);
}

int WideToCodePage(const char16_t* src, int srcLength, char* dst, int dstLength) {
    if (srcLength == 0) return 0;
    return WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t*>(src), srcLength, dst,
                               dst ? dstLength : 0, nullptr, nullptr);
}

}  // namespace plat
