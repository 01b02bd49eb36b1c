#include "platform/message_box.h"
#include "tests/support/recorders.h"

#include <gtest/gtest.h>

TEST(MessageBox, TheFaultBoxHasItsTextAndAnEmptyCaption) {
    testing_support::MessageBoxRecorder boxes;
    plat::ShowFaultBox(fault::kUnknownType, -1);
    ASSERT_EQ(1u, boxes.Count());
    auto box = boxes.Boxes()[0];
    EXPECT_EQ(u"At 547 file tmqbthppcvcomclt, val=-1", box.text);
    EXPECT_EQ(u"", box.caption);
    EXPECT_EQ(0u, box.flags);
    EXPECT_TRUE(boxes.HasFault(547, "tmqbthppcvcomclt", -1));
    EXPECT_TRUE(boxes.HasFaultLine(547));
    EXPECT_FALSE(boxes.HasFaultLine(54));
}

TEST(MessageBox, CaptionedBoxesKeepTheirFlags) {
    testing_support::MessageBoxRecorder boxes;
    EXPECT_EQ(plat::kIdOk, plat::ShowMessageBox(nullptr, u"Unable to connect to X", u"Tremolanth",
                                                plat::kMbIconHand));
    auto box = boxes.Boxes().at(0);
    EXPECT_EQ(u"Tremolanth", box.caption);
    EXPECT_EQ(0x10u, box.flags);
}
