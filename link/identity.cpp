// Identity texts (type 2) and settings records (type 19).
#include "link/bytes.h"
#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/payload_reader.h"
#include "link/text_convert.h"
#include "link/wire.h"
#include "model/device_settings.h"
#include "platform/message_box.h"
#include "platform/program_lock.h"

#include <algorithm>
#include <vector>

namespace {

// A counted text, up to its first zero.
DecodeStatus ReadText(ReceiveSource& source, bool utf16, std::u16string* text) {
    std::uint32_t n;
    if (DecodeStatus rc = ReceiveWord(source, &n); rc != DecodeStatus::kOk) return rc;
    if (n > limits::kMaxIdentityText) return DecodeStatus::kMalformed;
    std::vector<std::uint8_t> data;
    if (DecodeStatus rc = ReceiveBytes(source, n, &data); rc != DecodeStatus::kOk) return rc;
    *text = WireText(data.data(), n, utf16);
    text->resize(std::min(text->size(), text->find(u'\0')));
    return DecodeStatus::kOk;
}

}  // namespace

// Each text replaces the old one only once it has arrived whole: a broken message leaves the
// last good panel name, so the panel's settings are not written under another key meanwhile.
DecodeStatus DecodeIdentity(ReceiveSource& source, std::uint16_t headerFlags) {
    LinkClient& link = Link();
    link.sessionFlagB = (headerFlags & wire::kFlagNoSessionB) ? 0 : 1;
    link.sessionFlagA = (headerFlags & wire::kFlagNoPings) ? 0 : 1;

    std::u16string text;
    const bool utf16 = (headerFlags & wire::kFlagIdentityUtf16) != 0;
    if (DecodeStatus rc = ReadText(source, utf16, &text); rc != DecodeStatus::kOk) return rc;
    {
        plat::ProgramLockHold hold;
        link.panelId = text;
        // Settings are kept per panel name: from now on they are this panel's.
        SetSettingsPanelName(link.panelId);
    }
    link.sessionFlagC = (headerFlags & wire::kFlagStayOpen) ? 1 : 0;
    if (DecodeStatus rc = ReadText(source, true, &text); rc != DecodeStatus::kOk) return rc;
    plat::ProgramLockHold hold;
    link.serverText = text;
    return DecodeStatus::kOk;
}

// The records go to the store in one write. When the store refuses some (it holds only so many
// values per panel and so many panels), the fault box says so once for the message.
DecodeStatus DecodeSettings(ReceiveSource& source) {
    std::uint32_t word;
    if (DecodeStatus rc = ReceiveWord(source, &word); rc != DecodeStatus::kOk) return rc;
    const std::int32_t count = static_cast<std::int32_t>(word);
    if (count > limits::kMaxSettingsRecords) return DecodeStatus::kMalformed;
    std::vector<StoredSetting> settings;
    DecodeStatus status = DecodeStatus::kOk;
    for (std::int32_t i = 0; i < count && status == DecodeStatus::kOk; ++i) {
        std::uint8_t record[12];
        status = LinkReceive(source, record, 12) == kLinkOk ? DecodeStatus::kOk
                                                            : DecodeStatus::kClosed;
        if (status == DecodeStatus::kOk) {
            settings.push_back({bytes::Get32(record), bytes::Get32(record + 4),
                                bytes::Get32(record + 8)});
        }
    }
    // What arrived before a broken link is kept, as if written record by record.
    if (std::int32_t error = WriteDeviceSettings(settings)) {
        plat::ShowFaultBox(fault::kSettingsRefused, error);
    }
    return status;
}
