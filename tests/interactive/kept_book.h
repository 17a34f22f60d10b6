// A shown workbook that tests hand on to each other.
#pragma once

#include <memory>

#include "shown_book.h"

namespace korvane::test {

// Opening a window takes longer than most tests: the next one with the same file takes
// the window over, unless this one closed it or did not leave it as it found it.
class KeptBook {
public:
    KeptBook(const std::string& fileName, const std::string& content);
    ~KeptBook();
    KeptBook(const KeptBook&) = delete;
    KeptBook& operator=(const KeptBook&) = delete;

    ShownBook* operator->() const { return book_.get(); }

private:
    std::string fileName_;
    std::unique_ptr<ShownBook> book_;
    std::string state_;  // as the file has it
};

}  // namespace korvane::test
