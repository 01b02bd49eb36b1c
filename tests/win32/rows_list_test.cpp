// The panel rows in a real list view: a small window with a report list of id 1002 stands in
// for the panel screen, and a plain window records what a data view would be sent.
#include "app/app_state.h"
#include "panel/fast_keys.h"
#include "panel/message_control.h"
#include "panel/win32/control_rows.h"
#include "tests/panel/panel_fixture.h"

#include <commctrl.h>

#include <string>
#include <vector>

namespace {

using namespace panel_testing;
using testing_support::WaitUntil;

std::vector<std::pair<UINT, WPARAM>> g_viewMessages;

LRESULT CALLBACK DataViewProc(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_APP || message == WM_APP + 1) g_viewMessages.emplace_back(message, w);
    return DefWindowProcW(window, message, w, l);
}

void PumpMessages() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

struct Row {
    std::u16string text;
    int image;
    std::uint32_t id;
    std::u16string key;
};

class RowsWindow : public PanelTest {
protected:
    // One window for the whole suite: without a window manager, Wine waits on every
    // top-level window that goes away.
    static void SetUpTestSuite() {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
        InitCommonControlsEx(&controls);
        WNDCLASSW viewClass{};
        viewClass.lpfnWndProc = DataViewProc;
        viewClass.hInstance = GetModuleHandleW(nullptr);
        viewClass.lpszClassName = L"RowsTestDataView";
        RegisterClassW(&viewClass);
        dialog = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 240,
                                 200, nullptr, nullptr, nullptr, nullptr);
        mainWindow = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                     nullptr, nullptr, nullptr, nullptr);
        list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0,
                               220, 100, dialog, reinterpret_cast<HMENU>(kPanelListId), nullptr,
                               nullptr);
        images = ImageList_Create(16, 16, ILC_COLOR24, 22, 0);
        SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
        for (int column = 0; column < 2; ++column) {
            LVCOLUMNW c{};
            c.mask = LVCF_WIDTH;
            c.cx = column == 0 ? 200 : 14;
            SendMessageW(list, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&c));
        }
        view = CreateWindowExW(0, L"RowsTestDataView", L"", WS_POPUP, 0, 0, 10, 10, nullptr,
                               nullptr, nullptr, nullptr);
    }

    static void TearDownTestSuite() {
        DestroyWindow(view);
        DestroyWindow(dialog);
        DestroyWindow(mainWindow);
        ImageList_Destroy(images);
    }

    void SetUp() override {
        PanelTest::SetUp();
        ASSERT_TRUE(dialog && list && mainWindow && view);
        SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
        App().mainWindow = mainWindow;
        App().panelScreen = dialog;
        App().listWidth = 176;
        ClearFastKeys(FastKeys());
        g_viewMessages.clear();
    }

    void TearDown() override {
        App() = AppState{};
        PanelTest::TearDown();
    }

    void OpenDataView() { App().currentDialog = view; }

    std::vector<Row> Rows() {
        std::vector<Row> rows;
        int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            wchar_t text[1024] = {}, key[8] = {};
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
            item.iItem = i;
            item.pszText = text;
            item.cchTextMax = 1024;
            SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            LVITEMW sub{};
            sub.iSubItem = 1;
            sub.pszText = key;
            sub.cchTextMax = 8;
            SendMessageW(list, LVM_GETITEMTEXTW, i, reinterpret_cast<LPARAM>(&sub));
            rows.push_back({reinterpret_cast<char16_t*>(text), item.iImage,
                            static_cast<std::uint32_t>(item.lParam),
                            reinterpret_cast<char16_t*>(key)});
        }
        return rows;
    }

    std::vector<std::uint32_t> RowIds() {
        std::vector<std::uint32_t> ids;
        for (const Row& row : Rows()) ids.push_back(row.id);
        return ids;
    }

    int Selected() {
        return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1),
                                             LVNI_SELECTED));
    }

    // A panel of n buttons with titles shown.
    void Buttons(std::uint32_t n) {
        std::vector<ControlRecord> records;
        for (std::uint32_t i = 1; i <= n; ++i) {
            records.push_back(Control(i, kTypeButton, u"B" + plat::Utf8ToUtf16(std::to_string(i))));
        }
        SetControls(records);
    }

    static inline HWND dialog = nullptr, mainWindow = nullptr, list = nullptr, view = nullptr;
    static inline HIMAGELIST images = nullptr;
};

TEST_F(RowsWindow, FillShowsTextsImagesIdsAndKeys) {
    SetControls({NumberControl(5, u"Volt", 1234, u"%n V", 1, -2, 0x100000),
                 Control(6, kTypeButton, u"Hidden", kFlagHidden),
                 TextControl(7, u"Say", u"hi", 0, kTypeMessage), CheckControl(8, u"Lamp", 255),
                 ListControl(9, u"Mode", {u"Off", u"On"}, 5)});
    SetLayout(5, kSettingLayoutTitleLength, 4);
    SetLayout(5, kSettingLayoutValueShow, 4);
    SetLayout(8, kSettingLayoutTitleLength, 4);
    SetLayout(8, kSettingLayoutValueShow, 1);
    FillControlRows(dialog);

    std::vector<Row> rows = Rows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ(u" Volt: 12.3 V", rows[0].text);
    EXPECT_EQ(13, rows[0].image);
    EXPECT_EQ(5u, rows[0].id);
    EXPECT_EQ(u"1", rows[0].key);
    EXPECT_EQ(u" Lamp", rows[1].text);
    EXPECT_EQ(3, rows[1].image);
    EXPECT_EQ(u"2", rows[1].key);
    EXPECT_EQ(u"", rows[2].text) << "a list index outside its items";
    EXPECT_EQ(9u, rows[2].id);

    EXPECT_EQ(0, Selected());
    EXPECT_EQ(8u, FastKeys().controlIds[1]);
    EXPECT_EQ(1, FastKeys().rows[1]);
    EXPECT_EQ(162, SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0));
    wchar_t title[64] = {};
    GetWindowTextW(mainWindow, title, 64);
    EXPECT_EQ(LinkPanelId(), std::u16string(reinterpret_cast<char16_t*>(title)));
    EXPECT_EQ(list, GetFocus());
}

TEST_F(RowsWindow, KeysAndColumnWidthWithManyRowsAndCustomKeys) {
    Buttons(14);
    FillControlRows(dialog);
    std::vector<Row> rows = Rows();
    ASSERT_EQ(14u, rows.size());
    EXPECT_EQ(u"*", rows[9].key);
    EXPECT_EQ(u"#", rows[11].key);
    EXPECT_EQ(u"", rows[12].key);
    EXPECT_EQ(156, SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0));

    SetLayout(3, kSettingLayoutFastKey, 11);
    FillControlRows(dialog);
    rows = Rows();
    EXPECT_EQ(u"0", rows[2].key);
    EXPECT_EQ(u"", rows[0].key);
    EXPECT_EQ(3u, FastKeys().controlIds[10]);
    EXPECT_EQ(1u, FastKeys().controlIds[0]) << "key 1 keeps what the earlier fill gave it";
}

TEST_F(RowsWindow, FillKeepsTheSelectionWhileTheRowStillExists) {
    Buttons(5);
    FillControlRows(dialog);
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, 3, reinterpret_cast<LPARAM>(&state));
    FillControlRows(dialog);
    EXPECT_EQ(3, Selected());
    Buttons(2);
    FillControlRows(dialog);
    EXPECT_EQ(0, Selected());
    SetControls({});
    FillControlRows(dialog);
    EXPECT_TRUE(Rows().empty());
}

TEST_F(RowsWindow, ValueUpdatesRefreshOnlyMarkedRowsAndTellTheDataView) {
    SetControls({NumberControl(1, u"N", 1, u"%%", 0, 0), CheckControl(2, u"C", 0),
                 NumberControl(3, u"M", 1, u"%%", 0, 0)});
    FillControlRows(dialog);
    OpenDataView();
    {
        ControlsHold hold;
        Record(0).rawValue = 42;
        Record(0).valueChanged = 1;
        Record(1).checkByte = 255;
        Record(1).valueChanged = 1;
        Record(2).rawValue = 99;  // changed without its mark: left alone
    }
    RefreshChangedRows(dialog);
    std::vector<Row> rows = Rows();
    EXPECT_EQ(u" 42", rows[0].text);
    EXPECT_EQ(3, rows[1].image);
    EXPECT_EQ(u" 1", rows[2].text);
    EXPECT_EQ((std::vector<std::pair<UINT, WPARAM>>{{WM_APP, 1}, {WM_APP, 2}}), g_viewMessages);
    EXPECT_EQ(0, IsValueChanged(1));
}

TEST_F(RowsWindow, AMessageControlInARowIsAFault) {
    SetControls({Control(1, kTypeButton, u"B")});
    FillControlRows(dialog);
    {
        ControlsHold hold;
        Record(0) = TextControl(1, u"M", u"x", 0, kTypeMessage);
        Record(0).valueChanged = 1;
    }
    RefreshChangedRows(dialog);
    EXPECT_TRUE(boxes.HasFault(1615, "controllist", 10));
}

TEST_F(RowsWindow, LayoutUpdatesHideShowAndBringIntoView) {
    Buttons(30);
    FillControlRows(dialog);
    OpenDataView();
    {
        ControlsHold hold;
        Record(1).flags |= kFlagHidden;
        Record(1).layoutChanged = 1;
    }
    RefreshLayoutChanges(dialog);
    std::vector<std::uint32_t> ids = RowIds();
    ASSERT_EQ(29u, ids.size());
    EXPECT_EQ(3u, ids[1]);

    {
        ControlsHold hold;
        Record(1).flags &= ~kFlagHidden;
        Record(1).layoutChanged = 1;
        Record(29).flags |= kFlagBringIntoView;
        Record(29).layoutChanged = 1;
    }
    RefreshLayoutChanges(dialog);
    ids = RowIds();
    ASSERT_EQ(30u, ids.size());
    EXPECT_EQ(2u, ids[1]);
    EXPECT_GT(SendMessageW(list, LVM_GETTOPINDEX, 0, 0), 0) << "the last row scrolled into view";
    EXPECT_EQ((std::vector<std::pair<UINT, WPARAM>>{{WM_APP + 1, 0}}), g_viewMessages);
}

TEST_F(RowsWindow, ALayoutUpdateRaisesTheMessageBox) {
    SetControls({Control(1, kTypeButton, u"B"),
                 TextControl(2, u"M", u"Tank empty", 0x20000, kTypeMessage)});
    FillControlRows(dialog);
    {
        ControlsHold hold;
        Record(1).layoutChanged = 1;
    }
    RefreshLayoutChanges(dialog);
    ASSERT_TRUE(boxes.WaitFor(u"Tank empty", std::chrono::seconds(5)));
    EXPECT_EQ(plat::kMbIconHand, boxes.Boxes().at(0).flags);
    EXPECT_EQ(LinkPanelId(), boxes.Boxes().at(0).caption);
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 0; }));
    EXPECT_EQ(1u, RowIds().size());
}

TEST_F(RowsWindow, FocusComesBackToTheListWhenTheBoxCloses) {
    SetControls({Control(1, kTypeButton, u"B"), TextControl(2, u"M", u"hi", 0, kTypeMessage)});
    FillControlRows(dialog);
    HWND other = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 150, 50, 20, dialog,
                                 nullptr, nullptr, nullptr);
    struct Gone {
        HWND window;
        ~Gone() { DestroyWindow(window); }
    } gone{other};
    SetFocus(other);
    ASSERT_EQ(other, GetFocus());
    ShowMessageControl(2);
    ASSERT_TRUE(boxes.WaitFor(u"hi", std::chrono::seconds(5)));
    // The box thread changes the focus of this thread's windows: keep the messages flowing.
    EXPECT_TRUE(WaitUntil([&] {
        PumpMessages();
        return OpenMessageBoxes() == 0 && GetFocus() == list;
    }));
}

TEST_F(RowsWindow, ToggleCheckRowRedrawsTheGroup) {
    SetControls({CheckControl(1, u"A", 255, 7), CheckControl(2, u"B", 0, 7),
                 CheckControl(3, u"C", 0), CheckControl(4, u"D", 255, 8)});
    FillControlRows(dialog);
    ToggleCheckRow(dialog, 2, 1);
    std::vector<Row> rows = Rows();
    EXPECT_EQ(6, rows[0].image);
    EXPECT_EQ(5, rows[1].image);
    EXPECT_EQ(4, rows[2].image);
    EXPECT_EQ(5, rows[3].image) << "another group";
    ToggleCheckRow(dialog, 3, 2);
    EXPECT_EQ(3, Rows()[2].image);
    EXPECT_EQ(255, Record(2).checkByte);
}

}  // namespace
