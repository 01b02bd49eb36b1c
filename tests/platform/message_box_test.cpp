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
}
