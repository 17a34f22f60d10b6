#include "flat_file.h"

#include <algorithm>
#include <map>

#include "base/number.h"
#include "base/text.h"

namespace korvane::calc::testing {

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

}  // namespace korvane::calc::testing
