#include "painted_book.h"

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::test {
namespace {

constexpr const char* kHead = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" xmlns:calcext="urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0" office:version="1.3" office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:styles>
  <style:style style:name="Default" style:family="table-cell"/>
  <style:style style:name="Marked" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:background-color="#ffeecc"/></style:style>
  <style:style style:name="Alert" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:background-color="#ff9999"/></style:style>
 </office:styles>
 <office:automatic-styles>
  <style:style style:name="hidden" style:family="table"><style:table-properties table:display="false"/></style:style>
  <style:style style:name="blue" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:background-color="#123456"/></style:style>
  <style:style style:name="red" style:family="table-cell" style:parent-style-name="Default"><style:table-cell-properties fo:background-color="#ff0000"/></style:style>
  <style:style style:name="over" style:family="table-cell" style:parent-style-name="Marked"><style:table-cell-properties fo:background-color="#00ff00"/></style:style>
 </office:automatic-styles>
 <office:body><office:spreadsheet>
)";

constexpr const char* kConditions =
    R"(<calcext:conditional-formats><calcext:conditional-format calcext:target-range-address="Fills.E1:Fills.E6"><calcext:condition calcext:apply-style-name="Alert" calcext:value="&gt;3" calcext:base-cell-address="Fills.E1"/></calcext:conditional-format></calcext:conditional-formats>)";

std::string Styled(std::string_view style) {
    return style.empty() ? "" : " table:style-name=\"" + std::string(style) + "\"";
}
std::string Number(int value, std::string_view style = {}) {
    const std::string text = std::to_string(value);
    return "<table:table-cell" + Styled(style) + " office:value-type=\"float\" office:value=\"" +
           text + "\"><text:p>" + text + "</text:p></table:table-cell>";
}
std::string Formula(const std::string& text, std::string_view style = {}) {
    return "<table:table-cell" + Styled(style) + " table:formula=\"of:=" + text + "\"/>";
}
std::string Row(const std::string& cells) {
    return "<table:table-row>" + cells + "</table:table-row>\n";
}
std::string Table(const std::string& name, const std::string& attributes, const std::string& rows) {
    return "<table:table table:name=\"" + name + "\"" + attributes + ">\n" + rows +
           "</table:table>\n";
}

// Each part compares all of the numbers with all of them.
std::string SlowFormula() {
    std::string text;
    for (int part = 1; part <= 24; ++part) {
        const std::string cells = "[$Numbers.$A$1:.$A$300]";
        text += (part == 1 ? "" : "+") + std::string("SUMPRODUCT((") + cells + "&gt;TRANSPOSE(" +
                cells + ")+" + std::to_string(part) + ")*1)";
    }
    return text;
}

std::string MainSheet() {
    std::string rows;
    rows += Row(Number(3) + Number(40) + Number(5, "blue"));
    rows += Row(Number(7) +
                Formula("SUM([Fills.A1:.A4])+SUM([Fills.B1:.B4])+SUM([Fills.C1:.D4])+[Fills.E4]+"
                        "SUM([Fills.E1:.E6])+[Fills.F1]+[Fills.F2]+[.A1]+[.C1]",
                        "Marked"));
    rows += Row(Number(1) + Formula(SlowFormula(), "red"));
    rows += Row(Number(2) + Formula("IF([.B3]&gt;[.A1];[.B2];[.A2])+SUM([.A1:.A4])"));
    for (int row = 5; row <= 12; ++row) {
        rows += Row(Number(row) + Formula("SUM([.A$1:.A" + std::to_string(row) + "])*[.A" +
                                          std::to_string(row) + "]+[Behind.A1]+[Shut.A1]"));
    }
    return rows;
}

std::string FillsSheet() {
    std::string rows;
    for (int row = 1; row <= 6; ++row) {
        rows += Row(Number(row) + Number(row, "blue") + Number(row, row % 2 != 0 ? "red" : "") +
                    Number(row, row % 3 != 0 ? "Marked" : "blue") + Number(row) +
                    Number(row, row == 1 ? "Marked" : "over"));
    }
    return rows + kConditions;
}

}  // namespace

void WritePaintedBook(const std::filesystem::path& path) {
    std::string numbers;
    for (int row = 0; row < 300; ++row) numbers += Row(Number(row * 37 % 101));
    std::ofstream(path, std::ios::binary)
        << kHead << Table("Main", "", MainSheet()) << Table("Fills", "", FillsSheet())
        << Table("Numbers", "", numbers)
        << Table("Behind", " table:style-name=\"hidden\"", Row(Number(11) + Formula("[.A1]*2")))
        << Table("Shut", " table:protected=\"true\"", Row(Number(12) + Formula("[.A1]+[Main.A1]")))
        << "</office:spreadsheet></office:body></office:document>\n";
}

}  // namespace korvane::test
