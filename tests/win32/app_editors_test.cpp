// The editors and the value keys through the real program against a fake device.
#include "app/app_state.h"
#include "app/device_table.h"
#include "model/control_store.h"
#include "shell/phone_shell.h"
#include "shell/shell_state.h"
#include "tests/win32/app_fixture.h"

#include <commctrl.h>

namespace app_testing {
namespace {

using namespace testing_support;

// Records with UTF-16 texts (flag 0x4); 0x10000: the user may change them.
Bytes NumberRecord(std::uint32_t key, std::int32_t value, std::int8_t exponent) {
    return CommonPart('N', 0x10004, key) + U32(4) + U32(static_cast<std::uint32_t>(value)) +
           AttributeBlock(
               {{'Z', Utf16(u"Level")}, {'m', U8({static_cast<std::uint8_t>(exponent)})}});
}
Bytes ListRecord(std::uint32_t key, std::int32_t index) {
    return CommonPart('L', 0x4, key) + U32(4) + U32(static_cast<std::uint32_t>(index)) +
           AttributeBlock({{'Z', Utf16(u"Mode")},
                           {'I', Utf16(std::u16string(u"Off\0Low\0High\0", 13))},
                           {'n', U32(3)}});
}
Bytes PasswordRecord(std::uint32_t key, std::uint32_t flags) {
    return CommonPart('P', flags, key) + U32(1) + U8({1}) + AttributeBlock({{'Z', Utf16(u"PIN")}});
}
// The value message for one control: frame head, count 1, key, size, bytes.
Bytes ValueMessage(std::uint32_t key, const Bytes& value) {
    return FrameHead(7, 2) + U32(1) + U32(key) + U32(static_cast<std::uint32_t>(value.size())) +
           value;
}

class EditorTest : public ProgramTest {
  protected:
    // Activates the row and waits for its editor.
    HWND OpenEditor(int row) {
        SelectRow(row);
        PostCommand(PanelScreen(), IDOK);
        HWND editor = nullptr;
        EXPECT_TRUE(WaitUntil([&] {
            editor = Shell().currentDialog;
            return editor && IsWindowVisible(editor);
        }));
        return editor;
    }
    bool WaitClosed(HWND editor) {
        return WaitUntil([&] { return !IsWindow(editor) && !Shell().currentDialog; });
    }
};

TEST_F(EditorTest, NumberEditorSendsTheTypedNumberFollowsTheDeviceAndBackspaces) {
    OpenPanel({NumberRecord(1, 7, -1)});
    HWND editor = OpenEditor(0);
    EXPECT_EQ(L"0.7", DialogText(editor, IDC_CONTROL_VALUE));
    // The device's update of the value replaces what is shown.
    Send(FrameHead(9, 0) + U32(1) + U32(1) + U32(4) + U32(42));
    ASSERT_TRUE(WaitUntil([&] { return DialogText(editor, IDC_CONTROL_VALUE) == L"4.2"; }));
    // Back takes the character before the caret and leaves the editor open.
    SetDlgItemTextW(editor, IDC_CONTROL_VALUE, L"12*55");
    SendDlgItemMessageW(editor, IDC_CONTROL_VALUE, EM_SETSEL, 5, 5);
    PostCommand(editor, IDCANCEL);
    ASSERT_TRUE(WaitUntil([&] { return DialogText(editor, IDC_CONTROL_VALUE) == L"12*5"; }));
    EXPECT_TRUE(ClientSentNothingMore());
    PostCommand(editor, IDC_DONE);
    EXPECT_EQ(ValueMessage(1, U32(125)), ReadFromClient(36));
    EXPECT_TRUE(WaitClosed(editor));
    EXPECT_EQ(L" 12.5", ColumnTexts(PanelListView(), 0)[0]); // the row shows the stored value
}

TEST_F(EditorTest, ListSelectorBackSendsNothingDoneSendsTheRow) {
    OpenPanel({ListRecord(1, 5)}); // outside the items: nothing selected
    HWND editor = OpenEditor(0);
    HWND list = GetDlgItem(editor, IDC_SELECTOR_LIST);
    EXPECT_EQ(LB_ERR, SendMessageW(list, LB_GETCURSEL, 0, 0));
    SendMessageW(list, LB_SETCURSEL, 2, 0);
    PostCommand(editor, IDCANCEL);
    EXPECT_TRUE(WaitClosed(editor));
    EXPECT_TRUE(ClientSentNothingMore());
    editor = OpenEditor(0);
    PostCommand(editor, IDC_DONE); // still nothing selected: -1 goes out
    EXPECT_EQ(ValueMessage(1, U32(0xFFFFFFFF)), ReadFromClient(36));
}

TEST_F(EditorTest, PasswordChangeNeedsMatchingNewPasswordsAndLogOutSendsEmptyOnes) {
    OpenPanel({PasswordRecord(1, 0x10004), PasswordRecord(2, 0x4)});
    HWND editor = OpenEditor(0);
    EXPECT_EQ(L"Log Out", ShellSoftKeyLabel(editor, kLeftSoftKey));
    SetDlgItemTextW(editor, IDC_PASSWORD, L"old");
    SetDlgItemTextW(editor, IDC_NEW_PASSWORD, L"new1");
    SetDlgItemTextW(editor, IDC_NEW_PASSWORD_AGAIN, L"new2");
    PostCommand(editor, IDC_CHANGE);
    EXPECT_TRUE(boxes.WaitFor(u"The new passwords are not the same.", std::chrono::seconds(5)));
    Sync();
    EXPECT_TRUE(IsWindow(editor));
    EXPECT_TRUE(ClientSentNothingMore());
    PostCommand(editor, IDC_LOG_OUT);
    EXPECT_EQ(ValueMessage(1, Bytes(68, 0)), ReadFromClient(32 + 68));
    EXPECT_TRUE(WaitClosed(editor));
    // Logged in without the change flag: activating logs out at once, with no dialog.
    SelectRow(1);
    PostCommand(PanelScreen(), IDOK);
    EXPECT_EQ(ValueMessage(2, Bytes(68, 0)), ReadFromClient(32 + 68));
    EXPECT_EQ(nullptr, Shell().currentDialog);
}

TEST_F(EditorTest, ABurstOfStepsSendsOneMessageAndListsLoop) {
    OpenPanel({NumberRecord(1, 5, 0), ListRecord(2, 2)});
    SelectRow(0);
    {
        // Holding the store keeps the first step from ending, so the burst is queued whole.
        ControlsHold hold;
        for (int i = 0; i < 3; ++i) PostKey(PanelListView(), VK_RIGHT);
    }
    EXPECT_EQ(ValueMessage(1, U32(8)), ReadFromClient(36));
    EXPECT_TRUE(ClientSentNothingMore());
    SelectRow(1);
    PostKey(PanelListView(), VK_RIGHT);
    EXPECT_EQ(ValueMessage(2, U32(0)), ReadFromClient(36));
    EXPECT_EQ(L" Off", ColumnTexts(PanelListView(), 0)[1]);
}

// A step left waiting for its timer when Back comes goes out before the goodbye, and the next
// panel's steps are sent too.
TEST_F(EditorTest, AStepFollowedAtOnceByBackIsSentAndLaterStepsToo) {
    OpenPanel({NumberRecord(1, 5, 0)});
    SelectRow(0);
    {
        ControlsHold hold;  // both keys are queued before the first is handled
        PostKey(PanelListView(), VK_RIGHT);
        PostCommand(PanelScreen(), IDCANCEL);
    }
    EXPECT_EQ(ValueMessage(1, U32(6)) + kGoodbye, ReadFromClient(36 + 20));
    ExpectClosed();

    ConnectFake();
    SendIdentity(panelName);
    Send(PanelFrame({NumberRecord(1, 5, 0)}));
    ASSERT_TRUE(WaitForPanelRows(1));
    SelectRow(0);
    PostKey(PanelListView(), VK_RIGHT);
    EXPECT_EQ(ValueMessage(1, U32(6)), ReadFromClient(36));
}

TEST_F(EditorTest, DateTimeEditorSendsTheClampedFields) {
    const Bytes when = U8({0, 30, 7, 1, 2, 1}) + U16(2030);  // s m h day weekday month, year
    OpenPanel({CommonPart('D', 0xED0004, 1) + U32(8) + when +
               AttributeBlock({{'Z', Utf16(u"Alarm")}, {'f', Utf16(u"%HH%:%mm%")}})});
    HWND editor = OpenEditor(0);
    EXPECT_EQ(L"2030", DialogText(editor, IDC_YEAR)) << "no thousands separator";
    SetDlgItemTextW(editor, IDC_HOUR, L"8");
    SetDlgItemTextW(editor, IDC_DAY, L"31");
    SetDlgItemTextW(editor, IDC_MONTH, L"2");
    PostCommand(editor, IDC_DONE);
    EXPECT_EQ(Hex(ValueMessage(1, U8({0, 30, 8, 28, 7, 2}) + U16(2030))), Hex(ReadFromClient(40)))
        << "day 31 of February 2030 is the 28th; with date fields and no weekday field, 7";
    EXPECT_TRUE(WaitClosed(editor));
}

TEST_F(EditorTest, SessionEndWithStayOpenKeepsTheEditorAndScreenAndClosesTheSocket) {
    OpenPanel({NumberRecord(1, 7, 0)}, 0x10);
    HWND editor = OpenEditor(0);
    Send(FrameHead(1, 0));
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    ASSERT_TRUE(WaitUntil([] { return Devices().socket == plat::kInvalidSocket; }));
    Sync();
    EXPECT_TRUE(IsWindow(editor));
    EXPECT_TRUE(PanelScreenOpen());
    EXPECT_EQ(-1, App().currentDevice);
    PostCommand(editor, IDC_DONE);  // nothing to send it on
    EXPECT_TRUE(WaitClosed(editor));
    PostCommand(PanelScreen(), IDC_DONE);  // the screen still leaves
    ExpectClosed();
}

TEST_F(EditorTest, TheLinkEndingClosesTheEditorAndTheScreenWithoutSending) {
    OpenPanel({NumberRecord(1, 7, 0)});
    HWND editor = OpenEditor(0);
    SetDlgItemTextW(editor, IDC_CONTROL_VALUE, L"99");
    Send(FrameHead(1, 0));
    EXPECT_EQ(kGoodbye, ReadFromClient(20));
    EXPECT_TRUE(WaitClosed(editor));
    EXPECT_TRUE(ClientSentNothingMore());
    ExpectClosed();
}

} // namespace
} // namespace app_testing
