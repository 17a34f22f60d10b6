// Messages on their way to a view, as frames.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "bindings/view_link/socket.h"

namespace korvane::view_link {

class SendQueue {
public:
    // Holds at most `limit` bytes.
    explicit SendQueue(std::size_t limit) : limit_(limit) {}

    // False, and nothing is added, when the queue is full. A message that is
    // longer than any reader accepts is left out: the reader would take the rest
    // for garbage.
    bool Add(std::string_view message);
    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }
    void Clear();

    enum class Flow {
        kFree,     // the socket took what it was given; there may be more
        kBlocked,  // it takes nothing more at the moment
        kBroken,   // the other end is gone
    };
    // Sends what the socket takes, but no more than keeps the caller for a
    // moment.
    Flow SendTo(const Socket& socket);

private:
    // Blocks rather than one text, so that a long queue is never copied.
    std::deque<std::string> blocks_;
    std::size_t sent_ = 0;  // of the first block
    std::size_t size_ = 0;  // not sent yet
    std::size_t limit_;
};

}  // namespace korvane::view_link
