#include "bindings/calc/token_places.h"

#include <algorithm>
#include <com/sun/star/sheet/ReferenceFlags.hpp>

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

bool Corner(const css::sheet::SingleReference& reference, const CellAddress& at, int& sheet,
            std::int32_t& row, std::int32_t& column) {
    namespace Flags = css::sheet::ReferenceFlags;
    const sal_Int32 flags = reference.Flags;
    if ((flags & (Flags::COLUMN_DELETED | Flags::ROW_DELETED | Flags::SHEET_DELETED)) != 0)
        return false;
    sheet =
        (flags & Flags::SHEET_RELATIVE) != 0 ? at.Sheet + reference.RelativeSheet : reference.Sheet;
    row = (flags & Flags::ROW_RELATIVE) != 0 ? at.Row + reference.RelativeRow : reference.Row;
    column = (flags & Flags::COLUMN_RELATIVE) != 0 ? at.Column + reference.RelativeColumn
                                                   : reference.Column;
    return row >= 0 && row < kSheetRows && column >= 0 && column < kSheetColumns && sheet >= 0;
}

}  // namespace

std::optional<Block> BlockOf(const Token& token, const CellAddress& at) {
    if (token.Data.getValueTypeClass() != css::uno::TypeClass_STRUCT) return std::nullopt;
    css::sheet::SingleReference single;
    css::sheet::ComplexReference complex;
    if (token.Data >>= single) {
        complex.Reference1 = complex.Reference2 = single;
    } else if (!(token.Data >>= complex)) {
        return std::nullopt;
    }
    Block block;
    Area& area = block.area;
    if (!Corner(complex.Reference1, at, block.firstSheet, area.top, area.left)) return std::nullopt;
    if (!Corner(complex.Reference2, at, block.lastSheet, area.bottom, area.right))
        return std::nullopt;
    if (block.firstSheet > block.lastSheet) std::swap(block.firstSheet, block.lastSheet);
    if (area.top > area.bottom) std::swap(area.top, area.bottom);
    if (area.left > area.right) std::swap(area.left, area.right);
    for (auto* number : {&area.top, &area.left, &area.bottom, &area.right}) ++*number;
    return block;
}

bool HasSeveralSheets(const Tokens& tokens, const CellAddress& at) {
    return std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
        const auto block = BlockOf(token, at);
        return block && block->firstSheet != block->lastSheet;
    });
}

}  // namespace korvane::calc
