#include "panel/backspace.h"

#include <gtest/gtest.h>

TEST(Backspace, TakesTheCharacterBeforeTheCaretOrTheSelection) {
    struct Case {
        const char16_t* text;
        std::size_t start, end;
        const char16_t* after;
        std::size_t caret;
    } cases[] = {
        {u"12345", 3, 3, u"1245", 2},   // caret inside: the character before it
        {u"12345", 0, 0, u"12345", 0},  // caret at the start: nothing
        {u"12345", 1, 4, u"15", 1},     // a selection goes whole
        {u"12345", 4, 1, u"15", 1},     // in either order
        {u"12345", 0, 5, u"", 0},       // all selected, as an editor opens
        {u"12", 9, 9, u"1", 1},         // positions past the end are the end
    };
    for (const Case& c : cases) {
        BackspaceResult r = Backspace(c.text, c.start, c.end);
        EXPECT_EQ(std::u16string(c.after), r.text) << c.start << "-" << c.end;
        EXPECT_EQ(c.caret, r.caret) << c.start << "-" << c.end;
        EXPECT_EQ(r.text != c.text, r.changed);
    }
}
