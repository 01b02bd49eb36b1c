#include "panel/fast_keys.h"

namespace {

FastKeyTable g_fastKeys;

bool IsFastKey(int key) { return key >= 1 && key <= kFastKeyCount; }

}  // namespace

FastKeyTable& FastKeys() { return g_fastKeys; }

void ClearFastKeys(FastKeyTable& table) { table = FastKeyTable{}; }

void AssignFastKey(FastKeyTable& table, int key, std::uint32_t controlId, std::int32_t row) {
    if (!IsFastKey(key)) return;
    table.controlIds[key - 1] = controlId;
    table.rows[key - 1] = row;
}

const char16_t* FastKeyLabel(int key) {
    static const char16_t* const kLabels[kFastKeyCount] = {u"1", u"2", u"3", u"4", u"5", u"6",
                                                           u"7", u"8", u"9", u"*", u"0", u"#"};
    return IsFastKey(key) ? kLabels[key - 1] : u"";
}
