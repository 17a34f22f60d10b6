// Cells of a Calc document.
#pragma once

#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <memory>

#include "bindings/calc/calc_document.h"
#include "host/range.h"

namespace korvane::calc {

class CalcRange : public host::Range, public std::enable_shared_from_this<CalcRange> {
public:
    // What a range stands for: callers ask entire rows and columns for Hidden.
    enum class Extent { kCells, kRows, kColumns };

    CalcRange(DocumentPtr document, CellRangeRef cells, Extent extent = Extent::kCells)
        : document_(std::move(document)), cells_(std::move(cells)), extent_(extent) {}
    // Cells of a sheet counted from 0.
    static host::RangePtr Make(const DocumentPtr& document, int sheet, const Area& area);

    korvane::Value Formula() override;
    void SetFormula(const std::u16string& formula) override;
    korvane::Value FormulaArray() override;
    void SetFormulaArray(const std::u16string& formula) override;
    bool HasArray() override;
    host::RangePtr CurrentArray() override;
    korvane::Value Value() override;
    std::int64_t CountLarge() override;
    korvane::Value Text() override;
    std::u16string Address(const host::AddressForm& form) override;
    host::WorksheetPtr Worksheet() override;
    host::NamePtr Name() override;
    host::RangePtr EntireRow() override;
    host::RangePtr EntireColumn() override;
    korvane::Value Hidden() override;
    host::InteriorPtr Interior() override;
    void Select() override;
    void Activate() override;

private:
    using CellRef = com::sun::star::uno::Reference<com::sun::star::table::XCell>;

    com::sun::star::table::CellRangeAddress Where() const;
    Area AreaOf() const;
    CellAddress FirstAddress() const;
    CellRef FirstCell() const;
    // The formula text of a cell of the range, counted from its first.
    std::u16string ShownFormula(sal_Int32 column, sal_Int32 row) const;
    // What is read of a large block: the cells that can hold anything.
    Area Occupied() const;
    korvane::Value BlockOf(korvane::Value (*read)(const CalcRange&, sal_Int32 column,
                                                  sal_Int32 row));
    void RequireWritable() const;
    void Write(const std::u16string& formula, bool asArray);
    void GoTo(bool selectAll);

    DocumentPtr document_;
    CellRangeRef cells_;
    Extent extent_;
};

}  // namespace korvane::calc
