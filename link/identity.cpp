// Identity texts (type 2) and settings records (type 19).
#include "link/bytes.h"
#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/text_convert.h"
#include "link/wire.h"
#include "platform/program_lock.h"
#include "model/device_settings.h"

#include <vector>

namespace {

// A counted text; false (with *code set) on a read failure or a length over the ceiling.
bool ReadText(ReceiveSource& source, bool utf16, std::u16string* text, std::int32_t* code) {
    std::uint8_t count[4];
    if ((*code = LinkReceive(source, count, 4)) != 0) return false;
    std::uint32_t n = bytes::Get32(count);
    if (n > limits::kMaxIdentityText) {
        *code = kDecodeMalformed;
        return false;
    }
    std::vector<std::uint8_t> data(n);
    if ((*code = LinkReceive(source, data.data(), n)) != 0) return false;
    *text = WireText(data.data(), n, utf16);
    return true;
}

}  // namespace

std::int32_t DecodeIdentity(ReceiveSource& source, std::uint16_t headerFlags) {
    LinkClient& link = Link();
    {
        plat::ProgramLockHold hold;
        link.panelId.clear();
        link.panelIdPresent = false;
        link.serverText.clear();
        link.serverTextPresent = false;
        SetSettingsPanelName(u"");
    }
    link.sessionFlagB = (headerFlags & wire::kFlagNoSessionB) ? 0 : 1;
    link.sessionFlagA = (headerFlags & wire::kFlagNoPings) ? 0 : 1;

    std::int32_t code;
    std::u16string first, second;
    if (!ReadText(source, (headerFlags & wire::kFlagIdentityUtf16) != 0, &first, &code)) {
        return code;
    }
    {
        plat::ProgramLockHold hold;
        link.panelId = first.substr(0, first.find(u'\0'));
        link.panelIdPresent = true;
        // Settings are kept per panel name: from now on they are this panel's.
        SetSettingsPanelName(link.panelId);
    }
    link.sessionFlagC = (headerFlags & wire::kFlagStayOpen) ? 1 : 0;
    if (!ReadText(source, true, &second, &code)) return code;
    plat::ProgramLockHold hold;
    link.serverText = second.substr(0, second.find(u'\0'));
    link.serverTextPresent = true;
    return 0;
}

std::int32_t DecodeSettings(ReceiveSource& source) {
    std::uint8_t word[4];
    if (std::int32_t rc = LinkReceive(source, word, 4)) return rc;
    std::int32_t count = static_cast<std::int32_t>(bytes::Get32(word));
    if (count > limits::kMaxSettingsRecords) return kDecodeMalformed;
    for (std::int32_t i = 0; i < count; ++i) {
        std::uint8_t record[12];
        if (std::int32_t rc = LinkReceive(source, record, 12)) return rc;
        WriteDeviceSetting(bytes::Get32(record), bytes::Get32(record + 4),
                           bytes::Get32(record + 8));
    }
    return 0;
}
