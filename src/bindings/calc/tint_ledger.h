// What fills have been given to cells of a document, and what was there before.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "bindings/calc/change_journal.h"
#include "bindings/calc/fill_state.h"

namespace korvane::calc {

// An index that stands for a fill: the host's own ones, and from kFirstPrivateIndex
// on those that the host has none for. A private one means something to the ledger
// that gave it only.
constexpr int kFirstPrivateIndex = 1000;

// A fill that is written where another stands is a tint. It ends when cells are
// given the fill that they had before it. All members throw the office's
// exceptions unless they say otherwise.
class TintLedger {
public:
    // The document must outlive it.
    explicit TintLedger(const CalcDocument& document) : document_(document) {}
    TintLedger(const TintLedger&) = delete;
    TintLedger& operator=(const TintLedger&) = delete;
    ~TintLedger();

    // Where tints are noted from now on; may be null.
    void SetJournal(std::shared_ptr<ChangeJournal> journal) { journal_ = std::move(journal); }

    // The index for what the cells have; writing it to them later restores that.
    int IndexOf(const CellRangeRef& cells);
    // Throws korvane::Error for an index that there is none of.
    void Write(const CellRangeRef& cells, int index);
    void Write(const CellRangeRef& cells, const Fill& fill);

    // Gives all tinted cells what they had before, for as long as something else
    // looks at the document, and tints them again. Pairs may nest. What the user
    // has filled himself meanwhile stays. Never throw.
    void TakeOff() noexcept;
    void PutBack() noexcept;
    // Takes the tints off for good. Never throws.
    void Drop() noexcept;

    // The user did something that can be undone. Undoing it gives tinted cells the
    // tint again, though it has ended since.
    void NoteUserStep();
    // Takes off the tints that have come back so. Never throws.
    void TakeOffReturned() noexcept;
    // Nothing can be undone any more.
    void ForgetUserSteps() { past_.clear(); }

    bool IsEmpty() const { return tints_.empty(); }
    // The document has another file now: notes are made anew. Never throws.
    void NoteAgain() noexcept;

private:
    struct Tint {
        CellRangeRef cells;
        int before = 0;  // its index
        Fill written;
        std::vector<CellRangeRef> off;  // what has been taken off of it
        long note = 0;
        bool isInUndo = false;  // a step of the user's was made over it
    };
    int Keep(const Fills& fills);
    // Ends the tint that `index` is to be written over, when there is one.
    bool EndTint(const CellRangeRef& cells, int index);
    // The one fill that an index stands for, or nothing.
    std::optional<Fill> FillFor(int index) const;
    void Apply(const CellBlock& block, int index) const;
    // Gives back what still has the tint; those cells.
    std::vector<CellRangeRef> Restore(const Tint& tint) const;
    void PutBack(Tint& tint) const;
    long NoteOf(const Tint& tint) const;
    void Forget(Tint& tint) const;
    void KeepPast(const Tint& tint);

    const CalcDocument& document_;
    std::shared_ptr<ChangeJournal> journal_;
    std::vector<Tint> tints_;  // as they were put on
    std::vector<Tint> past_;   // ended ones that undoing may bring back
    std::map<int, Fills> kept_;
    int nextIndex_ = kFirstPrivateIndex;
    int offs_ = 0;
};

}  // namespace korvane::calc
