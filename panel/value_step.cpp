#include "panel/value_step.h"

#include "model/control_store.h"
#include "model/device_settings.h"
#include "panel/control_styles.h"

#include <limits>

std::int32_t StepNumber(std::int32_t value, int d, std::uint32_t flags, std::int32_t minimum,
                        std::int32_t maximum) {
    // In 64 bits: a step past the 32-bit ends holds there instead of overflowing.
    long long v = static_cast<long long>(value) + d;
    if ((flags & kFlagMinimum) && v < minimum) v = minimum;
    if ((flags & kFlagMaximum) && v > maximum) v = maximum;
    if (v < std::numeric_limits<std::int32_t>::min() ||
        v > std::numeric_limits<std::int32_t>::max()) {
        return value;
    }
    return static_cast<std::int32_t>(v);
}

std::int32_t StepListIndex(std::int32_t index, int d, std::uint32_t count, std::int32_t style) {
    const long long last = static_cast<long long>(count) - 1;
    const long long v = static_cast<long long>(index) + d;
    const bool loops = style != kStyleListNoLoop;
    if (v < 0) return static_cast<std::int32_t>(loops ? last : 0);
    if (v > last) return static_cast<std::int32_t>(loops ? 0 : last);
    return static_cast<std::int32_t>(v);
}

ValueStep StepControlValue(std::uint32_t controlId, bool up) {
    ControlsHold hold;
    ValueStep result;
    const ControlRecord* r = FindControl(controlId);
    if (!r) return result;
    const int d = up ? 1 : -1;
    const std::int32_t style = ReadDeviceSetting(controlId, kSettingLayoutStyle, 0);
    std::int32_t old = 0;
    std::int32_t next = 0;
    std::size_t size = sizeof old;
    if (r->type == kTypeNumber) {
        if (style == kStyleNumberNoSpin || !(r->flags & kFlagVariant)) return result;
        const std::uint32_t flags = r->flags;
        const std::int32_t minimum = r->minimum, maximum = r->maximum;
        GetControlValue(controlId, &old, &size);
        next = StepNumber(old, d, flags, minimum, maximum);
    } else if (r->type == kTypeList && style != kStyleListNoSpin) {
        // An empty list has no index to step to.
        if (r->itemCount == 0) return result;
        const std::uint32_t count = r->itemCount;
        GetControlValue(controlId, &old, &size);
        next = StepListIndex(old, d, count, style);
    } else {
        return result;
    }
    if (next == old) return result;
    SetControlValue(controlId, &next, sizeof next);
    result.changed = true;
    return result;
}
