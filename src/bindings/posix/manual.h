// The manual: HTML pages in one folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace korvane::posix {

class Manual {
public:
    // `folder` holds index.html, the other pages, and topics.txt; empty for none.
    explicit Manual(std::filesystem::path folder = {}) : folder_(std::move(folder)) {}

    // Whether there is a start page now.
    bool IsThere() const;
    // The address (file:) of the page for a topic: the start page for 0 and below,
    // for any other what topics.txt says now. Each of its lines is a topic's
    // number, a blank, and the name of a page with or without "#" and a place on
    // it; other lines count for nothing. Raises for a topic that it does not have,
    // or whose page is not one beside it.
    std::string Address(std::int32_t topic) const;

private:
    std::filesystem::path folder_;
};

}  // namespace korvane::posix
