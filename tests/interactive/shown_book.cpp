#include "shown_book.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/uno_text.h"
#include "tests_in_office.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

css::beans::PropertyValue Property(const char16_t* name, const rtl::OUString& text) {
    css::beans::PropertyValue property;
    property.Name = ToOUString(name);
    property.Value <<= text;
    return property;
}

}  // namespace

ShownBook::ShownBook(const std::string& fileName, const std::string& content) {
    const auto path = std::filesystem::path(std::getenv("TMPDIR")) / fileName;
    std::ofstream(path, std::ios::binary) << content;
    const auto desktop = css::frame::Desktop::create(OfficeContext());
    const auto filter = Property(u"FilterName", ToOUString(u"OpenDocument Spreadsheet Flat XML"));
    model_.set(desktop->loadComponentFromURL(ToOUString(ToUtf16("file://" + path.string())),
                                             ToOUString(u"_blank"), 0, {&filter, 1}),
               UNO_QUERY_THROW);
    WaitForFocus();
}

ShownBook::~ShownBook() { Close(); }

Reference<css::frame::XController> ShownBook::view() const {
    return model_->getCurrentController();
}

void ShownBook::WaitForFocus() const {
    const auto desktop = css::frame::Desktop::create(OfficeContext());
    const bool hasFocus = LetOfficeWorkUntil([&] {
        const auto frame = desktop->getCurrentFrame();
        return frame.is() && frame == view()->getFrame() && frame->isActive();
    });
    if (!hasFocus) throw std::runtime_error("A window does not get the keyboard");
}

// As by a click on its title: the office learns of it from the window system.
void ShownBook::Activate() const {
    const std::string command =
        "xdotool windowactivate " + std::to_string(calc::WindowHandle(view()->getFrame()));
    if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
    WaitForFocus();
    LetOfficeWork();
}

void ShownBook::Close() {
    if (!model_.is()) return;
    try {
        Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
    } catch (const css::uno::Exception&) {
        // Somebody else has closed it.
    }
    model_.clear();
    LetOfficeWork();
}

Reference<css::table::XCellRange> ShownBook::Cells(const std::string& reference) const {
    const auto dot = reference.rfind('.');
    const auto sheets =
        Reference<css::sheet::XSpreadsheetDocument>(model_, UNO_QUERY_THROW)->getSheets();
    Reference<css::sheet::XSpreadsheet> sheet;
    if (dot == std::string::npos) {
        Reference<css::container::XIndexAccess>(sheets, UNO_QUERY_THROW)->getByIndex(0) >>= sheet;
    } else {
        sheets->getByName(ToOUString(ToUtf16(reference.substr(0, dot)))) >>= sheet;
    }
    return sheet->getCellRangeByName(
        ToOUString(ToUtf16(dot == std::string::npos ? reference : reference.substr(dot + 1))));
}

void ShownBook::Select(const std::string& reference) const {
    const auto cells = Cells(reference);
    const Reference<css::sheet::XSheetCellRange> range(cells, UNO_QUERY_THROW);
    Reference<css::sheet::XSpreadsheetView>(view(), UNO_QUERY_THROW)
        ->setActiveSheet(range->getSpreadsheet());
    css::uno::Any selected;
    selected <<= cells;
    Reference<css::view::XSelectionSupplier>(view(), UNO_QUERY_THROW)->select(selected);
}

std::string ShownBook::Selected() const {
    const css::uno::Any selected =
        Reference<css::view::XSelectionSupplier>(view(), UNO_QUERY_THROW)->getSelection();
    const Reference<css::sheet::XCellRangeAddressable> cells(selected, UNO_QUERY);
    const Reference<css::sheet::XSheetCellRange> range(selected, UNO_QUERY);
    if (!cells.is() || !range.is()) return "no cells";
    const auto at = cells->getRangeAddress();
    const Reference<css::container::XNamed> sheet(range->getSpreadsheet(), UNO_QUERY_THROW);
    const Reference<css::frame::XTitle> title(model_, UNO_QUERY_THROW);
    return "[" + ToUtf8(ToText(title->getTitle())) + "]" + ToUtf8(ToText(sheet->getName())) + "!" +
           ToUtf8(AreaText({at.StartRow + 1, at.StartColumn + 1, at.EndRow + 1, at.EndColumn + 1},
                           true, true));
}

std::u16string ShownBook::Title() const {
    rtl::OUString title;
    Reference<css::beans::XPropertySet>(view()->getFrame(), UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"Title")) >>= title;
    return ToText(title);
}

}  // namespace korvane::test
