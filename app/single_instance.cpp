#include "app/single_instance.h"

namespace {

constexpr int kAttempts = 5;
constexpr unsigned kSecondLookMs = 500;

void SleepFor(unsigned milliseconds) { Sleep(milliseconds); }
InstanceWaitFunction g_wait = SleepFor;

}  // namespace

InstanceWaitFunction SetInstanceWaitForTest(InstanceWaitFunction wait) {
    InstanceWaitFunction previous = g_wait;
    g_wait = wait ? wait : SleepFor;
    return previous;
}

HRESULT CheckSingleInstance(const wchar_t* name, const wchar_t* title, bool* running) {
    *running = false;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        HANDLE mutex = CreateMutexW(nullptr, FALSE, name);
        if (!mutex) return E_FAIL;
        if (GetLastError() != ERROR_ALREADY_EXISTS) return S_OK;  // kept open: we are first
        CloseHandle(mutex);
        // The first instance may hold the mutex before its window exists: look twice.
        HWND window = FindWindowW(name, title);
        if (!window) {
            g_wait(kSecondLookMs);
            window = FindWindowW(name, title);
        }
        if (window) {
            // The handset flags the handle to raise the owned windows too; a desktop raises
            // the window in front of its family instead.
            SetForegroundWindow(GetLastActivePopup(window));
            *running = true;
            return S_OK;
        }
    }
    return E_FAIL;
}
