// The stream of messages between this program and the one whose windows it shows.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <string>

#include "platform/window/link.h"

namespace korvane::view {

// Reads and writes within the toolkit's event loop; nothing here waits.
class Connection {
public:
    enum class End { kClosed, kGarbage };

    // The descriptor stays the caller's. It must be a stream that can be read and
    // written.
    explicit Connection(int descriptor);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // May send. Not called any more once the connection has ended.
    std::function<void(const platform::ToView&)> onMessage;
    // Once, as soon as the other end is gone or does not make sense.
    std::function<void(End)> onEnd;

    void Send(const platform::FromView& message);

private:
    void Read();
    void TakeMessages();
    void Write();
    void Finish(End end);

    int descriptor_;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
    std::string incoming_;
    std::string outgoing_;
    bool ended_ = false;
};

}  // namespace korvane::view
