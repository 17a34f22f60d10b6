#include "bindings/calc/free_cells.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/NameToken.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

// The last row (1-based) of each band, the preferred first.
constexpr std::int32_t kLastRows[] = {kSheetRows, 1'040'000, 900'000, 700'000,
                                      500'000,    300'000,   150'000, 70'000};
// One column stays free between what is used and what is written.
constexpr std::int32_t kGap = 2;

std::int32_t LastUsedColumn(const SheetRef& sheet) {
    const auto cursor = sheet->createCursor();
    Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
    return Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)
               ->getRangeAddress()
               .EndColumn +
           1;
}

// The rightmost column (1-based) with a content in some rows; 0 when there is none.
std::int32_t LastFilledColumn(const SheetRef& sheet, std::int32_t top, std::int32_t bottom) {
    namespace Flags = css::sheet::CellFlags;
    const auto rows = sheet->getCellRangeByPosition(0, top - 1, kSheetColumns - 1, bottom - 1);
    const auto filled =
        Reference<css::sheet::XCellRangesQuery>(rows, UNO_QUERY_THROW)
            ->queryContentCells(Flags::VALUE | Flags::DATETIME | Flags::STRING | Flags::FORMULA);
    std::int32_t last = 0;
    for (const auto& part : filled->getRangeAddresses()) last = std::max(last, part.EndColumn + 1);
    return last;
}

template <class Interface>
Reference<Interface> Property(const Reference<css::uno::XInterface>& owner, const char16_t* name) {
    Reference<Interface> value;
    Reference<css::beans::XPropertySet>(owner, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(name)) >>= value;
    return value;
}

}  // namespace

FreeCells::FreeCells(const CalcDocument& document, const DocumentChanges& changes)
    : document_(document), changes_(changes) {
    static_assert(std::size(kLastRows) == kBands);
}

std::optional<CellAddress> FreeCells::Find(int sheet, const std::vector<Block>& besides) {
    Collect();
    Reach reach = reaches_.at(static_cast<std::size_t>(sheet));
    for (const Block& block : besides) {
        if (block.firstSheet <= sheet && sheet <= block.lastSheet) Add(block.area, reach);
    }
    return Best(sheet, reach);
}

std::optional<CellAddress> FreeCells::FindEmpty(int sheet) { return Best(sheet, Reach{}); }

std::optional<CellAddress> FreeCells::Best(int sheet, const Reach& reach) const {
    const std::int32_t used = LastUsedColumn(document_.Sheet(sheet));
    std::optional<CellAddress> best;
    for (int band = 0; band < kBands; ++band) {
        const std::int32_t column =
            FreeColumn(sheet, band, used, reach[static_cast<std::size_t>(band)]);
        if (column + kColumns - 1 > kSheetColumns) continue;
        if (!best || column - 1 < best->Column) {
            best = CellAddress(static_cast<sal_Int16>(sheet), column - 1, kLastRows[band] - 1);
        }
        // No other band can have it further to the left.
        if (column <= used + kGap) break;
    }
    return best;
}

// Behind the data of the whole sheet; where these reach to its edge, at least
// behind those of the band's rows.
std::int32_t FreeCells::FreeColumn(int sheet, int band, std::int32_t used,
                                   std::int32_t reached) const {
    const std::int32_t column = std::max(used, reached) + kGap;
    if (column + kColumns - 1 <= kSheetColumns) return column;
    const std::int32_t last = kLastRows[band];
    return std::max(LastFilledColumn(document_.Sheet(sheet), last - kRows + 1, last), reached) +
           kGap;
}

void FreeCells::Collect() {
    const auto sheets = static_cast<std::size_t>(document_.SheetCount());
    if (collectedAt_ == changes_.count() && reaches_.size() == sheets) return;
    reaches_.assign(sheets, Reach{});
    names_.clear();
    CollectNames();
    CollectTables();
    for (std::size_t sheet = 0; sheet < sheets; ++sheet) CollectSheet(static_cast<int>(sheet));
    collectedAt_ = changes_.count();
}

// What a name means depends on the formula that it is used in, so names are only
// kept here. The token of a name knows it by its number.
void FreeCells::CollectNames() {
    const auto keep = [&](const Reference<css::uno::XInterface>& owner, sal_Int32 sheet) {
        const auto names = Property<css::container::XNameAccess>(owner, u"NamedRanges");
        if (!names.is()) return;
        for (const auto& key : names->getElementNames()) {
            Reference<css::sheet::XFormulaTokens> name;
            names->getByName(key) >>= name;
            sal_Int32 number = 0;
            Reference<css::beans::XPropertySet>(name, UNO_QUERY_THROW)
                ->getPropertyValue(ToOUString(u"TokenIndex")) >>= number;
            names_[{sheet, number}] = name->getTokens();
        }
    };
    keep(document_.model(), -1);
    for (int sheet = 0; sheet < document_.SheetCount(); ++sheet)
        keep(document_.Sheet(sheet), sheet);
}

void FreeCells::CollectTables() {
    const auto tables =
        Property<css::container::XIndexAccess>(document_.model(), u"DatabaseRanges");
    for (sal_Int32 k = 0; tables.is() && k < tables->getCount(); ++k) {
        Reference<css::sheet::XDatabaseRange> table;
        tables->getByIndex(k) >>= table;
        if (!table.is()) continue;
        const auto area = table->getDataArea();
        Add({area.Sheet,
             area.Sheet,
             {area.StartRow + 1, area.StartColumn + 1, area.EndRow + 1, area.EndColumn + 1}});
    }
}

void FreeCells::CollectSheet(int sheet) {
    const SheetRef cells = document_.Sheet(sheet);
    const auto formulas = Reference<css::sheet::XCellRangesQuery>(cells, UNO_QUERY_THROW)
                              ->queryContentCells(css::sheet::CellFlags::FORMULA);
    for (const auto& part : formulas->getRangeAddresses()) {
        for (sal_Int32 column = part.StartColumn; column <= part.EndColumn; ++column) {
            for (sal_Int32 row = part.StartRow; row <= part.EndRow; ++row) {
                const Reference<css::sheet::XFormulaTokens> cell(
                    cells->getCellByPosition(column, row), UNO_QUERY_THROW);
                namesSeen_.clear();
                Add(cell->getTokens(), CellAddress(static_cast<sal_Int16>(sheet), column, row));
            }
        }
    }
}

void FreeCells::Add(const Tokens& tokens, const CellAddress& at) {
    const OpCodes& codes = document_.formulas().codes();
    css::sheet::NameToken name;
    for (const Token& token : tokens) {
        if (token.OpCode == codes.name && (token.Data >>= name)) {
            const std::pair key(name.Sheet, name.Index);
            const auto known = names_.find(key);
            if (known != names_.end() && namesSeen_.insert(key).second) Add(known->second, at);
        } else if (const auto block = BlockOf(token, at)) {
            Add(*block);
        } else {
            AddText(token);
        }
    }
}

// A text that reads as cells may be INDIRECT's.
void FreeCells::AddText(const Token& token) {
    rtl::OUString text;
    if (token.Data.getValueTypeClass() != css::uno::TypeClass_STRING || !(token.Data >>= text) ||
        text.indexOf(':') < 0) {
        return;
    }
    const auto parts = SplitReference(ToText(text));
    const auto area = parts ? ParseArea(parts->rest) : std::nullopt;
    if (area) Add({0, static_cast<int>(reaches_.size()) - 1, *area});
}

void FreeCells::Add(const Block& block) {
    for (int sheet = block.firstSheet; sheet <= block.lastSheet; ++sheet) {
        if (sheet < static_cast<int>(reaches_.size()))
            Add(block.area, reaches_[static_cast<std::size_t>(sheet)]);
    }
}

void FreeCells::Add(const Area& area, Reach& reach) {
    for (std::size_t band = 0; band < kBands; ++band) {
        const std::int32_t last = kLastRows[band];
        if (area.top <= last && area.bottom > last - kRows)
            reach[band] = std::max(reach[band], area.right);
    }
}

}  // namespace korvane::calc
