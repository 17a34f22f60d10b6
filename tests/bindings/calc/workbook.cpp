#include "workbook.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "apps/office/loader.h"
#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "inside_office.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

std::string Escaped(const std::string& text) {
    std::string out;
    for (const char ch : text) {
        switch (ch) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '"': out += "&quot;"; break;
            default: out += ch;
        }
    }
    return out;
}

std::string CellText(const TestSheet::Cell& cell) {
    std::string attributes;
    if (!cell.style.empty()) attributes += " table:style-name=\"" + cell.style + "\"";
    std::string content = cell.content;
    if (content.starts_with("{=")) {
        attributes += " table:number-matrix-columns-spanned=\"" +
                      std::to_string(cell.arrayColumns) + "\" table:number-matrix-rows-spanned=\"" +
                      std::to_string(cell.arrayRows) + "\"";
        content = content.substr(1, content.size() - 2);
    }
    if (content.starts_with("=")) {
        return "<table:table-cell" + attributes + " table:formula=\"of:" + Escaped(content) +
               "\"/>";
    }
    if (content.empty()) return "<table:table-cell" + attributes + "/>";
    if (content == "TRUE" || content == "FALSE") {
        return "<table:table-cell" + attributes +
               " office:value-type=\"boolean\" office:boolean-value=\"" +
               (content == "TRUE" ? "true" : "false") + "\"/>";
    }
    if (IsNumeric(ToUtf16(content))) {
        return "<table:table-cell" + attributes + " office:value-type=\"float\" office:value=\"" +
               content + "\"/>";
    }
    return "<table:table-cell" + attributes + " office:value-type=\"string\"><text:p>" +
           Escaped(content) + "</text:p></table:table-cell>";
}

std::string SheetText(const TestSheet& sheet, const std::vector<TestName>& names) {
    std::string out = "<table:table table:name=\"" + Escaped(sheet.name) +
                      "\" table:style-name=\"" + (sheet.hidden ? "hidden" : "shown") + "\"" +
                      (sheet.isProtected ? " table:protected=\"true\"" : "") + ">";
    for (int column = 1; column <= 8; ++column) {
        const bool hidden =
            std::count(sheet.hiddenColumns.begin(), sheet.hiddenColumns.end(), column) > 0;
        out += std::string("<table:table-column") +
               (hidden ? " table:visibility=\"collapse\"" : "") + "/>";
    }
    std::map<int, std::map<int, const TestSheet::Cell*>> rows;
    for (const auto& cell : sheet.cells) rows[cell.row][cell.column] = &cell;
    for (const int row : sheet.hiddenRows) rows[row];
    int row = 1;
    for (const auto& [at, cells] : rows) {
        if (at > row) {
            out += "<table:table-row table:number-rows-repeated=\"" + std::to_string(at - row) +
                   "\"><table:table-cell/></table:table-row>";
        }
        const bool hidden = std::count(sheet.hiddenRows.begin(), sheet.hiddenRows.end(), at) > 0;
        out += std::string("<table:table-row") + (hidden ? " table:visibility=\"collapse\"" : "") +
               ">";
        int column = 1;
        for (const auto& [place, cell] : cells) {
            for (; column < place; ++column) out += "<table:table-cell/>";
            out += CellText(*cell);
            ++column;
        }
        out += "<table:table-cell/></table:table-row>";
        row = at + 1;
    }
    out += "<table:named-expressions>";
    for (const auto& name : names) {
        if (name.sheet != sheet.name) continue;
        out += "<table:named-expression table:name=\"" + name.name +
               "\" table:base-cell-address=\"$'" + Escaped(sheet.name) +
               "'.$A$1\" table:expression=\"of:" + Escaped(name.expression) + "\"/>";
    }
    return out + "</table:named-expressions></table:table>";
}

}  // namespace

std::string FlatText(const std::vector<TestSheet>& sheets, const std::vector<TestName>& names,
                     const std::string& spreadsheetAttributes) {
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
        "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
        " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
        " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
        " xmlns:of=\"urn:oasis:names:tc:opendocument:xmlns:of:1.2\""
        " xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\""
        " xmlns:number=\"urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0\""
        " xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\""
        " office:version=\"1.3\" "
        "office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\">"
        "<office:automatic-styles>"
        "<number:date-style style:name=\"iso\"><number:year "
        "number:style=\"long\"/><number:text>-</number:text>"
        "<number:month number:style=\"long\"/><number:text>-</number:text><number:day "
        "number:style=\"long\"/>"
        "</number:date-style>"
        "<style:style style:name=\"shown\" style:family=\"table\"><style:table-properties "
        "table:display=\"true\"/></style:style>"
        "<style:style style:name=\"hidden\" style:family=\"table\"><style:table-properties "
        "table:display=\"false\"/></style:style>"
        "<style:style style:name=\"date\" style:family=\"table-cell\" "
        "style:data-style-name=\"iso\"/>"
        "<style:style style:name=\"yellow\" "
        "style:family=\"table-cell\"><style:table-cell-properties "
        "fo:background-color=\"#ffff00\"/></style:style>"
        "<style:style style:name=\"open\" style:family=\"table-cell\"><style:table-cell-properties "
        "style:cell-protect=\"none\"/></style:style>"
        "</office:automatic-styles><office:body><office:spreadsheet" +
        spreadsheetAttributes + ">";
    for (const auto& sheet : sheets) out += SheetText(sheet, names);
    out += "<table:named-expressions>";
    for (const auto& name : names) {
        if (!name.sheet.empty()) continue;
        out += "<table:named-expression table:name=\"" + name.name +
               "\" table:base-cell-address=\"$'" + Escaped(sheets.front().name) +
               "'.$A$1\" table:expression=\"of:" + Escaped(name.expression) + "\"/>";
    }
    return out + "</table:named-expressions></office:spreadsheet></office:body></office:document>";
}

OpenBook::OpenBook(const std::string& fileName, const std::string& content)
    : OpenBook([&] {
          const auto path = std::filesystem::path(std::getenv("TMPDIR")) / fileName;
          std::ofstream(path, std::ios::binary) << content;
          return path.string();
      }()) {}

OpenBook::OpenBook(const std::string& path)
    : model_(office::OpenWorkbook(OfficeContext(), path)),
      application_(std::make_unique<CalcApplication>(
          OfficeContext(), model_, AddinFile{u"korvane-office.so", u"/add-in"})) {}

OpenBook::~OpenBook() { Close(); }

void OpenBook::SetAutomaticCalculation(bool automatic) {
    Reference<css::sheet::XCalculatable>(model_, UNO_QUERY_THROW)
        ->enableAutomaticCalculation(automatic);
}

void OpenBook::CalculateAll() {
    Reference<css::sheet::XCalculatable>(model_, UNO_QUERY_THROW)->calculateAll();
}

void OpenBook::Close() {
    if (!model_.is()) return;
    Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
    model_.clear();
}

std::string OpenBook::Snapshot() const {
    std::ostringstream out;
    const auto& document = *application_->document();
    out << "modified "
        << static_cast<int>(
               Reference<css::util::XModifiable>(model_, UNO_QUERY_THROW)->isModified());
    const auto undo =
        Reference<css::document::XUndoManagerSupplier>(model_, UNO_QUERY_THROW)->getUndoManager();
    for (const auto& title : undo->getAllUndoActionTitles())
        out << " undo " << ToUtf8(ToText(title));
    for (const auto& title : undo->getAllRedoActionTitles())
        out << " redo " << ToUtf8(ToText(title));
    bool undoEnabled = false;
    Reference<css::beans::XPropertySet>(model_, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"IsUndoEnabled")) >>= undoEnabled;
    out << " recording " << static_cast<int>(undoEnabled) << " locked "
        << static_cast<int>(undo->isLocked()) << " controllers "
        << static_cast<int>(model_->hasControllersLocked()) << '\n';
    for (int sheet = 0; sheet < document.SheetCount(); ++sheet) {
        const auto cursor = document.Sheet(sheet)->createCursor();
        Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
        const auto end = Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)
                             ->getRangeAddress();
        // Not the last column: where all columns are formatted, it is the last one
        // that Calc has had a reason to make, and reading a cell is a reason.
        out << ToUtf8(document.SheetName(sheet)) << " to " << end.EndRow << '\n';
        for (sal_Int32 row = 0; row <= std::min(end.EndRow, sal_Int32{2000}); ++row) {
            for (sal_Int32 column = 0; column <= std::min(end.EndColumn, sal_Int32{200});
                 ++column) {
                const auto cell = document.Sheet(sheet)->getCellByPosition(column, row);
                if (cell->getType() == css::table::CellContentType_EMPTY) continue;
                const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
                sal_Int32 format = 0;
                sal_Int32 fill = 0;
                properties->getPropertyValue(ToOUString(u"NumberFormat")) >>= format;
                properties->getPropertyValue(ToOUString(u"CellBackColor")) >>= fill;
                out << row << ' ' << column << ' ' << ToUtf8(ToText(cell->getFormula())) << " | "
                    << cell->getValue() << ' ' << cell->getError() << ' '
                    << ToUtf8(ToText(
                           Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->getString()))
                    << ' ' << format << ' ' << fill << '\n';
            }
        }
    }
    return out.str();
}

std::string Difference(const std::string& before, const std::string& after) {
    std::istringstream first(before);
    std::istringstream second(after);
    std::string a;
    std::string b;
    for (;;) {
        const bool moreOfFirst = static_cast<bool>(std::getline(first, a));
        const bool moreOfSecond = static_cast<bool>(std::getline(second, b));
        if (!moreOfFirst && !moreOfSecond) return {};
        if (!moreOfFirst) a = "(nothing)";
        if (!moreOfSecond) b = "(nothing)";
        if (a != b) return "before: " + a + "\nafter:  " + b;
    }
}

std::string Shown(const Value& value) {
    if (value.IsEmpty()) return "empty";
    if (value.IsNull()) return "null";
    if (value.Text()) return '"' + ToUtf8(*value.Text()) + '"';
    if (value.Boolean()) return *value.Boolean() ? "True" : "False";
    if (value.Number()) return ToUtf8(NumberText(*value.Number()));
    if (value.AsDate()) return "date " + ToUtf8(NumberText(value.AsDate()->serial));
    if (value.AsError()) return ToUtf8(ErrorName(*value.AsError()));
    if (const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject())) {
        const std::u16string address = range->Address(host::kExternal);
        return ToUtf8(std::u16string(AfterLast(address, u']')));
    }
    const Array* array = value.AsArray();
    if (array == nullptr) return "another object";
    std::string out = "{";
    for (std::size_t row = 1; row <= array->rows; ++row) {
        for (std::size_t column = 1; column <= array->columns; ++column) {
            out += Shown(array->At(row, column)) + (column < array->columns ? ","
                                                    : row < array->rows     ? ";"
                                                                            : "");
        }
    }
    return out + "}";
}

}  // namespace korvane::calc::testing
