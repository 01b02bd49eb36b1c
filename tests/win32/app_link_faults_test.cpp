// The program against careless, broken and hostile devices: programs sent to be run, a stalled
// transfer, boxes raised from the receive side, a search that fails or finds more devices than
// the list holds.
#include "app/app_state.h"
#include "app/app_texts.h"
#include "app/device_table.h"
#include "link/link_client.h"
#include "platform/browser.h"
#include "platform/message_box.h"
#include "platform/post.h"
#include "shell/shell_state.h"
#include "tests/support/records.h"
#include "tests/support/temp_folder.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace app_testing {
namespace {

using namespace testing_support;

class LinkFaultsTest : public ProgramTest {
protected:
    TempFolder folder;  // received files land here
};

// Records for the browser (the top bits 0x001) with UTF-16 texts.
Bytes BlobRecord(std::uint32_t key, const std::u16string& text) {
    const Bytes data = Utf16(text) + U8({0, 0});
    return CommonPart('O', 0x00100004, key) + U32(static_cast<std::uint32_t>(data.size())) + data +
           AttributeBlock({{'Z', Utf16(u"Link")}});
}
Bytes FilesRecord(std::uint32_t key) {
    return CommonPart('F', 0x00100004, key) + U32(0) + AttributeBlock({{'Z', Utf16(u"Report")}});
}
Bytes CheckRecord(std::uint32_t key) {
    return CommonPart('G', 0x4, key) + U32(1) + U8({0}) + AttributeBlock({{'Z', Utf16(u"Lamp")}});
}
Bytes NumberRecord(std::uint32_t key, std::uint32_t value) {
    return CommonPart('N', 0x10004, key) + U32(4) + U32(value) +
           AttributeBlock({{'Z', Utf16(u"Level")}});
}
Bytes ChartRecord(std::uint32_t key) {
    return CommonPart('M', 0x4, key) + U32(4) + U32(0) + AttributeBlock({{'Z', Utf16(u"Log")}});
}
// One file for a Files control whose names are UTF-16; `sent` bytes of its content follow.
Bytes FileFrame(std::uint32_t key, const std::u16string& name, std::uint32_t size, const Bytes& sent) {
    const Bytes n = Utf16(name) + U8({0, 0});
    return FrameHead(17, 0) + U32(key) + U32(1) + U32(static_cast<std::uint32_t>(n.size())) + n +
           U32(size) + sent;
}
Bytes ValueMessage(std::uint32_t key, const Bytes& value) {
    return FrameHead(7, 2) + U32(1) + U32(key) + U32(static_cast<std::uint32_t>(value.size())) +
           value;
}

// This folder's recording program, registered as the user's browser for web addresses while the
// object lives; every start of it is a line of Launches().
class RecordingBrowser {
public:
    explicit RecordingBrowser(const std::string& folder) {
        wchar_t self[MAX_PATH];
        GetModuleFileNameW(nullptr, self, MAX_PATH);
        program_ = std::filesystem::path(self).replace_filename(L"recording_program.exe").wstring();
        log_ = std::filesystem::path(folder) / "launches.log";
        SetEnvironmentVariableW(L"TREMOLANTH_TEST_LAUNCHES", log_.wstring().c_str());
        const std::wstring command = L"\"" + program_ + L"\" \"%1\"";
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t)));
    }
    ~RecordingBrowser() {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Classes\\http");
        SetEnvironmentVariableW(L"TREMOLANTH_TEST_LAUNCHES", nullptr);
    }
    const std::wstring& Program() const { return program_; }
    Bytes ProgramBytes() const {
        std::ifstream in(std::filesystem::path(program_), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(in), {});
    }
    std::vector<std::wstring> Launches() const {
        std::ifstream in(log_, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(in), {});
        std::wstring text(bytes.size() / 2, L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * 2);
        std::vector<std::wstring> lines;
        for (std::size_t at = 0, end; (end = text.find(L'\n', at)) != std::wstring::npos; at = end + 1) {
            lines.push_back(text.substr(at, end - at));
        }
        return lines;
    }
    bool Launched(const std::wstring& part) const {
        for (const auto& line : Launches()) {
            if (line.find(part) != std::wstring::npos) return true;
        }
        return false;
    }

private:
    static constexpr const wchar_t* kKey = L"Software\\Classes\\http\\shell\\open\\command";
    std::wstring program_;
    std::filesystem::path log_;
};

// What a device sends is shown in the user's browser, never run: a program sent as a file is
// stored but not opened, a blob naming a program is refused, and pages and web addresses reach
// the registered browser as its one argument.
TEST_F(LinkFaultsTest, ADeviceNeverRunsAProgramItOnlyShowsPagesInTheRegisteredBrowser) {
    RecordingBrowser browser(folder.Path());
    const std::wstring& program = browser.Program();
    OpenPanel({FilesRecord(5), BlobRecord(6, std::u16string(program.begin(), program.end())),
               BlobRecord(7, u"http://device.test/status")});
    const Bytes evil = browser.ProgramBytes();
    ASSERT_FALSE(evil.empty());
    Send(FileFrame(5, u"evil.exe", static_cast<std::uint32_t>(evil.size()), evil));
    EXPECT_TRUE(boxes.WaitFor(kUnintelligibleText, std::chrono::seconds(5)));
    Send(FileFrame(5, u"\\Docs\\page.html", 9, Ascii("<p>hi</p>")));
    EXPECT_TRUE(WaitUntil([&] { return browser.Launched(L"page.html"); }));

    boxes.Clear();
    SelectRow(1);  // the blob naming a program
    PostCommand(PanelScreen(), IDOK);
    EXPECT_TRUE(boxes.WaitFor(kUnintelligibleText, std::chrono::seconds(5)));
    SelectRow(2);
    PostCommand(PanelScreen(), IDOK);
    EXPECT_TRUE(WaitUntil([&] { return browser.Launched(L"http://device.test/status"); }));

    // A program that ran would log a line without an address; give one the time to show up.
    EXPECT_FALSE(WaitUntil([&] { return browser.Launches().size() > 2; }, std::chrono::seconds(2)));
    for (const std::wstring& line : browser.Launches()) {
        EXPECT_EQ(0u, line.find(L"\"" + program + L"\" \"")) << "the browser, with one argument";
        EXPECT_TRUE(line.find(L"\"file:///") != std::wstring::npos ||
                    line.find(L"\"http://") != std::wstring::npos);
    }

    // Without a browser: a box says so, and nothing else happens.
    plat::SetBrowserHook([](const std::u16string&) { return false; });
    PostCommand(PanelScreen(), IDOK);
    EXPECT_TRUE(boxes.WaitFor(kNoBrowserText, std::chrono::seconds(5)));
    plat::SetBrowserHook(nullptr);
}

// A transfer that stalls never freezes the screen: a fast key toggles a check box and its value
// goes out, an editor and a data view open and close, and Back leaves, while the device keeps
// the rest of its file to itself.
TEST_F(LinkFaultsTest, EveryKeyIsAnsweredWhileATransferStalls) {
    OpenPanel({CheckRecord(1), NumberRecord(2, 5), ChartRecord(3), FilesRecord(9)});
    Send(FileFrame(9, u"big.bin", 100000, Bytes(3000, 0xAB)));
    const std::filesystem::path partial = std::filesystem::path(folder.Path()) / "received" / "big.bin";
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(partial); }));
    HWND list = PanelListView();

    PostKey(list, '1');
    EXPECT_EQ(ValueMessage(1, U8({255})), ReadFromClient(33));
    Sync();
    EXPECT_EQ(0, SelectedRow(list));

    PostKey(list, '2');
    HWND editor = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (editor = Shell().currentDialog) != nullptr; }));
    PostCommand(editor, IDC_DONE);
    EXPECT_EQ(ValueMessage(2, U32(5)), ReadFromClient(36));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(editor) && !Shell().currentDialog; }));

    PostKey(list, '3');
    HWND view = nullptr;
    ASSERT_TRUE(WaitUntil([&] { return (view = Shell().currentDialog) != nullptr; }));
    PostCommand(view, IDCANCEL);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(view) && !Shell().currentDialog; }));

    PostCommand(PanelScreen(), IDCANCEL);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(PanelScreen()); }, std::chrono::seconds(1)));
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
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

// Enter until the box goes. A screen that closes under the box leaves the desktop in front for
// a moment before the box takes the front back: a key pressed just then is lost, as a user's
// would be, and pressed again.
bool AnswerWithEnter(HWND box) {
    for (int attempt = 0; attempt < 5 && IsWindow(box); ++attempt) {
        WaitUntil([&] { return GetForegroundWindow() == box; });
        PressEnter();
        if (WaitUntil([&] { return !IsWindow(box); }, std::chrono::seconds(1))) return true;
    }
    return !IsWindow(box);
}

TEST_F(LinkFaultsTest, BoxesFromTheReceiveSideComeToTheFrontAndTakeEnter) {
    OpenPanel({ButtonRecord(1, u"B")});
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
        EXPECT_TRUE(AnswerWithEnter(box)) << text;
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

    // A rescan that fails after finding two keeps the five listed, and their rows.
    Start({NamedDevices(5), 0, L""});
    ASSERT_TRUE(DeviceList());
    SetBluetoothResult(10060);
    SetBluetoothDevices(NamedDevices(2));
    PostCommand(DeviceList(), IDC_SCAN);
    ASSERT_TRUE(boxes.WaitFor(plat::FaultBoxText(523, "tremolanth22", 10060),
                              std::chrono::seconds(5)));
    EXPECT_EQ(5, Devices().count);
    EXPECT_EQ(L"Device 5", std::wstring(Devices().entries[4].name));
    EXPECT_EQ(5u, ColumnTexts(DeviceListView(), 0).size());
}

}  // namespace
}  // namespace app_testing
