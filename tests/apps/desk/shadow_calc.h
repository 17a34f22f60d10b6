// A Calc without the add-in, in which a user's own edits are done once more.
#pragma once

#include "support/desktop_office.h"

namespace korvane::test {

class ShadowCalc : public DesktopOffice {
public:
    // With copies of the books, called the same. `folder` is its own.
    ShadowCalc(const Desktop& desktop, const std::filesystem::path& folder,
               const std::vector<std::filesystem::path>& books);

    // An order for one of the documents.
    std::string AskOf(const std::string& title, const std::string& order) {
        return Ask("in " + title + " " + order);
    }
    // The user's own copy.
    std::filesystem::path FileOf(const std::string& title) const { return folder_ / title; }

private:
    std::filesystem::path folder_;
};

}  // namespace korvane::test
