#include "bindings/calc/fill_state.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "base/attempt.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

using Cells = Reference<css::uno::XInterface>;

const rtl::OUString& Property() {
    static const rtl::OUString name = ToOUString(u"CellBackColor");
    return name;
}

// Of cells with one format.
Fill FillOf(const Cells& cells) {
    Fill fill;
    Reference<css::beans::XPropertySet>(cells, UNO_QUERY_THROW)->getPropertyValue(Property()) >>=
        fill.color;
    fill.isOwn = Reference<css::beans::XPropertyState>(cells, UNO_QUERY_THROW)
                     ->getPropertyState(Property()) == css::beans::PropertyState_DIRECT_VALUE;
    return fill;
}

void Write(Silence& silence, const Cells& cells, const Fill& fill) {
    silence.BeforeWrite();
    if (fill.isOwn) {
        css::uno::Any value;
        value <<= fill.color;
        Reference<css::beans::XPropertySet>(cells, UNO_QUERY_THROW)
            ->setPropertyValue(Property(), value);
    } else {
        Reference<css::beans::XPropertyState>(cells, UNO_QUERY_THROW)
            ->setPropertyToDefault(Property());
    }
}

}  // namespace

bool Fills::AreOne() const {
    return std::all_of(parts.begin(), parts.end(),
                       [this](const auto& part) { return part.fill == parts.front().fill; });
}

bool Fills::LookAlike() const {
    return std::all_of(parts.begin(), parts.end(), [this](const auto& part) {
        return part.fill.color == parts.front().fill.color;
    });
}

bool Fills::AreSame(const Fills& other) const {
    if (parts.size() != other.parts.size()) return false;
    bool same = true;
    const bool asked = Suppressed([&] {
        for (std::size_t k = 0; same && k < parts.size(); ++k) {
            const auto a = BlocksOf(parts[k].cells);
            const auto b = BlocksOf(other.parts[k].cells);
            same = parts[k].fill == other.parts[k].fill &&
                   std::equal(a.begin(), a.end(), b.begin(), b.end(), IsSame);
        }
    });
    return asked && same;
}

bool IsSame(const CellBlock& a, const CellBlock& b) {
    return a.Sheet == b.Sheet && a.StartRow == b.StartRow && a.StartColumn == b.StartColumn &&
           a.EndRow == b.EndRow && a.EndColumn == b.EndColumn;
}

std::optional<CellBlock> Meet(const CellBlock& a, const CellBlock& b) {
    const CellBlock both(a.Sheet, std::max(a.StartColumn, b.StartColumn),
                         std::max(a.StartRow, b.StartRow), std::min(a.EndColumn, b.EndColumn),
                         std::min(a.EndRow, b.EndRow));
    const bool isAny =
        a.Sheet == b.Sheet && both.StartColumn <= both.EndColumn && both.StartRow <= both.EndRow;
    return isAny ? std::optional(both) : std::nullopt;
}

std::vector<CellBlock> BlocksOf(const Cells& cells) {
    if (const Reference<css::sheet::XSheetCellRanges> many(cells, css::uno::UNO_QUERY); many.is()) {
        const auto blocks = many->getRangeAddresses();
        return {blocks.begin(), blocks.end()};
    }
    return {
        Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress()};
}

CellBlock BlockOf(const CellRangeRef& cells) {
    return Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress();
}

CellRangeRef CellsAt(const CalcDocument& document, const CellBlock& block) {
    return document.Sheet(block.Sheet)
        ->getCellRangeByPosition(block.StartColumn, block.StartRow, block.EndColumn, block.EndRow);
}

// The state of cells with several formats cannot be trusted: where the formats are
// styles, they all count as the default, whatever their colours.
Fills FillsOf(const CellRangeRef& cells) {
    const CellBlock block = BlockOf(cells);
    Fills fills;
    if (block.StartRow == block.EndRow && block.StartColumn == block.EndColumn) {
        fills.parts.push_back({cells, FillOf(cells)});
        return fills;
    }
    const auto formats =
        Reference<css::sheet::XUniqueCellFormatRangesSupplier>(cells, UNO_QUERY_THROW)
            ->getUniqueCellFormatRanges();
    for (sal_Int32 k = 0; k < formats->getCount(); ++k) {
        const Cells part(formats->getByIndex(k), UNO_QUERY_THROW);
        fills.parts.push_back({part, FillOf(part)});
    }
    return fills;
}

std::vector<CellBlock> BlocksWith(const CellRangeRef& cells, const Fill& fill) {
    const Fills fills = FillsOf(cells);
    if (fills.AreOne()) {
        if (fills.parts.empty() || fills.parts.front().fill != fill) return {};
        return {BlockOf(cells)};
    }
    std::vector<CellBlock> found;
    for (const auto& part : fills.parts) {
        if (part.fill != fill) continue;
        const auto blocks = BlocksOf(part.cells);
        found.insert(found.end(), blocks.begin(), blocks.end());
    }
    return found;
}

bool IsProtected(const CalcDocument& document, int sheet) {
    return Reference<css::util::XProtectable>(document.Sheet(sheet), UNO_QUERY_THROW)
        ->isProtected();
}

void WriteFill(const CalcDocument& document, const CellBlock& block, const Fill& fill) {
    Silence silence(document);
    Write(silence, CellsAt(document, block), fill);
}

// Cells that came in between the parts since then get the fill of the first one.
void WriteFills(const CalcDocument& document, const CellBlock& block, const Fills& fills) {
    if (fills.parts.empty()) return;
    Silence silence(document);
    const Fill& first = fills.parts.front().fill;
    Write(silence, CellsAt(document, block), first);
    for (const auto& part : fills.parts) {
        if (part.fill == first) continue;
        for (const CellBlock& of : BlocksOf(part.cells)) {
            if (const auto both = Meet(of, block)) {
                Write(silence, CellsAt(document, *both), part.fill);
            }
        }
    }
}

}  // namespace korvane::calc
