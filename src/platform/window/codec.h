// Changes and events as bytes, for views in other processes and for recordings.
//
// A message is a byte that tells its kind and then its members in order: whole
// numbers in groups of seven bits (signs folded in), texts and lists with their
// count before them, UTF-16 units as numbers, floating-point numbers as four
// bytes, the lowest first. Reading takes nothing for granted: what is no message
// from the first byte to the last is refused.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/window/change.h"
#include "platform/window/event.h"
#include "platform/window/link.h"

namespace korvane::platform {

std::string Encode(const Change& change);
std::string Encode(const Event& event);
std::string Encode(const ToView& message);
std::string Encode(const FromView& message);

// Nothing for bytes that are no such message. Numbers are finite and enumeration
// values known; whether windows, controls and rows exist is for the reader to
// see.
std::optional<Change> DecodeChange(std::string_view bytes);
std::optional<Event> DecodeEvent(std::string_view bytes);
std::optional<ToView> DecodeToView(std::string_view bytes);
std::optional<FromView> DecodeFromView(std::string_view bytes);

// A stream of messages: each behind its length (four bytes, the lowest first).
void AppendFrame(std::string& stream, std::string_view message);

// Messages longer than this are no messages: no formula and no tree row comes
// near it, and nobody can make a reader keep more.
inline constexpr std::size_t kLongestMessage = std::size_t{1} << 20;

enum class FrameState { kWhole, kUnfinished, kBroken };
// Takes the first message from the front of `stream` when it is there whole.
FrameState TakeFrame(std::string_view& stream, std::string_view& message);

}  // namespace korvane::platform
