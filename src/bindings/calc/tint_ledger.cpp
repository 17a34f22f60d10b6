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

// Writing `index` gives back what was there before.
bool IsMeant(int before, int index) { return before == index || (IsNone(before) && IsNone(index)); }

// Cells that are gone are at no place.
bool AreAt(const CellRangeRef& cells, const CellBlock& block) {
    bool same = false;
    Suppressed([&] { same = IsSame(BlockOf(cells), block); });
    return same;
}

bool AreAll(const CellRangeRef& cells, const Fill& fill) {
    const Fills fills = FillsOf(cells);
    return fills.AreOne() && fills.parts.front().fill == fill;
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
    asked_ = BlockOf(cells);
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
    Settle();
    const auto asked = std::exchange(asked_, std::nullopt);
    const bool isTint = asked && IsSame(*asked, BlockOf(cells));
    if (EndTint(cells, index, isTint)) return;
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

bool TintLedger::EndTint(const CellRangeRef& cells, int index, bool isTint) {
    const CellBlock block = BlockOf(cells);
    for (auto tint = tints_.rbegin(); tint != tints_.rend(); ++tint) {
        if (!AreAt(tint->cells, block)) continue;
        // Where the user has filled the cells meanwhile, the tint's own colour is either
        // a further tint or what such a one had found.
        const bool isOver = FillFor(index) == tint->written && !AreAll(cells, tint->written);
        if (isOver && isTint) return false;
        if (!IsMeant(tint->before, index)) return isOver;
        if (offs_ == 0) Restore(*tint);
        Forget(*tint);
        KeepPast(*tint);
        tints_.erase(std::next(tint).base());
        return true;
    }
    return EndDropped(block, index);
}

bool TintLedger::EndDropped(const CellBlock& block, int index) {
    const auto found = std::find_if(dropped_.rbegin(), dropped_.rend(), [&](const auto& dropped) {
        return IsSame(dropped.first, block) && IsMeant(dropped.second, index);
    });
    if (found == dropped_.rend()) return false;
    dropped_.erase(std::next(found).base());
    return true;
}

void TintLedger::Write(const CellRangeRef& cells, const Fill& fill) {
    Settle();
    const Fills now = FillsOf(cells);
    if (now.parts.empty()) Fail(u"The cells are gone");
    const CellBlock block = BlockOf(cells);
    Tint tint;
    tint.cells = CellsAt(document_, block);
    tint.written = fill;
    // A second tint in place of the first: what was before it counts. One that looks
    // the same, or that is put on what the user has filled meanwhile, is one of its own.
    const auto known = std::find_if(tints_.begin(), tints_.end(), [&](const Tint& other) {
        const bool isStill = now.AreOne() && now.parts.front().fill == other.written;
        return (offs_ > 0 || (isStill && other.written != fill)) && AreAt(other.cells, block);
    });
    tint.before = known != tints_.end() ? known->before : IndexOf(cells);
    asked_.reset();
    tint.noted = NoteOf(tint);
    tint.note = Note(tint.noted);
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
        if (IsProtected(document_, block.Sheet)) continue;
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
        if (IsProtected(document_, block.Sheet)) continue;
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

void TintLedger::Lift() noexcept {
    if (std::exchange(isLifted_, true)) return;
    TakeOff();
    for (Tint& tint : tints_) Suppressed([&] { tint.lifted = BlockOf(tint.cells); });
}

void TintLedger::Settle() noexcept {
    if (!std::exchange(isLifted_, false)) return;
    std::erase_if(tints_, [this](Tint& tint) {
        if (AreAt(tint.cells, tint.lifted)) return false;
        End(tint, tint.lifted);
        return true;
    });
    PutBack();
}

bool TintLedger::Touches(const std::vector<CellBlock>& blocks) const {
    bool touches = false;
    for (const Tint& tint : tints_) {
        Suppressed([&] {
            const CellBlock of = BlockOf(tint.cells);
            touches = touches || std::any_of(blocks.begin(), blocks.end(), [&](const auto& block) {
                          return Meet(of, block).has_value();
                      });
        });
    }
    return touches;
}

void TintLedger::Drop() noexcept {
    TakeOff();
    for (Tint& tint : tints_) {
        CellBlock place;
        Suppressed([&] { place = BlockOf(tint.cells); });
        End(tint, place);
    }
    tints_.clear();
    PutBack();
}

void TintLedger::End(Tint& tint, const CellBlock& place) {
    Forget(tint);
    KeepPast(tint);
    if (dropped_.size() == kMostKept) dropped_.erase(dropped_.begin());
    dropped_.emplace_back(place, tint.before);
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

void TintLedger::LookAtSheets() noexcept {
    Suppressed([this] {
        std::set<std::u16string> now;
        for (int index = 0; index < document_.SheetCount(); ++index) {
            const std::u16string name = document_.SheetName(index);
            now.insert(name);
            if (sheets_.empty() || sheets_.contains(name)) continue;
            for (const auto* const tints : {&past_, &tints_}) {
                for (const Tint& tint : *tints) {
                    Suppressed([&] { TakeOffSheet(tint, name, index); });
                }
            }
        }
        sheets_ = std::move(now);
    });
}

// The same places as the tint has on its own sheet now, or had when that went.
void TintLedger::TakeOffSheet(const Tint& tint, const std::u16string& sheet, int index) const {
    if (tint.noted.parts.empty() || IsProtected(document_, index)) return;
    sal_Int32 down = 0;
    sal_Int32 right = 0;
    if (sheet != tint.noted.sheet) {
        const CellBlock now = BlockOf(tint.cells);
        if (now.Sheet == index) return;  // its own, which has another name now
        CellBlock then = tint.noted.parts.front().block;
        for (const auto& part : tint.noted.parts) {
            then.StartRow = std::min(then.StartRow, part.block.StartRow);
            then.StartColumn = std::min(then.StartColumn, part.block.StartColumn);
        }
        down = now.StartRow - then.StartRow;
        right = now.StartColumn - then.StartColumn;
    }
    for (const auto& part : tint.noted.parts) {
        const CellBlock there(static_cast<sal_Int16>(index), part.block.StartColumn + right,
                              part.block.StartRow + down, part.block.EndColumn + right,
                              part.block.EndRow + down);
        for (const CellBlock& same : BlocksWith(CellsAt(document_, there), tint.written)) {
            WriteFill(document_, same, part.before);
        }
    }
}

void TintLedger::Forget(Tint& tint) const {
    if (journal_ && tint.note != 0) journal_->Forget(tint.note);
    tint.note = 0;
}

long TintLedger::Note(const FillNote& note) const {
    // One upon another that looks the same changes nothing.
    const bool changes = note.parts.size() != 1 || note.parts.front().before != note.written;
    return journal_ && changes ? journal_->Note(note) : 0;
}

FillNote TintLedger::NoteOf(const Tint& tint) const {
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
    return note;
}

void TintLedger::NoteAgain() noexcept {
    for (Tint& tint : tints_) {
        Forget(tint);
        Suppressed([&] {
            tint.noted = NoteOf(tint);
            tint.note = Note(tint.noted);
        });
    }
}

}  // namespace korvane::calc
