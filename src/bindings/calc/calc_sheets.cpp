#include "bindings/calc/calc_sheets.h"

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "bindings/calc/calc_names.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

std::u16string CalcWorkbook::Name() {
    return Ask(document_, [&] { return document_->FileName(); });
}

std::u16string CalcWorkbook::Path() {
    return Ask(document_, [&] { return document_->FolderPath(); });
}

host::NamesPtr CalcWorkbook::Names() {
    return Ask(document_,
               [&]() -> host::NamesPtr { return std::make_shared<CalcNames>(document_); });
}

void CalcWorkbook::Activate() {
    Ask(document_, [&] {
        if (document_->activate) return document_->activate();
        const auto controller = document_->controller();
        const auto frame =
            controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>();
        if (!frame.is()) return;
        // The frame's own activate() does not raise the window.
        const Reference<css::awt::XTopWindow> window(frame->getContainerWindow(), UNO_QUERY);
        if (window.is()) window->toFront();
    });
}

std::u16string CalcWorksheet::Name() {
    return Ask(document_, [&] {
        return ToText(Reference<css::container::XNamed>(sheet_, UNO_QUERY_THROW)->getName());
    });
}

host::WorkbookPtr CalcWorksheet::Parent() {
    return Ask(document_,
               [&]() -> host::WorkbookPtr { return std::make_shared<CalcWorkbook>(document_); });
}

host::NamesPtr CalcWorksheet::Names() {
    return Ask(document_,
               [&]() -> host::NamesPtr { return std::make_shared<CalcNames>(document_, sheet_); });
}

bool CalcWorksheet::ProtectContents() {
    return Ask(document_, [&] {
        return static_cast<bool>(
            Reference<css::util::XProtectable>(sheet_, UNO_QUERY_THROW)->isProtected());
    });
}

void CalcWorksheet::Activate() {
    Ask(document_, [&] {
        const auto where = Reference<css::sheet::XCellRangeAddressable>(sheet_, UNO_QUERY_THROW)
                               ->getRangeAddress();
        const Reference<css::sheet::XSpreadsheetView> view(document_->controller(), UNO_QUERY);
        if (view.is()) view->setActiveSheet(sheet_);
        document_->SetActiveCell(CellAddress(where.Sheet, 0, 0));
    });
}

}  // namespace korvane::calc
