// A panel in the store for the row tests: records built in a line each, layout settings kept
// under a panel name of the test's own, and every message box recorded.
#pragma once

#include "link/link_client.h"
#include "model/control_store.h"
#include "model/device_settings.h"
#include "platform/utf.h"
#include "tests/support/recorders.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace panel_testing {

inline ControlRecord Control(std::uint32_t id, std::uint16_t type, std::u16string label,
                             std::uint32_t flags = 0) {
    ControlRecord r;
    r.controlKey = id;
    r.type = type;
    r.label = std::move(label);
    r.flags = flags;
    return r;
}

// A Text (or Message) control holding text, with room for maxLength characters.
inline ControlRecord TextControl(std::uint32_t id, std::u16string label, std::u16string text,
                                 std::uint32_t flags = 0, std::uint16_t type = kTypeText) {
    ControlRecord r = Control(id, type, std::move(label), flags);
    r.maxLength = static_cast<std::uint32_t>(text.size() + 8);
    r.text.Resize(r.maxLength * 2);
    text.copy(r.text.Units(), text.size());
    return r;
}

inline ControlRecord NumberControl(std::uint32_t id, std::u16string label, std::int32_t value,
                                   std::u16string pattern, std::int8_t decimals,
                                   std::int8_t exponent, std::uint32_t flags = 0) {
    ControlRecord r = Control(id, kTypeNumber, std::move(label), flags);
    r.rawValue = value;
    r.format = std::move(pattern);
    r.hasFormat = true;
    r.decimals = decimals;
    r.exponent = exponent;
    return r;
}

// Items as the wire gives them: each ends with a zero character.
inline ControlRecord ListControl(std::uint32_t id, std::u16string label,
                                 const std::vector<std::u16string>& items, std::int32_t index) {
    ControlRecord r = Control(id, kTypeList, std::move(label));
    for (const auto& item : items) {
        r.items += item;
        r.items += u'\0';
    }
    r.itemCount = static_cast<std::uint32_t>(items.size());
    r.selectedIndex = index;
    return r;
}

inline ControlRecord CheckControl(std::uint32_t id, std::u16string label, std::uint8_t value,
                                  std::uint32_t group = 0, std::uint32_t flags = 0) {
    ControlRecord r = Control(id, kTypeCheckBox, std::move(label), flags);
    r.checkByte = value;
    r.group = group;
    return r;
}

// Buttons 1 to count, each labelled "B".
inline std::vector<ControlRecord> Buttons(std::uint32_t count) {
    std::vector<ControlRecord> records;
    for (std::uint32_t i = 1; i <= count; ++i) records.push_back(Control(i, kTypeButton, u"B"));
    return records;
}

class PanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        LinkInit();
        SetSettingsPanelName(plat::Utf8ToUtf16(testing_support::UniqueName("rows")));
    }
    void TearDown() override {
        {
            ControlsHold hold;
            Controls().records.clear();
        }
        LinkShutdown();
    }
    void SetControls(std::vector<ControlRecord> records) {
        ControlsHold hold;
        Controls().records = std::move(records);
    }
    ControlRecord& Record(std::size_t index) { return Controls().records.at(index); }
    void SetLayout(std::uint32_t id, std::uint32_t kind, std::int32_t value) {
        ASSERT_EQ(0, WriteDeviceSetting(id, kind, static_cast<std::uint32_t>(value)));
    }

    testing_support::TempFolder folder;
    testing_support::MessageBoxRecorder boxes;
};

}  // namespace panel_testing
