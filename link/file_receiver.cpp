// Files pushed by the device (type 17), streamed to disk through one 4096-byte buffer and
// written only under the program's received-files folder.
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

constexpr std::int32_t kFileNotCreated = -10;
constexpr std::size_t kChunk = 4096;

// Copies size bytes from the link into the file.
std::int32_t CopyContent(ReceiveSource& source, plat::FileHandle file, std::uint32_t size) {
    std::uint8_t buffer[kChunk];
    std::uint32_t done = 0;
    while (done < size) {
        std::size_t chunk = std::min<std::size_t>(size - done, kChunk);
        if (std::int32_t rc = LinkReceive(source, buffer, chunk)) return rc;
        if (plat::FileWrite(file, buffer, chunk) != static_cast<long>(chunk)) {
            return plat::FileLastError();
        }
        done += static_cast<std::uint32_t>(chunk);
    }
    return 0;
}

}  // namespace

std::int32_t DecodeFiles(ReceiveSource& source) {
    // The whole transfer holds the lock: no control changes until the files are written.
    ControlsHold hold;
    std::uint32_t key, count;
    if (std::int32_t rc = ReceiveWord(source, &key)) return rc;
    std::uint32_t flags = 0;
    if (ControlRecord* r = FindControl(key)) {
        MarkValueChanged(*r);
        flags = r->flags;
    }
    if (std::int32_t rc = ReceiveWord(source, &count)) return rc;
    const std::int32_t files = static_cast<std::int32_t>(count);
    std::vector<std::uint8_t> nameBytes;
    for (std::int32_t i = 0; i < files; ++i) {
        std::uint32_t nameLength, size;
        if (std::int32_t rc = ReceiveWord(source, &nameLength)) return rc;
        if (nameLength > limits::kMaxFileNameBytes) return kDecodeMalformed;
        if (std::int32_t rc = ReceiveBytes(source, nameLength, &nameBytes)) return rc;
        std::u16string sent = WireText(nameBytes.data(), nameBytes.size(), (flags & kFlagUtf16) != 0);
        sent = sent.substr(0, sent.find(u'\0'));
        if (std::int32_t rc = ReceiveWord(source, &size)) return rc;

        std::u16string name = ReceivedFileName(sent);
        std::u16string folder = name.empty() ? std::u16string() : plat::ReceivedFilesFolder();
        if (folder.empty()) return kFileNotCreated;
        std::u16string path = plat::JoinPath(folder, name);
        plat::FileHandle file = plat::FileCreate(path);
        if (file == plat::kInvalidFile) return kFileNotCreated;
        std::int32_t rc = CopyContent(source, file, size);
        if (rc == 0 && i == 0) {
            if (ControlRecord* r = FindControl(key)) {
                r->receivedPath = path;
                r->hasReceivedPath = true;
            }
        }
        plat::FileClose(file);  // a partial file stays as it is
        if (rc) return rc;
    }
    return 0;
}
