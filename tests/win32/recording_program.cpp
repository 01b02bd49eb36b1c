// A stand-in for a web browser and for a program a device might send: each start appends its
// command line to the file named by TREMOLANTH_TEST_LAUNCHES, so a test sees what was started.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    wchar_t log[MAX_PATH];
    if (GetEnvironmentVariableW(L"TREMOLANTH_TEST_LAUNCHES", log, MAX_PATH) == 0) return 1;
    HANDLE file = CreateFileW(log, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return 1;
    const wchar_t* line = GetCommandLineW();
    DWORD written = 0;
    WriteFile(file, line, static_cast<DWORD>(lstrlenW(line) * sizeof(wchar_t)), &written, nullptr);
    WriteFile(file, L"\n", sizeof(wchar_t), &written, nullptr);
    CloseHandle(file);
    return 0;
}
