#include "bindings/scripted/accesses.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"

namespace korvane::scripted {

void Accesses::Enter(const char* member, std::u16string_view detail) {
    ++calls_;
    Note(member, detail);
    if (!Fails(member)) return;
    lastFailure_ = member;
    throw Error(kErrorApplication, ToUtf16(std::string(member) + " failed"));
}

void Accesses::Note(const char* member, std::u16string_view detail) {
    if (!logging_) return;
    std::string line = member;
    if (!detail.empty()) line.append(" ").append(ToUtf8(detail));
    log_.push_back(std::move(line));
}

bool Accesses::Fails(const char* member) {
    bool fails = calls_ == failAt_;
    if (failMembers_.empty()) return fails;
    if (const auto found = failMembers_.find(member); found != failMembers_.end()) {
        fails = fails || found->second.every || --found->second.left == 0;
    }
    return fails;
}

int Accesses::CountOf(const std::string& member) const {
    return static_cast<int>(std::count_if(log_.begin(), log_.end(), [&](const std::string& line) {
        return line == member || line.compare(0, member.size() + 1, member + " ") == 0;
    }));
}

void Accesses::FailNothing() {
    failAt_ = 0;
    failMembers_.clear();
    lastFailure_.clear();
}

}  // namespace korvane::scripted
