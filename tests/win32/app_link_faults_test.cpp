// The program against careless and broken devices: a stalled transfer, boxes raised from the
// receive side, a search that fails or finds more devices than the list holds.
#include "app/app_state.h"
#include "app/device_table.h"
#include "link/link_client.h"
#include "platform/message_box.h"
#include "platform/post.h"
#include "tests/support/records.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

#include <atomic>
#include <string>

namespace app_testing {
namespace {

using namespace testing_support;

class LinkFaultsTest : public ProgramTest {
protected:
    void Open() {
        StartWithFakeDevice();
        ConnectFake();
        SendIdentity(u"Faults");
        Send(PanelFrame({ButtonRecord(1, u"B")}));
        ASSERT_TRUE(WaitForPanelRows(1));
    }
};

TEST_F(LinkFaultsTest, BackLeavesWithinABoundedTimeWhenATransferStalls) {
    Open();
    // One file of 1000 bytes of which 10 arrive: the worker waits, holding the store.
    Send(FrameHead(17, 0) + U32(9) + U32(1) + U32(6) + Ascii("f.bin") + U8({0}) + U32(1000) +
         Bytes(10, 0xAB));
    Sync();
    PostCommand(PanelScreen(), IDCANCEL);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }, std::chrono::seconds(5)));
    EXPECT_EQ(-1, App().currentDevice);
    EXPECT_EQ(plat::kInvalidSocket, Devices().socket);
}

// Boxes shown for real, each recorded with the window it became.
std::atomic<int> g_realBoxes{0};
int ShowRealBox(plat::WindowRef owner, const std::u16string& text, const std::u16string& caption,
                unsigned flags) {
    ++g_realBoxes;
    return plat::NativeMessageBox(owner, text, caption, flags);
}

HWND FindBox(const wchar_t* text) {
    struct Search {
        const wchar_t* text;
        HWND found;
    } search{text, nullptr};
    EnumWindows(
        [](HWND window, LPARAM p) -> BOOL {
            auto* s = reinterpret_cast<Search*>(p);
            wchar_t name[16] = {};
            GetClassNameW(window, name, 16);
            if (lstrcmpW(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
            for (HWND child = GetWindow(window, GW_CHILD); child;
                 child = GetWindow(child, GW_HWNDNEXT)) {
                wchar_t shown[256] = {};
                GetWindowTextW(child, shown, 256);
                if (std::wstring(shown).find(s->text) != std::wstring::npos) {
                    s->found = window;
                    return FALSE;
                }
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void PressEnter() {
    INPUT keys[2] = {};
    keys[0].type = keys[1].type = INPUT_KEYBOARD;
    keys[0].ki.wVk = keys[1].ki.wVk = VK_RETURN;
    keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, keys, sizeof(INPUT));
}

TEST_F(LinkFaultsTest, BoxesFromTheReceiveSideComeToTheFrontAndTakeEnter) {
    Open();
    plat::MessageBoxHook recorder = plat::SetMessageBoxHook(ShowRealBox);
    g_realBoxes = 0;
    Send(FrameHead(7, 0));  // a type no device sends: "Message = 7", then the fault box
    HWND box = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (box = FindBox(L"Message = 7")) != nullptr; }));
    // The screen behind it goes away meanwhile: the box must still be the one in front.
    PostCommand(PanelScreen(), IDCANCEL);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }));
    for (const wchar_t* text : {L"Message = 7", L"At 547 file tmqbthppcvcomclt, val=-1"}) {
        ASSERT_TRUE(WaitUntil([&] { return (box = FindBox(text)) != nullptr; })) << text;
        EXPECT_TRUE(WaitUntil([&] { return GetForegroundWindow() == box; })) << text;
        RECT boxRect, mainRect;
        GetWindowRect(box, &boxRect);
        GetWindowRect(Shell().mainWindow, &mainRect);
        const POINT middle{(boxRect.left + boxRect.right) / 2, (boxRect.top + boxRect.bottom) / 2};
        EXPECT_TRUE(PtInRect(&mainRect, middle)) << "over the program's window";
        PressEnter();
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); })) << text;
    }
    plat::SetMessageBoxHook(recorder);
}

TEST_F(LinkFaultsTest, ASearchKeepsItsCountWithItsEntriesAndNamesTheDevicesItCannotList) {
    // Fifteen radio devices and three network ones: the last two do not fit the list.
    Start({NamedDevices(15), 0, L"N0=h:1;N1=h:1;N2=h:1"});
    ASSERT_TRUE(DeviceList());
    EXPECT_EQ(16, Devices().count);
    ASSERT_EQ(1u, boxes.Count());
    const std::u16string text = boxes.Boxes()[0].text;
    EXPECT_EQ(std::u16string::npos, text.find(u"N0:"));
    EXPECT_NE(std::u16string::npos, text.find(u"N1: the list holds 16 devices."));
    EXPECT_NE(std::u16string::npos, text.find(u"N2: the list holds 16 devices."));
    TearDown();

    // A rescan that fails after finding two: the table holds those two, not two of five.
    Start({NamedDevices(5), 0, L""});
    ASSERT_TRUE(DeviceList());
    SetBluetoothResult(10060);
    SetBluetoothDevices(NamedDevices(2));
    PostCommand(DeviceList(), IDC_SCAN);
    ASSERT_TRUE(boxes.WaitFor(plat::FaultBoxText(523, "tremolanth22", 10060),
                              std::chrono::seconds(5)));
    EXPECT_EQ(2, Devices().count);
}

}  // namespace
}  // namespace app_testing
