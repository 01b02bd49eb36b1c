// Recording fakes at the seams: message boxes and posted results.
#pragma once

#include "platform/message_box.h"
#include "platform/post.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace testing_support {

struct RecordedBox {
    plat::WindowRef owner;
    std::u16string text;
    std::u16string caption;
    unsigned flags;
};

// Captures every message box while it lives (one at a time).
class MessageBoxRecorder {
public:
    MessageBoxRecorder();
    ~MessageBoxRecorder();
    std::vector<RecordedBox> Boxes() const;
    bool Has(const std::u16string& text) const;
    // The fault box "At <line> file <file>, val=<value>".
    bool HasFault(long line, const char* file, long value) const;
    bool HasFaultLine(long line) const;  // any file, any value
    std::size_t Count() const;
    void Clear();
    // Waits (bounded) until a box with this text was shown.
    bool WaitFor(const std::u16string& text, std::chrono::milliseconds timeout) const;

private:
    static int Hook(plat::WindowRef, const std::u16string&, const std::u16string&, unsigned);
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<RecordedBox> boxes_;
    plat::MessageBoxHook previous_;
};

// Captures posted results while it lives.
class PostRecorder {
public:
    PostRecorder();
    ~PostRecorder();
    // Waits (bounded) for the next post; false on timeout.
    bool Next(unsigned* message, std::chrono::milliseconds timeout = std::chrono::seconds(5));
    std::size_t Pending() const;

private:
    static void Hook(plat::WindowRef, unsigned);
    mutable std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<unsigned> messages_;
    plat::PostHook previous_;
};

// Polls a condition until it holds or the timeout passes.
bool WaitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds timeout = std::chrono::seconds(5));

}  // namespace testing_support
