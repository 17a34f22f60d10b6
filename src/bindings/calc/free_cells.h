// Cells that are empty and that nothing in a document refers to.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/document_changes.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/token_places.h"

namespace korvane::calc {

// A block of free cells, by its lower left cell: `rows` upwards and `columns` to
// the right of it. What is written there reaches no formula of the document, and
// no formula calculates again because of it.
//
// Such a block lies below the data, to the right of every reference that comes
// so far down. A reference to whole columns takes the cells of these columns, one
// to whole rows those of these rows: so several bands of rows are looked at, and
// the one that leaves the leftmost columns free is the best, since the office
// takes the longer the more columns of a sheet are in use.
class FreeCells {
public:
    // Both must outlive it.
    FreeCells(const CalcDocument& document, const DocumentChanges& changes);

    static constexpr int kRows = 256;
    static constexpr int kColumns = 32;

    // Nothing when formulas refer to every cell of the sheet. `besides` are
    // further places that must not be taken.
    std::optional<CellAddress> Find(int sheet, const std::vector<Block>& besides);
    // At least empty, whatever refers to it; nothing when the sheet is full.
    std::optional<CellAddress> FindEmpty(int sheet);

private:
    static constexpr int kBands = 8;
    // The rightmost column (1-based) that is referred to in each band of a sheet.
    using Reach = std::array<std::int32_t, kBands>;

    std::optional<CellAddress> Best(int sheet, const Reach& reach) const;
    std::int32_t FreeColumn(int sheet, int band, std::int32_t used, std::int32_t reached) const;
    void Collect();
    void CollectNames();
    void CollectTables();
    void CollectSheet(int sheet);
    void Add(const Tokens& tokens, const CellAddress& at);
    void AddText(const Token& token);
    void Add(const Block& block);
    static void Add(const Area& area, Reach& reach);

    const CalcDocument& document_;
    const DocumentChanges& changes_;
    std::optional<unsigned long> collectedAt_;        // the count of changes then
    std::vector<Reach> reaches_;                      // of each sheet
    using NameKey = std::pair<sal_Int32, sal_Int32>;  // the sheet (-1: none) and a number
    std::map<NameKey, Tokens> names_;
    std::set<NameKey> namesSeen_;  // of one formula: a name within itself ends there
};

}  // namespace korvane::calc
