// Start-up, the device search and list, the About box and the single-instance check.
#include "app/app_state.h"
#include "app/single_instance.h"
#include "link/link_client.h"
#include "shell/phone_shell.h"
#include "res/resource.h"
#include "tests/support/temp_folder.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>


namespace app_testing {
namespace {

using testing_support::WaitUntil;

const std::u16string kCannotActivate =
    u"Bluetooth can't be activated.  Check the radio is switched on and no other programs "
    u"are using Bluetooth.";
const std::u16string kNoDevices =
    u"No compatible devices found.  Check the Bluetooth radio is switched on.";

using StartupTest = ProgramTest;

TEST_F(StartupTest, FailedInquiryWithoutNetworkDevicesEndsTheProgram) {
    Start({{}, 10050, L""});
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(0, ExitCode());
    auto shown = boxes.Boxes();
    ASSERT_EQ(1u, shown.size());
    EXPECT_EQ(kCannotActivate, shown[0].text);
    EXPECT_EQ(u"Tremolanth", shown[0].caption);
    EXPECT_EQ(static_cast<unsigned>(MB_OKCANCEL), shown[0].flags);
    EXPECT_FALSE(Link().initialised);  // shut down on the way out
}

TEST_F(StartupTest, FailedInquiryWithNetworkDevicesListsThemAndReportsMalformedEntries) {
    Start({{}, 10050, L"Bench=127.0.0.1:4000;Bad=h:x;Lab=localhost:4001"});
    ASSERT_TRUE(DeviceList());
    EXPECT_EQ((std::vector<std::wstring>{L" Bench", L" Lab"}), ColumnTexts(DeviceListView(), 0));
    auto shown = boxes.Boxes();
    ASSERT_EQ(1u, shown.size()) << "no box for the failed inquiry";
    EXPECT_NE(std::u16string::npos, shown[0].text.find(u"\"Bad=h:x\""));
    EXPECT_EQ(static_cast<unsigned>(MB_ICONEXCLAMATION), shown[0].flags);
}

TEST_F(StartupTest, RowsAreNumberedForTheKeys) {
    const struct {
        int devices;
        std::vector<std::pair<int, std::wstring>> keys;  // row, key column
        int narrowing;                                    // of the name column
    } cases[] = {{1, {{0, L"1"}}, 0}, {11, {{8, L"9"}, {9, L"0"}, {10, L""}}, 6}};
    for (const auto& c : cases) {
        Start({NamedDevices(c.devices), 0, L""});
        ASSERT_TRUE(DeviceList()) << c.devices;
        HWND list = DeviceListView();
        auto keys = ColumnTexts(list, 1);
        ASSERT_EQ(static_cast<std::size_t>(c.devices), keys.size());
        EXPECT_EQ(L" Device 1", ColumnTexts(list, 0)[0]);
        for (const auto& [row, key] : c.keys) EXPECT_EQ(key, keys[row]) << "row " << row;
        EXPECT_EQ(Shell().listWidth - 14 - c.narrowing, ListView_GetColumnWidth(list, 0));
        EXPECT_EQ(0, SelectedRow(list));
        TearDown();
    }
}

TEST_F(StartupTest, UnreachableDeviceSaysSoAndKeepsTheList) {
    Start({NamedDevices(1), 0, L"Gone=127.0.0.1:1"});  // a closed port
    ASSERT_TRUE(DeviceList());
    PostKey(DeviceListView(), '2');
    ASSERT_TRUE(boxes.WaitFor(u"Unable to connect to Gone", std::chrono::seconds(5)));
    Sync();
    EXPECT_EQ(static_cast<unsigned>(MB_ICONHAND), boxes.Boxes()[0].flags);
    EXPECT_EQ(-1, App().currentDevice);
    EXPECT_TRUE(IsWindowVisible(DeviceList()));
    EXPECT_EQ(1, SelectedRow(DeviceListView()));
}

TEST_F(StartupTest, EmptySearchSaysSoAndARescanFillsTheList) {
    Start({{}, 0, L""});
    ASSERT_TRUE(DeviceList());
    EXPECT_TRUE(boxes.Has(kNoDevices));
    SetEnvironmentVariableW(L"TREMOLANTH_DEVICES", L"Late=h:5");
    PostCommand(DeviceList(), IDC_SCAN);
    ASSERT_TRUE(WaitUntil([&] { return ListView_GetItemCount(DeviceListView()) == 1; }));
    EXPECT_EQ(L"1", ColumnTexts(DeviceListView(), 1)[0]);  // the columns exist after all
}

TEST_F(StartupTest, SoftKeysCaptionIdleDigitsAndBack) {
    Start({NamedDevices(3), 0, L""});
    ASSERT_TRUE(DeviceList());
    EXPECT_EQ(L"Connect", ShellSoftKeyLabel(DeviceList(), kLeftSoftKey));
    wchar_t caption[64] = {};
    GetWindowTextW(Shell().mainWindow, caption, 64);
    EXPECT_STREQ(L"Devices in range", caption);

    // A digit beyond the devices does nothing.
    PostKey(DeviceListView(), VK_NUMPAD5);
    Sync();
    EXPECT_EQ(0u, boxes.Count());
    EXPECT_EQ(-1, App().currentDevice);
    EXPECT_EQ(0, SelectedRow(DeviceListView()));

    PostCommand(DeviceList(), IDCANCEL);  // Back on the list ends the program
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(0, ExitCode());
    EXPECT_FALSE(IsWindow(Shell().mainWindow));
}

// The single-instance check, with the 500 ms waits counted instead of waited.
int g_waits = 0;
void CountWait(unsigned milliseconds) {
    EXPECT_EQ(500u, milliseconds);
    ++g_waits;
}

TEST(SingleInstance, FirstFindsNobodySecondFindsTheWindowOrGivesUp) {
    std::string unique = testing_support::UniqueName("TmqTest");
    std::wstring name(unique.begin(), unique.end());
    SetInstanceWaitForTest(CountWait);
    bool running = true;
    EXPECT_EQ(S_OK, CheckSingleInstance(name.c_str(), nullptr, &running));
    EXPECT_FALSE(running);

    // The mutex is held, no window yet: two looks per attempt, five attempts.
    g_waits = 0;
    EXPECT_EQ(E_FAIL, CheckSingleInstance(name.c_str(), nullptr, &running));
    EXPECT_FALSE(running);
    EXPECT_EQ(5, g_waits);

    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = name.c_str();
    ASSERT_TRUE(RegisterClassW(&wc));
    HWND window = CreateWindowW(name.c_str(), L"", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                                wc.hInstance, nullptr);
    g_waits = 0;
    EXPECT_EQ(S_OK, CheckSingleInstance(name.c_str(), nullptr, &running));
    EXPECT_TRUE(running);
    EXPECT_EQ(0, g_waits);
    DestroyWindow(window);
    UnregisterClassW(name.c_str(), wc.hInstance);
    SetInstanceWaitForTest(nullptr);
}

}  // namespace
}  // namespace app_testing
