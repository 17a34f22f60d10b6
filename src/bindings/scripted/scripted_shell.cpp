#include "bindings/scripted/scripted_shell.h"

#include "base/error.h"
#include "bindings/scripted/web_address.h"

namespace korvane::scripted {
namespace {

constexpr int kErrorFileNotFound = 53;

}  // namespace

void ScriptedShell::RequireAccepted(const std::u16string& what) const {
    if (refused.contains(what)) throw Error(kErrorFileNotFound, u"File not found");
}

void ScriptedShell::Open(const std::u16string& address, std::int64_t owner) {
    accesses_->Enter("Shell.Open", address);
    if (!HasScheme(address, {u"http:", u"https:", u"mailto:"})) {
        throw Error(kErrorInvalidCall, u"No web page and no mail address");
    }
    RequireAccepted(address);
    opened.push_back({address, owner});
}

void ScriptedShell::Start(const std::u16string& commandLine) {
    accesses_->Enter("Shell.Start", commandLine);
    RequireAccepted(commandLine);
    started.push_back(commandLine);
}

}  // namespace korvane::scripted
