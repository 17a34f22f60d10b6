#include "bindings/calc/desk/command_table.h"

#include "base/text.h"

namespace korvane::calc {

std::u16string CommandUrl(const std::u16string& name) {
    return std::u16string(kCommandScheme) + u":" + name;
}

bool IsCommandUrl(const std::u16string& url) { return url.starts_with(CommandUrl({})); }

std::u16string CommandTable::Add(std::function<void()> run) {
    std::u16string url = CommandUrl(ToUtf16(std::to_string(++last_)));
    commands_[url] = std::move(run);
    return url;
}

void CommandTable::Set(const std::u16string& name, std::function<void()> run) {
    commands_[CommandUrl(name)] = std::move(run);
}

void CommandTable::Remove(const std::u16string& url) { commands_.erase(url); }

bool CommandTable::Has(const std::u16string& url) const { return commands_.contains(url); }

bool CommandTable::Run(const std::u16string& url) noexcept {
    try {
        const auto command = commands_.find(url);
        if (command == commands_.end()) return false;
        // A copy: the command may remove itself.
        const std::function<void()> run = command->second;
        if (run) run();
        return true;
    } catch (...) {
        // The caller is the office, which would end of it. Commands report their
        // failures themselves.
        return true;
    }
}

}  // namespace korvane::calc
