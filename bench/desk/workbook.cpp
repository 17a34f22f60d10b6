#include "workbook.h"

#include <algorithm>
#include <iterator>

namespace korvane::bench {
namespace {

constexpr int kRows = 40;
// IF, its condition, the cell in it, its branch, INDEX, the range, the index,
// the other branch, SUM: so many rows of the tree.
constexpr int kPartsOfGroup = 9;

std::string At(char column, int row) {
    return std::string("[.") + column + std::to_string(row) + "]";
}

std::string Group(int number) {
    const int row = number % kRows + 1;
    return "IF(" + At('A', row) + "&gt;50;INDEX([.A$1:.A$40];" + At('B', row) + ");SUM([.C1:.C" +
           std::to_string(row) + "])*2)";
}

std::string FormulaOf(int parts) {
    std::string text = "of:=";
    for (int k = 0; k < std::max(1, parts / kPartsOfGroup); ++k)
        text += (k > 0 ? "+" : "") + Group(k);
    return text;
}

std::string WalkedFormula() {
    std::string text = "of:=";
    for (int row = 1; row <= kWalkedRows; ++row) {
        text += (row > 1 ? "+" : "") + At(static_cast<char>('A' + row % 3), row);
    }
    return text;
}

std::string ValueCell(int number) {
    return "<table:table-cell office:value-type=\"float\" office:value=\"" +
           std::to_string(number) + "\"/>";
}

std::string FormulaCell(const std::string& formula) {
    return "<table:table-cell table:formula=\"" + formula + "\"/>";
}

}  // namespace

std::string CellOf(int parts) {
    const auto* const found = std::find(std::begin(kParts), std::end(kParts), parts);
    return "E" + std::to_string(found - std::begin(kParts) + 1);
}

std::string WorkbookText() {
    std::string rows;
    for (int row = 1; row <= kRows; ++row) {
        rows += "<table:table-row>" + ValueCell(row * 37 % 97) + ValueCell(row * 7 % kRows + 1) +
                ValueCell(row) + "<table:table-cell/>";
        if (row <= static_cast<int>(std::size(kParts)))
            rows += FormulaCell(FormulaOf(kParts[row - 1]));
        if (row == 9) rows += FormulaCell(WalkedFormula());
        rows += "</table:table-row>";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document "
           "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
           "xmlns:of=\"urn:oasis:names:tc:opendocument:xmlns:of:1.2\" office:version=\"1.3\" "
           "office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\"><office:body>"
           "<office:spreadsheet><table:table table:name=\"Data\">" +
           rows + "</table:table></office:spreadsheet></office:body></office:document>";
}

}  // namespace korvane::bench
