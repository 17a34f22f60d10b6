#include "bindings/calc/tint_ledger.h"

#include <algorithm>

#include "base/attempt.h"
#include "base/palette.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"
#include "host/constants.h"

namespace korvane::calc {

namespace {

// What cannot be restored for a while is not kept for ever.
constexpr std::size_t kMostKept = 256;

// Red and blue change places between the two hosts.
sal_Int32 Swapped(sal_Int32 color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

// The palette's index for exactly this colour; 0 for none.
int ExactPaletteIndex(sal_Int32 color) {
    const int nearest = NearestPaletteIndex(Swapped(color));
    return PaletteColor(nearest) == static_cast<double>(Swapped(color)) ? nearest : 0;
}

bool IsNone(int index) {
    return index == host::xlColorIndexNone || index == host::xlColorIndexAutomatic;
}

// Cells that are gone are at no place.
bool AreAt(const CellRangeRef& cells, const CellBlock& block) {
    bool same = false;
    Suppressed([&] { same = IsSame(BlockOf(cells), block); });
    return same;
}

}  // namespace

TintLedger::~TintLedger() {
    for (Tint& tint : tints_) Forget(tint);
}

int TintLedger::Keep(const Fills& fills) {
    if (fills.AreOne()) {
        for (const auto& [index, known] : kept_) {
            if (known.parts.size() == 1 && known.parts.front().fill == fills.parts.front().fill) {
                return index;
            }
        }
        // Meant for any cells, not for those that it was read from.
        kept_[nextIndex_] = {{{{}, fills.parts.front().fill}}};
        return nextIndex_++;
    }
    for (const auto& [index, known] : kept_) {
        if (known.AreSame(fills)) return index;
    }
    kept_[nextIndex_] = fills;
    for (auto it = kept_.begin(); kept_.size() > kMostKept && it != kept_.end();) {
        const auto isOf = [&](const Tint& tint) { return tint.before == it->first; };
        const bool isNeeded = it->first == nextIndex_ ||
                              std::any_of(tints_.begin(), tints_.end(), isOf) ||
                              std::any_of(past_.begin(), past_.end(), isOf);
        it = isNeeded ? std::next(it) : kept_.erase(it);
    }
    return nextIndex_++;
}

int TintLedger::IndexOf(const CellRangeRef& cells) {
    const Fills fills = FillsOf(cells);
    if (fills.parts.empty()) Fail(u"The cells are gone");
    if (fills.AreOne()) {
        const Fill& fill = fills.parts.front().fill;
        if (fill == Fill{}) return host::xlColorIndexNone;
        const int entry = fill.isOwn && fill.color != kNoFill ? ExactPaletteIndex(fill.color) : 0;
        if (entry != 0) return entry;
    }
    return Keep(fills);
}

std::optional<Fill> TintLedger::FillFor(int index) const {
    if (IsNone(index)) return Fill{};
    if (const auto color = PaletteColor(index)) {
        return Fill{Swapped(static_cast<sal_Int32>(*color)), true};
    }
    const auto known = kept_.find(index);
    if (known == kept_.end() || !known->second.AreOne()) return std::nullopt;
    return known->second.parts.front().fill;
}

void TintLedger::Apply(const CellBlock& block, int index) const {
    if (const auto fill = FillFor(index)) return WriteFill(document_, block, *fill);
    const auto known = kept_.find(index);
    if (known == kept_.end()) Fail(u"There is no such colour index");
    WriteFills(document_, block, known->second);
}

void TintLedger::Write(const CellRangeRef& cells, int index) {
    if (EndTint(cells, index)) return;
    if (const auto color = PaletteColor(index)) {
        return Write(cells, Fill{Swapped(static_cast<sal_Int32>(*color)), true});
    }
    const CellBlock block = BlockOf(cells);
    Apply(block, index);
    if (IsNone(index)) {
        // A style may have a fill.
        const Fills now = FillsOf(cells);
        const bool isNone = now.LookAlike() && now.parts.front().fill.color == kNoFill;
        if (!isNone) WriteFill(document_, block, Fill{kNoFill, true});
    }
    // Another fill took the place of the tint.
    std::erase_if(tints_, [&](Tint& tint) {
        if (!AreAt(tint.cells, block)) return false;
        Forget(tint);
        return true;
    });
}

bool TintLedger::EndTint(const CellRangeRef& cells, int index) {
    const CellBlock block = BlockOf(cells);
    for (auto tint = tints_.rbegin(); tint != tints_.rend(); ++tint) {
        if (!AreAt(tint->cells, block)) continue;
        const bool restores = tint->before == index || (IsNone(tint->before) && IsNone(index));
        if (!restores) return false;
        if (offs_ == 0) Restore(*tint);
        Forget(*tint);
        KeepPast(*tint);
        tints_.erase(std::next(tint).base());
        return true;
    }
    return false;
}

void TintLedger::Write(const CellRangeRef& cells, const Fill& fill) {
    const Fills now = FillsOf(cells);
    if (now.parts.empty()) Fail(u"The cells are gone");
    if (now.AreOne() && now.parts.front().fill == fill && offs_ == 0) return;
    const CellBlock block = BlockOf(cells);
    Tint tint;
    tint.cells = CellsAt(document_, block);
    tint.written = fill;
    const auto known = std::find_if(tints_.begin(), tints_.end(),
                                    [&](const Tint& other) { return AreAt(other.cells, block); });
    // A second tint in place of the first: what was before it counts.
    tint.before = known != tints_.end() ? known->before : IndexOf(cells);
    tint.note = NoteOf(tint);
    if (known != tints_.end()) {
        Forget(*known);
        tints_.erase(known);
    }
    tints_.push_back(tint);
    if (offs_ > 0) {
        tints_.back().off = {tint.cells};
    } else {
        WriteFill(document_, block, fill);
    }
}

std::vector<CellRangeRef> TintLedger::Restore(const Tint& tint) const {
    std::vector<CellRangeRef> restored;
    for (const CellBlock& block : BlocksWith(tint.cells, tint.written)) {
        if (IsProtected(document_, block)) continue;
        Apply(block, tint.before);
        restored.push_back(CellsAt(document_, block));
    }
    return restored;
}

void TintLedger::TakeOff() noexcept {
    if (offs_++ > 0) return;
    for (auto tint = tints_.rbegin(); tint != tints_.rend(); ++tint) {
        tint->off.clear();
        Suppressed([&] { tint->off = Restore(*tint); });
    }
}

void TintLedger::PutBack() noexcept {
    if (offs_ == 0 || --offs_ > 0) return;
    for (Tint& tint : tints_) Suppressed([&] { PutBack(tint); });
}

// What has been filled meanwhile is the user's.
void TintLedger::PutBack(Tint& tint) const {
    const auto off = std::exchange(tint.off, {});
    for (const CellRangeRef& cells : off) {
        const CellBlock block = BlockOf(cells);
        if (IsProtected(document_, block)) continue;
        const auto before = FillFor(tint.before);
        if (!before) {
            WriteFill(document_, block, tint.written);
            continue;
        }
        for (const CellBlock& same : BlocksWith(cells, *before)) {
            WriteFill(document_, same, tint.written);
        }
    }
}

void TintLedger::Drop() noexcept {
    TakeOff();
    for (Tint& tint : tints_) {
        Forget(tint);
        KeepPast(tint);
    }
    tints_.clear();
    PutBack();
}

// A step that is made while the tints are off does not hold them.
void TintLedger::NoteUserStep() {
    if (offs_ > 0) return;
    for (Tint& tint : tints_) tint.isInUndo = true;
}

void TintLedger::KeepPast(const Tint& tint) {
    if (!tint.isInUndo) return;
    if (past_.size() == kMostKept) past_.erase(past_.begin());
    past_.push_back(tint);
    past_.back().off.clear();
}

void TintLedger::TakeOffReturned() noexcept {
    // What is tinted now is as it should be.
    TakeOff();
    for (auto tint = past_.rbegin(); tint != past_.rend(); ++tint) {
        Suppressed([&] { Restore(*tint); });
    }
    PutBack();
}

void TintLedger::Forget(Tint& tint) const {
    if (journal_ && tint.note != 0) journal_->Forget(tint.note);
    tint.note = 0;
}

long TintLedger::NoteOf(const Tint& tint) const {
    if (!journal_) return 0;
    FillNote note;
    const CellBlock block = BlockOf(tint.cells);
    note.url = ToText(document_.model()->getURL());
    note.sheet = document_.SheetName(block.Sheet);
    note.written = tint.written;
    if (const auto before = FillFor(tint.before)) {
        note.parts.push_back({block, *before});
    } else {
        for (const auto& part : kept_.at(tint.before).parts) {
            for (const CellBlock& of : BlocksOf(part.cells)) {
                note.parts.push_back({of, part.fill});
            }
        }
    }
    return journal_->Note(note);
}

void TintLedger::NoteAgain() noexcept {
    for (Tint& tint : tints_) {
        Forget(tint);
        Suppressed([&] { tint.note = NoteOf(tint); });
    }
}

}  // namespace korvane::calc
