// The note of a formula that stands in a cell for a moment.
#pragma once

#include <memory>

#include "bindings/calc/change_journal.h"

namespace korvane::calc {

class NotedFormula {
public:
    NotedFormula() = default;
    NotedFormula(const NotedFormula&) = delete;
    NotedFormula& operator=(const NotedFormula&) = delete;
    ~NotedFormula() { End(); }

    // Without a journal nothing is noted.
    void SetJournal(std::shared_ptr<ChangeJournal> journal);
    // Whether notes are wanted at all.
    bool IsWanted() const { return journal_ != nullptr; }

    // The cell of `note` is about to be written. Takes the place of the last note.
    void Begin(const FormulaNote& note) noexcept;
    // What was written reads `shown` in the cell.
    void Complete(const std::u16string& shown) noexcept;
    // The cell is as it was.
    void End() noexcept;

private:
    std::shared_ptr<ChangeJournal> journal_;
    long number_ = 0;
};

}  // namespace korvane::calc
