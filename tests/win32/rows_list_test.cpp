// The panel rows in a real list view: a window with the panel's list stands in for the panel
// screen, and a plain window records what a data view would be sent.
#include "panel/fast_keys.h"
#include "panel/message_control.h"
#include "panel/win32/control_rows.h"
#include "res/resource.h"
#include "shell/shell_state.h"
#include "tests/panel/panel_fixture.h"

#include <commctrl.h>

namespace {

using namespace panel_testing;
using testing_support::WaitUntil;
using Sent = std::vector<std::pair<UINT, WPARAM>>;

Sent g_viewMessages;

LRESULT CALLBACK DataViewProc(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_APP || message == WM_APP + 1) g_viewMessages.emplace_back(message, w);
    return DefWindowProcW(window, message, w, l);
}

HWND Window(const wchar_t* type, DWORD style, HWND parent = nullptr, int id = 0) {
    return CreateWindowExW(0, type, L"", style, 0, 0, 220, 100, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

struct Row {
    std::u16string text;
    int image;
    std::uint32_t id;
    std::u16string key;
    bool operator==(const Row&) const = default;
};
void PrintTo(const Row& r, std::ostream* out) {
    *out << '"' << plat::Utf16ToUtf8(r.text) << "\" image " << r.image << " id " << r.id
         << " key \"" << plat::Utf16ToUtf8(r.key) << '"';
}

class RowsWindow : public PanelTest {
protected:
    // One set of windows for the suite: without a window manager, Wine waits on every
    // top-level window that goes away.
    static void SetUpTestSuite() {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
        InitCommonControlsEx(&controls);
        WNDCLASSW viewClass{};
        viewClass.lpfnWndProc = DataViewProc;
        viewClass.lpszClassName = L"RowsTestDataView";
        RegisterClassW(&viewClass);
        dialog = Window(L"STATIC", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
        mainWindow = Window(L"STATIC", WS_OVERLAPPEDWINDOW);
        view = Window(L"RowsTestDataView", WS_POPUP);
        list = Window(WC_LISTVIEWW, WS_CHILD | WS_VISIBLE | LVS_REPORT, dialog, IDC_PANEL_LIST);
        images = ImageList_Create(16, 16, ILC_COLOR24, 22, 0);
        ListView_SetImageList(list, images, LVSIL_SMALL);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 200;
        ListView_InsertColumn(list, 0, &column);
        column.cx = 14;
        ListView_InsertColumn(list, 1, &column);
    }
    static void TearDownTestSuite() {
        for (HWND w : {view, dialog, mainWindow}) DestroyWindow(w);
        ImageList_Destroy(images);
    }
    void SetUp() override {
        PanelTest::SetUp();
        ASSERT_TRUE(dialog && list && mainWindow && view);
        ListView_DeleteAllItems(list);
        Shell().mainWindow = mainWindow;
        Shell().panelScreen = dialog;
        Shell().listWidth = 176;
        ClearFastKeys(FastKeys());
        g_viewMessages.clear();
    }
    void TearDown() override {
        Shell() = ShellState{};
        PanelTest::TearDown();
    }

    std::vector<Row> Rows() {
        std::vector<Row> rows;
        for (int i = 0; i < ListView_GetItemCount(list); ++i) {
            wchar_t text[1024] = {}, key[8] = {};
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
            item.iItem = i;
            item.pszText = text;
            item.cchTextMax = 1024;
            ListView_GetItem(list, &item);
            ListView_GetItemText(list, i, 1, key, 8);
            rows.push_back({reinterpret_cast<char16_t*>(text), item.iImage,
                            static_cast<std::uint32_t>(item.lParam),
                            reinterpret_cast<char16_t*>(key)});
        }
        return rows;
    }
    int Selected() { return ListView_GetNextItem(list, -1, LVNI_SELECTED); }

    static inline HWND dialog, mainWindow, list, view;
    static inline HIMAGELIST images;
};

TEST_F(RowsWindow, FillShowsTextsImagesIdsAndKeysAndKeepsTheSelection) {
    SetControls({NumberControl(5, u"Volt", 1234, u"%n V", 1, -2, 0x100000),
                 TextControl(7, u"Say", u"hi", 0, kTypeMessage), CheckControl(8, u"Lamp", 255)});
    SetLayout(5, kSettingLayoutTitleLength, 4);
    SetLayout(5, kSettingLayoutValueShow, 4);
    FillControlRows(dialog);
    EXPECT_EQ((std::vector<Row>{{u" Volt: 12.3 V", 13, 5, u"1"}, {u" Lamp", 3, 8, u"2"}}), Rows());
    EXPECT_EQ(0, Selected());
    EXPECT_EQ(8u, FastKeys().controlIds[1]);
    wchar_t title[64] = {};
    GetWindowTextW(mainWindow, title, 64);
    EXPECT_EQ(LinkPanelId(), std::u16string(reinterpret_cast<char16_t*>(title)));
    EXPECT_EQ(list, GetFocus());
    EXPECT_EQ(162, ListView_GetColumnWidth(list, 0));

    SetControls(Buttons(14));
    FillControlRows(dialog);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemState(list, 12, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    FillControlRows(dialog);
    EXPECT_EQ(12, Selected());
    std::vector<Row> rows = Rows();
    EXPECT_EQ((std::vector<std::u16string>{u"*", u"0", u"#", u""}),
              (std::vector<std::u16string>{rows[9].key, rows[10].key, rows[11].key, rows[12].key}));
    EXPECT_EQ(156, ListView_GetColumnWidth(list, 0)) << "room for the scroll bar";

    SetControls(Buttons(40));  // the desktop's scroll bar is wider than the handset's room
    MoveWindow(list, 0, 0, Shell().listWidth, 200, TRUE);
    FillControlRows(dialog);
    RECT inside;
    GetClientRect(list, &inside);
    EXPECT_LE(ListView_GetColumnWidth(list, 0) + ListView_GetColumnWidth(list, 1), inside.right);
}

TEST_F(RowsWindow, ValueUpdatesRefreshOnlyMarkedRowsAndTellTheDataView) {
    SetControls({NumberControl(1, u"N", 1, u"%%", 0, 0), CheckControl(2, u"C", 0),
                 NumberControl(3, u"M", 1, u"%%", 0, 0), Control(4, kTypeButton, u"B")});
    FillControlRows(dialog);
    Shell().currentDialog = view;
    {
        ControlsHold hold;
        Record(0).rawValue = 42;
        Record(0).valueChanged = 1;
        Record(1).checkByte = 255;
        Record(1).valueChanged = 1;
        Record(2).rawValue = 99;  // without its mark: left alone
        Record(3) = TextControl(4, u"M", u"x", 0, kTypeMessage);
        Record(3).valueChanged = 1;
    }
    RefreshChangedRows(dialog);
    std::vector<Row> rows = Rows();
    EXPECT_EQ(u" 42", rows[0].text);
    EXPECT_EQ(3, rows[1].image);
    EXPECT_EQ(u" 1", rows[2].text);
    EXPECT_EQ((Sent{{WM_APP, 1}, {WM_APP, 2}}), g_viewMessages);
    EXPECT_TRUE(boxes.HasFault(1615, "controllist", 10)) << "a Message in a row";
}

TEST_F(RowsWindow, LayoutUpdatesHideShowBringIntoViewAndRaiseMessages) {
    SetControls(Buttons(30));
    Controls().records.push_back(TextControl(31, u"M", u"Tank empty", 0x20000, kTypeMessage));
    FillControlRows(dialog);
    Shell().currentDialog = view;
    {
        ControlsHold hold;
        Record(1).flags |= kFlagHidden;
        Record(1).layoutChanged = 1;
        Record(30).layoutChanged = 1;  // the Message stands at the row count: announced
    }
    RefreshLayoutChanges(dialog);
    ASSERT_EQ(29u, Rows().size());
    EXPECT_EQ(3u, Rows()[1].id);
    {
        ControlsHold hold;
        Record(1).flags &= ~kFlagHidden;
        Record(1).layoutChanged = 1;
        Record(29).flags |= kFlagBringIntoView;
        Record(29).layoutChanged = 1;
    }
    RefreshLayoutChanges(dialog);
    ASSERT_EQ(30u, Rows().size());
    EXPECT_EQ(2u, Rows()[1].id);
    EXPECT_GT(ListView_GetTopIndex(list), 0) << "the last row scrolled into view";
    EXPECT_EQ((Sent{{WM_APP + 1, 0}}), g_viewMessages);
    ASSERT_TRUE(boxes.WaitFor(u"Tank empty", std::chrono::seconds(5)));
    EXPECT_EQ(plat::kMbIconHand, boxes.Boxes().at(0).flags);
    EXPECT_TRUE(WaitUntil([] { return OpenMessageBoxes() == 0; }));
}

TEST_F(RowsWindow, FocusComesBackToTheListWhenTheBoxCloses) {
    SetControls({Control(1, kTypeButton, u"B"), TextControl(2, u"M", u"hi", 0, kTypeMessage)});
    FillControlRows(dialog);
    SetFocus(dialog);
    ASSERT_EQ(dialog, GetFocus());
    ShowMessageControl(2);
    // The box thread moves this thread's focus: keep the messages flowing meanwhile.
    EXPECT_TRUE(WaitUntil([&] {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        return OpenMessageBoxes() == 0 && GetFocus() == list;
    }));
    EXPECT_TRUE(boxes.Has(u"hi"));
}

}  // namespace
