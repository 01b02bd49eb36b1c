// Files pushed by the device (type 17), streamed to disk through one 4096-byte buffer and
// written only under the program's received-files folder.
//
// A transfer may stall for as long as the device likes, so it never holds the program lock
// while it reads: the lock is taken only to look the control up and, at the end, to record the
// stored path and the mark. The screen keeps answering meanwhile.
#include "link/decoders.h"
#include "link/limits.h"
#include "link/link_client.h"
#include "link/payload_reader.h"
#include "link/received_name.h"
#include "link/text_convert.h"
#include "model/control_store.h"
#include "platform/files.h"

#include <algorithm>

namespace {

constexpr std::size_t kChunk = 4096;

// Copies size bytes from the link into the file.
DecodeStatus CopyContent(ReceiveSource& source, plat::FileHandle file, std::uint32_t size,
                         int* systemError) {
    std::uint8_t buffer[kChunk];
    std::uint32_t done = 0;
    while (done < size) {
        std::size_t chunk = std::min<std::size_t>(size - done, kChunk);
        if (LinkReceive(source, buffer, chunk) != kLinkOk) return DecodeStatus::kClosed;
        if (plat::FileWrite(file, buffer, chunk) != static_cast<long>(chunk)) {
            if (systemError) *systemError = plat::FileLastError();
            return DecodeStatus::kFileNotWritten;
        }
        done += static_cast<std::uint32_t>(chunk);
    }
    return DecodeStatus::kOk;
}

// The control's flags (0 when there is none: 8-bit names, and the files are written anyway).
std::uint32_t FlagsOf(std::uint32_t key) {
    ControlsHold hold;
    const ControlRecord* r = FindControl(key);
    return r ? r->flags : 0;
}

// The control has news: the first file of this message, when it was stored whole.
void RecordReceived(std::uint32_t key, const std::u16string* firstPath) {
    ControlsHold hold;
    ControlRecord* r = FindControl(key);
    if (!r) return;
    MarkValueChanged(*r);
    if (firstPath) {
        r->receivedPath = *firstPath;
        r->hasReceivedPath = true;
    }
}

}  // namespace

DecodeStatus DecodeFiles(ReceiveSource& source, int* systemError) {
    std::uint32_t key, count;
    if (DecodeStatus rc = ReceiveWord(source, &key); rc != DecodeStatus::kOk) return rc;
    const std::uint32_t flags = FlagsOf(key);
    if (DecodeStatus rc = ReceiveWord(source, &count); rc != DecodeStatus::kOk) {
        RecordReceived(key, nullptr);
        return rc;
    }
    const std::int32_t files = static_cast<std::int32_t>(count);
    std::vector<std::uint8_t> nameBytes;
    std::u16string firstPath;
    bool firstStored = false;
    DecodeStatus status = DecodeStatus::kOk;
    for (std::int32_t i = 0; i < files && status == DecodeStatus::kOk; ++i) {
        std::uint32_t nameLength, size;
        if ((status = ReceiveWord(source, &nameLength)) != DecodeStatus::kOk) break;
        if (nameLength > limits::kMaxFileNameBytes) {
            status = DecodeStatus::kMalformed;
            break;
        }
        if ((status = ReceiveBytes(source, nameLength, &nameBytes)) != DecodeStatus::kOk) break;
        std::u16string sent = WireText(nameBytes.data(), nameBytes.size(), (flags & kFlagUtf16) != 0);
        sent = sent.substr(0, sent.find(u'\0'));
        if ((status = ReceiveWord(source, &size)) != DecodeStatus::kOk) break;

        const std::u16string name = ReceivedFileName(sent);
        const std::u16string folder = name.empty() ? std::u16string() : plat::ReceivedFilesFolder();
        if (folder.empty()) {
            status = DecodeStatus::kFileNotCreated;
            break;
        }
        std::u16string path = plat::JoinPath(folder, name);
        plat::FileHandle file = plat::FileCreate(path);
        if (file == plat::kInvalidFile) {
            status = DecodeStatus::kFileNotCreated;
            break;
        }
        status = CopyContent(source, file, size, systemError);
        plat::FileClose(file);  // a partial file stays as it is
        if (status == DecodeStatus::kOk && i == 0) {
            firstPath = std::move(path);
            firstStored = true;
        }
    }
    RecordReceived(key, firstStored ? &firstPath : nullptr);
    return status;
}
