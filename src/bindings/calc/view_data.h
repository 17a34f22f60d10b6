// What the document's view knows: the active cell and the selection.
#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <optional>
#include <string>

namespace korvane::calc {

// The cell of the cursor; nothing without a view, or for a view of another kind.
std::optional<com::sun::star::table::CellAddress> ActiveCellOfView(
    const com::sun::star::uno::Reference<com::sun::star::frame::XController>& controller);

// The one block of cells that is selected; nothing when something else is.
std::optional<com::sun::star::table::CellRangeAddress> SelectionOfView(
    const com::sun::star::uno::Reference<com::sun::star::frame::XController>& controller);

// Where the cursor is and what is selected, to be compared with the same later.
std::u16string DescribeView(
    const com::sun::star::uno::Reference<com::sun::star::frame::XController>& controller);

}  // namespace korvane::calc
