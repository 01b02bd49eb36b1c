#include "panel/control_styles.h"

#include "model/control_record.h"

namespace {

constexpr const char16_t* kText[] = {u"Text"};
constexpr const char16_t* kButton[] = {u"Button"};
constexpr const char16_t* kCheckBox[] = {u"Check Box"};
constexpr const char16_t* kSection[] = {u"Section"};
constexpr const char16_t* kDateTime[] = {u"Date Time"};
constexpr const char16_t* kNumber[] = {u"Number", u"Number (No Spin)"};
constexpr const char16_t* kChart[] = {u"Line Chart", u"Column Chart", u"Points Chart",
                                      u"Data Table"};
constexpr const char16_t* kPassword[] = {u"Password"};
constexpr const char16_t* kList[] = {u"Looping List", u"List (No Loop)", u"List (No Spin)"};
constexpr const char16_t* kMessage[] = {u"Message"};
constexpr const char16_t* kBlob[] = {u"Blob"};
constexpr const char16_t* kFiles[] = {u"Files"};
constexpr const char16_t* kUnknown[] = {u"Unknown"};
constexpr const char16_t* kImage[] = {u"Image"};

constexpr const char16_t* kFastKeys[] = {
    u"None",      u"'1' key", u"'2' key", u"'3' key", u"'4' key", u"'5' key", u"'6' key",
    u"'7' key",   u"'8' key", u"'9' key", u"'*' key", u"'0' key", u"'#' key"};

constexpr const char16_t* kValueShows[] = {u"Show Value", u"Don't Show Value", u"' ' Prefix",
                                           u"':' Prefix", u"': ' Prefix"};

}  // namespace

std::span<const char16_t* const> StyleNames(std::uint16_t type) {
    switch (type) {
    case kTypeText: return kText;
    case kTypeButton: return kButton;
    case kTypeCheckBox: return kCheckBox;
    case kTypeSection: return kSection;
    case kTypeDateTime: return kDateTime;
    case kTypeNumber: return kNumber;
    case kTypeChart: return kChart;
    case kTypePassword: return kPassword;
    case kTypeList: return kList;
    case kTypeMessage: return kMessage;
    case kTypeBlob: return kBlob;
    case kTypeFiles: return kFiles;
    case kTypeUnknown: return kUnknown;
    case kTypeImage: return kImage;
    default: return {};
    }
}

std::span<const char16_t* const> FastKeyNames() { return kFastKeys; }

std::span<const char16_t* const> ValueShowNames() { return kValueShows; }
