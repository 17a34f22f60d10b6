// What processes that died had noted.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "bindings/calc/desk/journal_text.h"

namespace korvane::calc {

class DeadJournals {
public:
    explicit DeadJournals(std::filesystem::path folder) : folder_(std::move(folder)) {}

    struct Found {
        std::filesystem::path file;
        JournalContent content;  // of the one document
    };
    // What is noted of a document, journal by journal. A journal that cannot be read is
    // kept aside under another name; journals of living processes are not looked at.
    std::vector<Found> Of(const std::u16string& url) const;
    // These notes are done with; the last one takes the journal with it.
    static void Forget(const std::filesystem::path& file, const std::set<long>& numbers);

private:
    std::filesystem::path folder_;
};

}  // namespace korvane::calc
