#include "tests/support/recorders.h"

#include "link/link_client.h"

#include <algorithm>
#include <thread>

namespace testing_support {

namespace {
MessageBoxRecorder* g_boxes = nullptr;
PostRecorder* g_posts = nullptr;
}  // namespace

MessageBoxRecorder::MessageBoxRecorder() {
    g_boxes = this;
    previous_ = plat::SetMessageBoxHook(&MessageBoxRecorder::Hook);
}

MessageBoxRecorder::~MessageBoxRecorder() {
    plat::SetMessageBoxHook(previous_);
    g_boxes = nullptr;
}

int MessageBoxRecorder::Hook(plat::WindowRef owner, const std::u16string& text,
                             const std::u16string& caption, unsigned flags) {
    if (MessageBoxRecorder* self = g_boxes) {
        std::lock_guard<std::mutex> hold(self->mutex_);
        self->boxes_.push_back({owner, text, caption, flags});
        self->changed_.notify_all();
    }
    return plat::kIdOk;
}

std::vector<RecordedBox> MessageBoxRecorder::Boxes() const {
    std::lock_guard<std::mutex> hold(mutex_);
    return boxes_;
}

bool MessageBoxRecorder::Has(const std::u16string& text) const {
    return WaitFor(text, std::chrono::milliseconds(0));
}

bool MessageBoxRecorder::HasFault(long line, const char* file, long value) const {
    return Has(plat::FaultBoxText(line, file, value));
}

bool MessageBoxRecorder::HasFaultLine(long line) const {
    std::u16string prefix = plat::FaultBoxText(line, "", 0);
    prefix = prefix.substr(0, prefix.find(u" file ") + 6);
    std::lock_guard<std::mutex> hold(mutex_);
    for (const auto& box : boxes_) {
        if (box.text.rfind(prefix, 0) == 0 && box.caption.empty()) return true;
    }
    return false;
}

std::size_t MessageBoxRecorder::Count() const {
    std::lock_guard<std::mutex> hold(mutex_);
    return boxes_.size();
}

void MessageBoxRecorder::Clear() {
    std::lock_guard<std::mutex> hold(mutex_);
    boxes_.clear();
}

bool MessageBoxRecorder::WaitFor(const std::u16string& text,
                                 std::chrono::milliseconds timeout) const {
    std::unique_lock<std::mutex> hold(mutex_);
    return changed_.wait_for(hold, timeout, [&] {
        return std::any_of(boxes_.begin(), boxes_.end(),
                           [&](const RecordedBox& box) { return box.text == text; });
    });
}

PostRecorder::PostRecorder() {
    g_posts = this;
    previous_ = plat::SetPostHook(&PostRecorder::Hook);
}

PostRecorder::~PostRecorder() {
    plat::SetPostHook(previous_);
    g_posts = nullptr;
}

void PostRecorder::Hook(plat::WindowRef, unsigned message) {
    if (message != kResultMessage) return;  // the wait cursor's posts
    if (PostRecorder* self = g_posts) {
        std::lock_guard<std::mutex> hold(self->mutex_);
        self->messages_.push_back(message);
        self->posted_.notify_all();
    }
}

bool PostRecorder::Next(unsigned* message, std::chrono::milliseconds timeout) {
    std::unique_lock<std::mutex> hold(mutex_);
    if (!posted_.wait_for(hold, timeout, [&] { return !messages_.empty(); })) return false;
    if (message) *message = messages_.front();
    messages_.pop_front();
    return true;
}

std::size_t PostRecorder::Pending() const {
    std::lock_guard<std::mutex> hold(mutex_);
    return messages_.size();
}

bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

}  // namespace testing_support
