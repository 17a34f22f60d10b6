// How long and for how much a view is waited for.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace korvane::view_link {

using Clock = std::chrono::steady_clock;

struct LinkLimits {
    // From a sign of life to the next question for one.
    std::chrono::milliseconds pingInterval{2000};
    // A view that leaves a question unanswered, and takes nothing, for so long
    // is given up.
    std::chrono::milliseconds stallTime{5000};
    // The same until the view's first message: it may have to be read from a
    // slow disk.
    std::chrono::milliseconds startTime{15000};
    // What a view is let to end by itself once its link has ended.
    std::chrono::milliseconds endGrace{500};
    // A view for which more than this waits is given up.
    std::size_t queueBytes = std::size_t{64} << 20;
};

// Why a view was given up.
enum class Loss : std::uint8_t {
    kEnded,     // it closed the link, or died
    kGarbage,   // what it sent is no message, or makes no sense
    kProtocol,  // it speaks another protocol
    kStalled,   // it neither answers nor takes anything
    kOverfull,  // more waits for it than may wait
};

}  // namespace korvane::view_link
