// A device on a COM port, through the real program: Wine maps COM9 to a pseudo-terminal whose
// other end tools/pty-relay hands this test over TCP (ctest runs it that way).
#include "app/app_state.h"
#include "app/device_table.h"
#include "link/link_client.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

#include <cstdlib>
#include <string>

namespace app_testing {
namespace {

using namespace testing_support;

TEST_F(ProgramTest, ADeviceOnACOMPortIsListedServesItsPanelAndAPulledCableEndsTheLink) {
    const char* relay = std::getenv("TREMOLANTH_PTY_RELAY_PORT");
    if (!relay) GTEST_SKIP() << "run through tools/pty-relay";
    // The radio fails: the machine's serial ports stand in for it.
    Neighbourhood machine;
    machine.bluetoothResult = 10050;
    machine.machineSerialPorts = true;
    Start(machine);
    ASSERT_TRUE(DeviceList());
    const std::vector<std::wstring> rows = ColumnTexts(DeviceListView(), 0);
    int row = -1;
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        if (rows[i] == L" COM9") row = i;
    }
    ASSERT_GE(row, 0) << "COM9 is listed";
    ASSERT_LT(row, 9);
    device = plat::SocketConnectTcp("127.0.0.1", static_cast<std::uint16_t>(std::atoi(relay)), 5000);
    ASSERT_NE(plat::kInvalidSocket, device);

    PostKey(DeviceListView(), '1' + row);
    EXPECT_EQ(FrameHead(1, 2), ReadFromClient(20)) << "the panel request, on the port";
    ASSERT_TRUE(WaitUntil([this] { return PanelScreenOpen(); }));
    SendIdentity(u"Uno");
    Send(PanelFrame({CommonPart('G', 0x4, 3) + U32(1) + U8({0}) +
                     AttributeBlock({{'Z', Utf16(u"Lamp")}})}));
    ASSERT_TRUE(WaitForPanelRows(1));
    PostCommand(PanelScreen(), IDOK);
    EXPECT_EQ(FrameHead(7, 2) + U32(1) + U32(3) + U32(1) + U8({255}), ReadFromClient(33));

    // The cable is pulled: the worker ends, and the next ping finds the link broken.
    plat::SocketClose(device);
    device = plat::kInvalidSocket;
    EXPECT_TRUE(WaitUntil([] { return Link().workerRunning == 0; }));
    PostMessageW(PanelScreen(), WM_TIMER, 2, 0);
    ExpectClosed();
}

}  // namespace
}  // namespace app_testing
