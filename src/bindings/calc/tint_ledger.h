// What fills have been given to cells of a document, and what was there before.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
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
    // Takes the tints off for good: their cells are about to go elsewhere. Giving the
    // places their fills back changes nothing from then on. Never throws.
    void Drop() noexcept;

    // Takes the tints off until Settle or the next Write: for what tells of its
    // beginning and not surely of its end, such as a drag or a dialog. Cells that
    // have gone elsewhere meanwhile stay without. Never throw.
    void Lift() noexcept;
    void Settle() noexcept;
    // Whether tinted cells are among these.
    bool Touches(const std::vector<CellBlock>& blocks) const;

    // The user did something that can be undone. Undoing it gives tinted cells the
    // tint again, though it has ended since.
    void NoteUserStep();
    // Takes off the tints that have come back so. Never throws.
    void TakeOffReturned() noexcept;
    // Nothing can be undone any more.
    void ForgetUserSteps() { past_.clear(); }
    // Takes the tints off sheets that were not there at the last call: a copy of a
    // sheet has them, too, and so has one whose removal was undone. Never throws.
    void LookAtSheets() noexcept;

    bool IsEmpty() const { return tints_.empty(); }
    // The document has another file now: notes are made anew. Never throws.
    void NoteAgain() noexcept;

private:
    struct Tint {
        CellRangeRef cells;
        int before = 0;  // its index
        Fill written;
        std::vector<CellRangeRef> off;  // what has been taken off of it
        FillNote noted;                 // as it was put on
        CellBlock lifted;               // where it was when it was lifted
        long note = 0;
        bool isInUndo = false;  // a step of the user's was made over it
    };
    int Keep(const Fills& fills);
    // Ends the tint that `index` is to be written over, when there is one; with
    // `isTint`, a further one is to be put on.
    bool EndTint(const CellRangeRef& cells, int index, bool isTint);
    // The same for one that was dropped.
    bool EndDropped(const CellBlock& block, int index);
    // Keeps what is needed of a tint that has been taken off for good.
    void End(Tint& tint, const CellBlock& place);
    // The one fill that an index stands for, or nothing.
    std::optional<Fill> FillFor(int index) const;
    void Apply(const CellBlock& block, int index) const;
    // Gives back what still has the tint; those cells.
    std::vector<CellRangeRef> Restore(const Tint& tint) const;
    void PutBack(Tint& tint) const;
    FillNote NoteOf(const Tint& tint) const;
    long Note(const FillNote& note) const;
    void TakeOffSheet(const Tint& tint, const std::u16string& sheet, int index) const;
    void Forget(Tint& tint) const;
    void KeepPast(const Tint& tint);

    const CalcDocument& document_;
    std::shared_ptr<ChangeJournal> journal_;
    std::vector<Tint> tints_;                         // as they were put on
    std::vector<Tint> past_;                          // ended ones that undoing may bring back
    std::vector<std::pair<CellBlock, int>> dropped_;  // places, and what was there before
    std::map<int, Fills> kept_;
    int nextIndex_ = kFirstPrivateIndex;
    // The cells whose index was asked for last: what is written to them next is a tint
    // and does not end one.
    std::optional<CellBlock> asked_;
    int offs_ = 0;
    bool isLifted_ = false;
    std::set<std::u16string> sheets_;  // names; none before the first look
};

}  // namespace korvane::calc
