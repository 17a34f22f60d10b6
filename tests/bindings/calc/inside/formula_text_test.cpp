// Formulas as Excel would show them, whatever the office has made of them.
#include "bindings/calc/formula_text.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <cstdlib>
#include <filesystem>

#include "apps/report/exploration.h"
#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/formula_cells.h"
#include "bindings/calc/uno_text.h"
#include "excel_file.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;

std::string FormulaOf(OpenBook& book, const char16_t* place) {
    return Shown(book.Cell(place)->Formula());
}

// What the cell shows when `formula`, in the office's own spelling, is typed there.
std::string Typed(OpenBook& book, const char16_t* formula) {
    book.application().document()->Sheet(0)->getCellByPosition(7, 0)->setFormula(
        ToOUString(formula));
    return FormulaOf(book, u"H1");
}

OpenBook SmallBook(const char* name) {
    return OpenBook(name, FlatText({{"Data", {{1, 1, "1"}, {2, 1, "2"}, {3, 1, "3"}}},
                                    {"My Sheet", {{1, 1, "5"}}}}));
}

TEST(FormulaText, ArrayConstantsKeepTheirBooleans) {
    OpenBook book = SmallBook("booleans.fods");
    EXPECT_EQ(Typed(book, u"=INDEX({TRUE;FALSE};2)"), "\"=INDEX({TRUE,FALSE},2)\"");
    EXPECT_EQ(Typed(book, u"=SUM({FALSE;FALSE})"), "\"=SUM({FALSE,FALSE})\"");
    EXPECT_EQ(Typed(book, u"=INDEX({FALSE|1|\"a;|\"};1)"), "\"=INDEX({FALSE;1;\"a;|\"},1)\"");
    EXPECT_EQ(Typed(book, u"=SUM({1;2})+SUM({3|4})"), "\"=SUM({1,2})+SUM({3;4})\"");
    book.GoTo(u"A1");
    EXPECT_EQ(Shown(book.Evaluate(u"=MATCH(FALSE,{TRUE,FALSE},0)")), "2");
    EXPECT_EQ(Shown(book.Evaluate(u"=SUM({TRUE,FALSE,TRUE}*1)")), "2");
}

TEST(FormulaText, AFormulaWithAnArrayOfBooleansIsPutBack) {
    OpenBook book = SmallBook("kept.fods");
    Typed(book, u"=MATCH(FALSE();{TRUE;FALSE};0)");
    const auto cell = book.Cell(u"H1");
    cell->Select();
    const std::string before = book.Snapshot();
    const auto report = Explore(book.application(), cell, true, true);
    ASSERT_TRUE(report.ok);
    EXPECT_EQ(ToUtf8(report.tree->value), "2");
    EXPECT_EQ(ToUtf8(report.tree->children.at(0).value), "2");
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

TEST(FormulaText, ErrorConstantsStayInTheirPlaces) {
    OpenBook book("errors.xlsx",
                  ExcelFile({{"S",
                              {{"A1", "=Data!#REF!+#DIV/0!"},
                               {"B1", "=IF(ISERROR('My Sheet'!#REF!),#N/A,#NUM!)"},
                               {"C1", "=SUM({1,#N/A})+#NUM!"},
                               {"D1", "=SUM(Data!A1,Data!#REF!)+SUM({TRUE;FALSE})"}}},
                             {"Data", {{"A1", "1"}}},
                             {"My Sheet", {{"A1", "1"}}}}));
    EXPECT_EQ(FormulaOf(book, u"A1"), "\"=Data!#REF!+#DIV/0!\"");
    EXPECT_EQ(FormulaOf(book, u"B1"), "\"=IF(ISERROR('My Sheet'!#REF!),#N/A,#NUM!)\"");
    EXPECT_EQ(FormulaOf(book, u"C1"), "\"=SUM({1,#N/A})+#NUM!\"");
    EXPECT_EQ(FormulaOf(book, u"D1"), "\"=SUM(Data!A1,Data!#REF!)+SUM({TRUE;FALSE})\"");
    book.GoTo(u"S!A1");
    EXPECT_EQ(Shown(book.Evaluate(u"=Data!#REF!")), "#REF!");
}

TEST(FormulaText, LostReferencesAreWrittenAsExcelDoes) {
    OpenBook book("lost.fods", FlatText({{"S",
                                          {{1, 1, "1"},
                                           {1, 2, "=[$S.#REF!5]+#DIV/0!"},
                                           {1, 3, "=[$S.$A#REF!]&\"#N/A\"&#VALUE!"},
                                           {1, 4, "=[$#REF!.A1]+#N/A"},
                                           {1, 5, "=SUM([.A1:.#REF!])+#NUM!"},
                                           {1, 6, "=IFERROR(#N/A;[.#REF!#REF!])"},
                                           {1, 7, "=SUM([$S.A1:.#REF!#REF!];#NULL!)"}}}}));
    EXPECT_EQ(FormulaOf(book, u"B1"), "\"=S!#REF!+#DIV/0!\"");
    EXPECT_EQ(FormulaOf(book, u"C1"), "\"=S!#REF!&\"#N/A\"&#VALUE!\"");
    EXPECT_EQ(FormulaOf(book, u"D1"), "\"=#REF!+#N/A\"");
    EXPECT_EQ(FormulaOf(book, u"E1"), "\"=SUM(#REF!)+#NUM!\"");
    EXPECT_EQ(FormulaOf(book, u"F1"), "\"=IFERROR(#N/A,#REF!)\"");
    EXPECT_EQ(FormulaOf(book, u"G1"), "\"=SUM(#REF!,#NULL!)\"");
}

TEST(FormulaText, OtherFilesCellsAreShownWithTheirBook) {
    OpenBook book("linked.fods",
                  FlatText({{"S",
                             {{1, 1, "=['file:///nowhere/a%20b.ods'#$Data.$A$1]+1"},
                              {1, 2, "=SUM(['http://127.0.0.1:9/Prices.ods'#$'My Data'.A1:.A2])"},
                              {1, 3, "=IF(TRUE();['file:///nowhere/c.ods'#$Data.B1];2)"}}}}));
    EXPECT_EQ(FormulaOf(book, u"A1"), "\"='[a b.ods]Data'!$A$1+1\"");
    EXPECT_EQ(FormulaOf(book, u"B1"), "\"=SUM('[Prices.ods]My Data'!A1:A2)\"");
    EXPECT_EQ(FormulaOf(book, u"C1"), "\"=IF(TRUE,[c.ods]Data!B1,2)\"");
    book.GoTo(u"A1");
    EXPECT_EQ(Shown(book.Evaluate(u"='[a b.ods]Data'!$A$1+1")), "#REF!");
}

TEST(FormulaText, UnionsHaveBrackets) {
    OpenBook book("unions.fods",
                  FlatText({{"S",
                             {{1, 1, "1"},
                              {1, 2, "2"},
                              {2, 1, "=INDEX([.A1]~[.B1];1;1;2)"},
                              {2, 2, "=AREAS([.A1]~[.B1])+1"},
                              {2, 3, "=SUM(([.A1]~[.B1]);3)"},
                              {2, 4, "=SUM([.A1]~[.B1]~OFFSET([.A1];0;1))*ROWS([.A1:.A2])"},
                              {2, 5, "=AREAS(([.A1])~[.B1])"}}}}));
    EXPECT_EQ(FormulaOf(book, u"A2"), "\"=INDEX((A1,B1),1,1,2)\"");
    EXPECT_EQ(FormulaOf(book, u"B2"), "\"=AREAS((A1,B1))+1\"");
    EXPECT_EQ(FormulaOf(book, u"C2"), "\"=SUM((A1,B1),3)\"");
    EXPECT_EQ(FormulaOf(book, u"D2"), "\"=SUM((A1,B1,OFFSET(A1,0,1)))*ROWS(A1:A2)\"");
    EXPECT_EQ(FormulaOf(book, u"E2"), "\"=AREAS(((A1),B1))\"");
    book.GoTo(u"A2");
    EXPECT_EQ(Shown(book.Evaluate(u"=INDEX((A1,B1),1,1,2)")), "S!$B$1");
    EXPECT_EQ(Shown(book.Evaluate(u"=AREAS((A1,B1))+1")), "3");
}

TEST(FormulaText, NumbersHaveExcelsExponents) {
    OpenBook book = SmallBook("numbers.fods");
    EXPECT_EQ(Typed(book, u"=1E20*A1"), "\"=1E+20*A1\"");
    EXPECT_EQ(Shown(book.Cell(u"H1")->Text()), "\"1E+20\"");
    EXPECT_EQ(Typed(book, u"=1E-20"), "\"=1E-20\"");
    EXPECT_EQ(Typed(book, u"=\"1E+020\""), "\"=\"1E+020\"\"");
    EXPECT_EQ(Shown(book.Cell(u"H1")->Text()), "\"1E+020\"");
}

TEST(FormulaText, SheetsAreQuotedAsTheirAddressesAre) {
    OpenBook book("sheets.fods", FlatText({{"Main",
                                            {{1, 1, "=[$A1.A1]+1"},
                                             {1, 2, "=[$'1E5'.A1]+1"},
                                             {1, 3, "=SUM([$'TRUE'.A1:.A2])"},
                                             {1, 4, "=[$'A.B'.A1]"}}},
                                           {"A1", {{1, 1, "1"}}},
                                           {"1E5", {{1, 1, "2"}}},
                                           {"TRUE", {{1, 1, "3"}}},
                                           {"A.B", {{1, 1, "4"}}},
                                           {"Caf\xC3\xA9", {{1, 1, "5"}}},
                                           {"\xE2\x82\xACuro", {{1, 1, "6"}}}}));
    EXPECT_EQ(FormulaOf(book, u"A1"), "\"='A1'!A1+1\"");
    EXPECT_EQ(FormulaOf(book, u"B1"), "\"='1E5'!A1+1\"");
    EXPECT_EQ(FormulaOf(book, u"C1"), "\"=SUM('TRUE'!A1:A2)\"");
    EXPECT_EQ(FormulaOf(book, u"D1"), "\"=A.B!A1\"");
    book.GoTo(u"Main!A1");
    for (const char16_t* text : {u"='1E5'!A1+0", u"=1E5!A1+0"}) {
        EXPECT_EQ(Shown(book.Evaluate(text)), "2") << ToUtf8(text);
    }
    EXPECT_EQ(Shown(book.Evaluate(u"='TRUE'!A1+'A1'!A1+A.B!A1")), "8");
    EXPECT_EQ(Shown(book.Evaluate(u"=€uro!A1+0")), "6");
    EXPECT_EQ(Shown(book.Cell(u"CAFÉ!A1")->Value()), "5");
    EXPECT_EQ(Shown(book.Evaluate(u"=CAFÉ!A1+0")), "5");
}

TEST(FormulaText, ARangeOfTwoSheetsIsNoFormula) {
    OpenBook book = SmallBook("sheets2.fods");
    book.GoTo(u"A1");
    EXPECT_EQ(Shown(book.Evaluate(u"=Data!A1:B2Data!B1:B3")), "#VALUE!");
    EXPECT_EQ(Shown(book.Evaluate(u"=Data!A1:Data!B3")), "Data!$A$1:$B$3");
}

// An old workbook of Excel's does not say how the references in its texts are spelt.
TEST(ReferencesInTexts, AreExcelsInItsOldFiles) {
    const auto path = std::filesystem::path(std::getenv("TMPDIR")) / "old.xls";
    {
        OpenBook book("old.fods", FlatText({{"S",
                                             {{1, 1, "=INDIRECT(\"Data!B2\")"},
                                              {1, 2, "=INDIRECT(ADDRESS(2;2;1;1;\"Data\"))"},
                                              {1, 3, "=ADDRESS(2;2;1;1;\"Data\")"},
                                              {1, 4, "=CELL(\"address\";[$Data.B2])"}}},
                                            {"Data", {{2, 2, "5"}}}}));
        css::beans::PropertyValue filter;
        filter.Name = ToOUString(u"FilterName");
        filter.Value <<= ToOUString(u"MS Excel 97");
        css::uno::Reference<css::frame::XStorable>(book.application().document()->model(),
                                                   css::uno::UNO_QUERY_THROW)
            ->storeToURL(ToOUString(u"file://" + ToUtf16(path.string())),
                         css::uno::Sequence<css::beans::PropertyValue>(&filter, 1));
    }
    OpenBook book(path.string());
    book.GoTo(u"S!A1");
    EXPECT_EQ(Shown(book.Evaluate(u"=INDIRECT(\"Data!B2\")")), "Data!$B$2");
    EXPECT_EQ(Shown(book.Evaluate(u"=ADDRESS(2,2,1,1,\"Data\")")), "\"Data!$B$2\"");
    book.CalculateAll();
    EXPECT_EQ(Shown(book.Cell(u"A1")->Value()), "5");
    EXPECT_EQ(Shown(book.Cell(u"B1")->Value()), "5");
    EXPECT_EQ(Shown(book.Cell(u"C1")->Value()), "\"Data!$B$2\"");
    EXPECT_EQ(Shown(book.Cell(u"D1")->Value()), "\"Data!$B$2\"");
}

TEST(ExcelConstants, AreNoFormulas) {
    OpenBook book("constants.xlsx", ExcelFile({{"S",
                                                {{"A1", "TRUE"},
                                                 {"B1", "#DIV/0!"},
                                                 {"C1", "=IF(A1,TRUE,B1)"},
                                                 {"D1", "FALSE"},
                                                 {"E1", "=NOT(FALSE)"},
                                                 {"F1", "=#N/A+1"}}}}));
    EXPECT_EQ(FormulaOf(book, u"A1"), "\"TRUE\"");
    EXPECT_EQ(FormulaOf(book, u"B1"), "\"#DIV/0!\"");
    EXPECT_EQ(FormulaOf(book, u"D1"), "\"FALSE\"");
    EXPECT_EQ(Shown(book.Cell(u"A1")->Value()), "True");
    EXPECT_EQ(Shown(book.Cell(u"B1")->Value()), "#DIV/0!");
    std::vector<std::string> cells;
    for (const auto& cell : FormulaCells(book.application().document())) {
        cells.push_back(ToUtf8(cell));
    }
    EXPECT_EQ(cells, (std::vector<std::string>{"[constants.xlsx]S!$C$1", "[constants.xlsx]S!$E$1",
                                               "[constants.xlsx]S!$F$1"}));
    book.GoTo(u"C1");
    const auto report = Explore(book.application(), book.Cell(u"C1"), true, false);
    EXPECT_EQ(ToUtf8(report.tree->value), "TRUE");
    // In Calc's own files they are what was typed.
    OpenBook own("constants.fods",
                 FlatText({{"S", {{1, 1, "TRUE"}, {1, 2, "=TRUE()"}, {1, 3, "=#N/A"}}}}));
    EXPECT_EQ(FormulaOf(own, u"A1"), "\"TRUE\"");
    EXPECT_EQ(FormulaOf(own, u"B1"), "\"=TRUE\"");
    EXPECT_EQ(FormulaOf(own, u"C1"), "\"=#N/A\"");
    EXPECT_EQ(FormulaCells(own.application().document()).size(), 2u);
}

}  // namespace
}  // namespace korvane::calc::testing
