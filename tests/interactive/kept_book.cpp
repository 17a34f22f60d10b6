#include "kept_book.h"

#include <map>
#include <utility>

#include "bindings/calc/document_state.h"

namespace korvane::test {
namespace {

using Books = std::map<std::string, std::unique_ptr<ShownBook>>;

// Open between two tests, by their files.
Books& Waiting() {
    static Books books;
    return books;
}

}  // namespace

KeptBook::KeptBook(const std::string& fileName, const std::string& content) : fileName_(fileName) {
    if (auto node = Waiting().extract(fileName)) {
        book_ = std::move(node.mapped());
        book_->Activate();
    } else {
        book_ = std::make_unique<ShownBook>(fileName, content);
    }
    state_ = calc::testing::StateOf(book_->model());
}

KeptBook::~KeptBook() {
    const bool isAsFound = book_->model().is() && calc::testing::StateOf(book_->model()) == state_;
    if (isAsFound) Waiting()[fileName_] = std::move(book_);
}

}  // namespace korvane::test
