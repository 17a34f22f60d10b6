#include "bindings/calc/noted_formula.h"

#include <utility>

namespace korvane::calc {

void NotedFormula::SetJournal(std::shared_ptr<ChangeJournal> journal) {
    End();
    journal_ = std::move(journal);
}

// The new one first: in between, too, the cell is not what it was.
void NotedFormula::Begin(const FormulaNote& note) noexcept {
    if (!journal_) return;
    const long last = std::exchange(number_, journal_->Note(note));
    if (last != 0) journal_->Forget(last);
}

void NotedFormula::Complete(const std::u16string& shown) noexcept {
    if (number_ != 0) journal_->Complete(number_, shown);
}

void NotedFormula::End() noexcept {
    if (number_ != 0) journal_->Forget(std::exchange(number_, 0));
}

}  // namespace korvane::calc
