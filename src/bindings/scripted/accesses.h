// Counts, notes and fails the accesses to what is scripted. One is shared by a
// host and the platform's services, so that a test sees their calls in one order
// and can make any one of them fail.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::scripted {

class Accesses {
public:
    Accesses() = default;
    Accesses(const Accesses&) = delete;
    Accesses& operator=(const Accesses&) = delete;

    // Every scripted member that can fail begins with it, under its own name
    // ("Range.Formula", "Shell.Open"). Counts and notes the access, and raises
    // kErrorApplication where it is to fail.
    void Enter(const char* member, std::u16string_view detail = {});
    // The same for a member whose boundary promises that it never fails: it is
    // noted, but no access to be counted, as none could be made to fail.
    void Note(const char* member, std::u16string_view detail = {});

    // From here on every access is noted, as "Range.Formula" or
    // "Application.Evaluate =A1".
    void StartLog() { logging_ = true; }
    const std::vector<std::string>& log() const { return log_; }
    // How many noted accesses were of this member.
    int CountOf(const std::string& member) const;

    // Accesses so far, noted or not.
    std::int64_t calls() const { return calls_; }
    // Makes the nth access from now (1 is the next) fail, whatever it is.
    void FailNthCall(std::int64_t nth) { failAt_ = calls_ + nth; }
    // Makes every access of a member fail, or only its nth from now.
    void FailMember(const std::string& member, int nth = 0) {
        failMembers_[member] = {nth == 0, nth};
    }
    void FailNothing();
    // The member whose access failed last; empty for none.
    const std::string& lastFailure() const { return lastFailure_; }

private:
    struct MemberFailure {
        bool every = false;
        int left = 0;  // accesses up to and with the one that fails
    };

    bool Fails(const char* member);

    bool logging_ = false;
    std::vector<std::string> log_;
    std::int64_t calls_ = 0;
    std::int64_t failAt_ = 0;
    std::map<std::string, MemberFailure> failMembers_;
    std::string lastFailure_;
};

}  // namespace korvane::scripted
