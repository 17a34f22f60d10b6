#include "bindings/posix/posix_shell.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "base/text.h"
#include "bindings/posix/command_line.h"
#include "bindings/posix/spawn.h"

namespace korvane::posix {
namespace {

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }

bool HasControl(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), IsControl);
}

// An opener also opens files and whatever a desktop has schemes for, so what it
// is given is chosen here. None of these begins with "-": no option either.
bool IsWebOrMail(std::u16string_view address) {
    const auto scheme = address.substr(0, address.find(u':'));
    if (scheme.size() == address.size()) return false;
    return EqualIgnoringCase(scheme, u"http") || EqualIgnoringCase(scheme, u"https") ||
           EqualIgnoringCase(scheme, u"mailto");
}

}  // namespace

void PosixShell::Open(const std::u16string& address, std::int64_t /*owner*/) {
    if (!IsWebOrMail(address) || HasControl(address)) {
        throw Error(kErrorInvalidCall, u"No address of a web page or a mailbox: " + address);
    }
    SpawnDetached({opener_, ToUtf8(ReplaceAll(address, u" ", u"%20"))});
}

void PosixShell::Start(const std::u16string& commandLine) {
    const auto arguments = SplitCommandLine(commandLine);
    const bool hasNul = commandLine.find(u'\0') != std::u16string::npos;
    if (hasNul || arguments.empty() || arguments.front().empty()) {
        throw Error(kErrorInvalidCall, u"No command line: " + commandLine);
    }
    SpawnDetached(arguments);
}

}  // namespace korvane::posix
