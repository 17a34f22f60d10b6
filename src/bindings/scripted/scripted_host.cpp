#include "bindings/scripted/scripted_host.h"

#include <algorithm>
#include <cassert>

#include "base/error.h"
#include "base/text.h"
#include "bindings/scripted/objects.h"
#include "bindings/scripted/scripted_command_bars.h"

namespace korvane::scripted {

ScriptedHost::ScriptedHost(Model model)
    : selection(model.activeCell), model_(std::move(model)), bars_(BuiltInBars()) {}

ScriptedHost::~ScriptedHost() { assert(liveHandles_ == 0); }

host::ApplicationPtr ScriptedHost::Application() {
    return std::make_shared<ScriptedApplication>(*this);
}

host::RangePtr ScriptedHost::RangeAt(const Place& place) {
    return std::make_shared<ScriptedRange>(*this, place);
}

std::optional<Place> ScriptedHost::FindCells(const std::u16string& text) const {
    try {
        return Denote(u"=" + text).cells;
    } catch (const Error&) {
        return std::nullopt;  // the document lets this very text fail
    }
}

int ScriptedHost::CountOf(const std::string& member) const {
    return static_cast<int>(std::count_if(log_.begin(), log_.end(), [&](const std::string& line) {
        return line == member || line.compare(0, member.size() + 1, member + " ") == 0;
    }));
}

void ScriptedHost::FailNothing() {
    failAt_ = 0;
    failMembers_.clear();
    lastFailure_.clear();
}

void ScriptedHost::CloseBook(const std::u16string& name) {
    const BookPtr book = model_.FindBook(name);
    if (!book) return;
    book->isOpen = false;
    if (model_.activeBook != book) return;
    for (const auto& other : model_.books) {
        if (!other->isOpen) continue;
        model_.activeBook = other;
        model_.activeSheet = other->sheets.front().get();
        model_.activeCell = Area{};
        return;
    }
    nothingOpen = true;
}

void ScriptedHost::Enter(const char* member, std::u16string_view detail) {
    ++calls_;
    if (logging_) {
        std::string line = member;
        if (!detail.empty()) line.append(" ").append(ToUtf8(detail));
        log_.push_back(std::move(line));
    }
    bool fails = calls_ == failAt_;
    if (const auto found = failMembers_.find(member); found != failMembers_.end()) {
        fails = fails || found->second.every || --found->second.left == 0;
    }
    if (!fails) return;
    lastFailure_ = member;
    throw Error(kErrorApplication, ToUtf16(std::string(member) + " failed"));
}

}  // namespace korvane::scripted
