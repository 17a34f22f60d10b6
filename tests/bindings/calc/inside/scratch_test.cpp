// Where expressions are evaluated: nowhere that a formula of the document looks.
#include <gtest/gtest.h>

#include <com/sun/star/table/XCell.hpp>

#include "apps/report/exploration.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "excel_file.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

struct Case {
    const char16_t* text;
    const char* value;
};

void Check(OpenBook& book, const std::vector<Case>& cases) {
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Shown(book.Evaluate(text)), value) << ToUtf8(text);
    }
}

// Cells whose formulas refer far beyond the data.
std::vector<TestSheet::Cell> FarCells(const std::string& columns) {
    return {{1, 1, "=SUM([." + columns + "])"},
            {1, 3, "1"},
            {1, 4, "10"},
            {2, 1, "=COUNTA([." + columns + "])"},
            {2, 3, "2"},
            {2, 4, "20"},
            {3, 3, "3"},
            {3, 4, "30"}};
}

com::sun::star::uno::Reference<com::sun::star::table::XCell> CellAt(OpenBook& book, int column,
                                                                    int row) {
    return book.application().document()->Sheet(0)->getCellByPosition(column, row);
}

TEST(Scratch, WholeColumnsHoldNothingElse) {
    for (const bool isProtected : {false, true}) {
        OpenBook book("columns.fods",
                      FlatText({{"Data", FarCells("B1:.Z1048576"), isProtected}, {"Other", {}}},
                               {{"Big", "[$Data.$B$1:.$Z$1048576]"}}));
        book.GoTo(u"Data!A5");
        const std::string before = book.Snapshot();
        Check(book, {{u"=SUM(B:Z)", "66"},
                     {u"=COUNTA(B:Z)", "6"},
                     {u"=COUNTBLANK(B1:Z1048576)", "26214394"},
                     {u"=SUM(Big)", "66"},
                     {u"=ABS(A1)", "66"},
                     {u"=MOD(A2,2)", "0"},
                     // Not among the formulas of the document.
                     {u"=SUM(B:AZ)", "66"},
                     {u"=COUNTA(B1:INDEX(B:AZ,0,51))", "6"},
                     {u"=COUNTA(INDIRECT(\"B:A\"&\"Z\"))", "6"},
                     {u"=COUNTA(OFFSET(B:C,0,0,,60))", "6"},
                     {u"=COUNTA(1:1048576)", "8"}});
        EXPECT_EQ(Difference(before, book.Snapshot()), "");
    }
}

TEST(Scratch, WholeRowsHoldNothingElse) {
    OpenBook book("rows.fods",
                  FlatText({{"Data", FarCells("A1000000:.XFD1048576")}, {"Other", {}}}));
    book.GoTo(u"Data!F9");
    Check(book,
          {{u"=COUNTA(1000000:1048576)", "0"}, {u"=ABS(A2)", "0"}, {u"=COUNTA(1:1048576)", "8"}});
}

TEST(Scratch, WhereEveryCellIsReferredToAnotherSheetServes) {
    OpenBook book("every.fods", FlatText({{"Data",
                                           {{1, 1, "=COUNTA([$Other.A1:.XFD1048576])"},
                                            {1, 2, "=INDIRECT(\"Other.A1:XFD1048576\")"}}},
                                          {"Other", {{1, 1, "5"}}}}));
    book.GoTo(u"Other!B2");
    Check(book, {{u"=ABS(Data!A1)", "1"},
                 {u"=COUNTA(A:XFD)", "1"},
                 {u"=A1", "Other!$A$1"},
                 {u"=SUM(A1)*2", "10"},
                 {u"=ROW()", "2"},
                 {u"=SUM(INDIRECT(\"A1\"))", "5"}});
}

TEST(Scratch, WhatTheUserChangesIsSeen) {
    OpenBook book("edited.fods", FlatText({{"Data", FarCells("B1:.Z1048576")}}));
    book.GoTo(u"Data!A5");
    Check(book, {{u"=ABS(A2)", "6"}});
    CellAt(book, 0, 1)->setFormula(ToOUString(u"=COUNTA(B1:AZ1048576)"));
    Check(book, {{u"=ABS(A2)", "6"}, {u"=A2*1", "6"}});
}

TEST(Scratch, TheLastCellsOfASheetStay) {
    OpenBook book("corner.fods", FlatText({{"Data", {{1, 1, "1"}}}}));
    for (int column = 16'384 - 40; column < 16'384; ++column)
        CellAt(book, column, 1'048'575)->setValue(5);
    CellAt(book, 0, 1)->setFormula(ToOUString(u"=ABS(1)+XFD1048576"));
    const auto report = korvane::Explore(book.application(), book.Cell(u"Data!A2"), true, false);
    EXPECT_TRUE(report.ok);
    Check(book, {{u"=SUM(XDQ1048576:XFD1048576)", "200"}, {u"=A2*1", "6"}});
    for (int column = 16'384 - 40; column < 16'384; ++column)
        EXPECT_EQ(CellAt(book, column, 1'048'575)->getValue(), 5);
}

// A file can hold other results than Calc would get. Only the cell that is
// explored in the precise mode is calculated.
TEST(Scratch, ResultsThatTheFileHoldsStay) {
    OpenBook book("held.xlsx", ExcelFile({{"Data",
                                           {{"A1", "=SUM(C:Z)", "50"},
                                            {"B1", "1"},
                                            {"C1", "7"},
                                            {"A2", "=A1+1", "99"},
                                            {"A3", "=ABS(B1)", "1"}}}}));
    EXPECT_EQ(Shown(book.Cell(u"Data!A1")->Value()), "50");
    for (const char16_t* cell : {u"Data!A3", u"Data!A2", u"Data!A1"}) {
        book.GoTo(cell);
        EXPECT_TRUE(korvane::Explore(book.application(), book.Cell(cell), true, false).ok);
    }
    Check(book, {{u"=SUM(C:Z)", "7"}, {u"=COUNTA(A:Z)", "5"}});
    EXPECT_EQ(Shown(book.Cell(u"Data!A1")->Value()), "50");
    EXPECT_EQ(Shown(book.Cell(u"Data!A2")->Value()), "99");
}

TEST(Scratch, ManualCalculationHasResultsForAllAndKeepsThoseOfTheFile) {
    OpenBook book("manual.xlsx", ExcelFile({{"Data",
                                             {{"A1", "TRUE"},
                                              {"A2", "=1+1"},
                                              {"A3", "=A2*2"},
                                              {"A4", "=IF(A1,A3,5)"},
                                              {"A5", "=A2+1", "99"}}}},
                                           "<calcPr calcMode=\"manual\"/>"));
    const std::string before = book.Snapshot();
    EXPECT_EQ(Shown(book.Cell(u"Data!A1")->Value()), "True");
    EXPECT_EQ(Shown(book.Cell(u"Data!A3")->Value()), "4");
    EXPECT_EQ(Shown(book.Cell(u"Data!A4")->Value()), "4");
    EXPECT_EQ(Shown(book.Cell(u"Data!A5")->Value()), "99");
    for (const bool precise : {false, true}) {
        book.GoTo(u"Data!A4");
        EXPECT_TRUE(korvane::Explore(book.application(), book.Cell(u"Data!A4"), true, precise).ok);
    }
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

}  // namespace
}  // namespace korvane::calc::testing
