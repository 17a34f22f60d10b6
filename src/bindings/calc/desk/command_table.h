// What the office's command URLs of the add-in run.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace korvane::calc {

// The scheme of the add-in's command URLs, without the colon.
inline constexpr const char16_t* kCommandScheme = u"org.korvane.addin";

// The URL of a command with a name: "org.korvane.addin:KorvaneExplore".
std::u16string CommandUrl(const std::u16string& name);
// Whether a command URL is one of the add-in's.
bool IsCommandUrl(const std::u16string& url);

// Used on the office's main thread only.
class CommandTable {
public:
    // A new URL that runs `run`; no other one of this table is like it, not even
    // one that was removed.
    std::u16string Add(std::function<void()> run);
    // Makes the URL of `name` run `run`, instead of anything before. The name is
    // no number: those belong to Add.
    void Set(const std::u16string& name, std::function<void()> run);
    // Forgets a URL; one that is not known is passed over.
    void Remove(const std::u16string& url);
    bool Has(const std::u16string& url) const;

    // Runs what the URL stands for; false when it stands for nothing. What runs
    // may change the table. No exception leaves.
    bool Run(const std::u16string& url) noexcept;

private:
    std::map<std::u16string, std::function<void()>> commands_;
    int last_ = 0;
};

}  // namespace korvane::calc
