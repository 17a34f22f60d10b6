// What a part is worth depends on the cell that the formula stands in, and on
// contents, not on how they are displayed.
#include <gtest/gtest.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

struct Case {
    const char16_t* text;
    const char* value;
};

void Check(OpenBook& book, const std::vector<Case>& cases) {
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Shown(book.Evaluate(text)), value) << ToUtf8(text);
    }
}

std::vector<TestSheet::Cell> Numbers() {
    return {{1, 1, "1"}, {1, 2, "4"}, {2, 1, "2"}, {2, 2, "5"}, {3, 1, "3"}, {3, 2, "7"}};
}

TEST(EvaluatePlace, RelativeTextsOfIndirectStartAtTheActiveCell) {
    for (const bool isProtected : {false, true}) {
        OpenBook book("relative.fods",
                      FlatText({{"Data", Numbers(), isProtected}, {"Other", {{2, 2, "77"}}}},
                               {{"Left", "INDIRECT(\"RC[-1]\";FALSE())"}}));
        book.GoTo(u"Data!C2");
        Check(book, {{u"=INDIRECT(\"RC[-1]\",FALSE)", "Data!$B$2"},
                     {u"=INDIRECT(\"RC[-1]\",0)+1", "6"},
                     {u"=INDIRECT(\"RC[-1]\",)", "Data!$B$2"},
                     {u"=SUM(INDIRECT(\"R[-1]C[-2]:R[1]C[-1]\",0))", "22"},
                     {u"=INDIRECT(\"R[\"&A1&\"]C1\",A1=2)", "Data!$A$3"},
                     {u"=INDIRECT(\"R1C1\",FALSE)", "Data!$A$1"},
                     {u"=INDIRECT(\"RC[-9]\",FALSE)", "#REF!"},
                     {u"=INDIRECT(\"A1\",TRUE)", "Data!$A$1"},
                     {u"=Left", "Data!$B$2"},
                     {u"=Left*2", "10"}});
        book.GoTo(u"Other!C2");
        Check(book, {{u"=Left", "Other!$B$2"}});
    }
}

TEST(EvaluatePlace, NamesThatAskForTheirCellGetTheActiveOne) {
    OpenBook book("names.fods", FlatText({{"Data", Numbers()}}, {{"RowNumber", "ROW()"},
                                                                 {"Next", "RowNumber+1"},
                                                                 {"Address", "CELL(\"ADDRESS\")"},
                                                                 {"SheetNumber", "SHEET()"}}));
    book.GoTo(u"Data!D2");
    Check(book, {{u"=RowNumber", "2"},
                 {u"=Next*10", "30"},
                 {u"=INDEX(A:A,RowNumber)", "Data!$A$2"},
                 {u"=Address", "\"$D$2\""},
                 {u"=SheetNumber", "1"}});
    book.GoTo(u"Data!D3");
    Check(book, {{u"=RowNumber", "3"}, {u"=Next*10", "40"}});
}

TEST(EvaluatePlace, NamesThatDoubleAreLookedAtOnce) {
    std::vector<TestName> names;
    constexpr int kLevels = 10;
    for (int k = 1; k < kLevels; ++k) {
        const std::string inner = "Deep" + std::to_string(k + 1) + "_";
        names.push_back({"Deep" + std::to_string(k) + "_", inner + "+" + inner});
    }
    names.push_back({"Deep" + std::to_string(kLevels) + "_", "1"});
    OpenBook book("doubling.fods", FlatText({{"Data", Numbers()}}, names));
    book.GoTo(u"Data!D2");
    for (int k = 0; k < 20; ++k) EXPECT_EQ(Shown(book.Evaluate(u"=Deep1_")), "512");
}

TEST(EvaluatePlace, CellsOfSeveralSheetsAreNoPlace) {
    OpenBook book("sheets.fods", FlatText({{"One", Numbers()}, {"Two", Numbers()}, {"Six", {}}}));
    book.GoTo(u"One!D2");
    Check(book, {{u"=SUM(One:Two!A1)", "2"},
                 {u"=SUM(One:Two!A1:B2)", "24"},
                 {u"=One:Two!A1", "#VALUE!"},
                 {u"=(One:Two!A1)", "#VALUE!"},
                 {u"=One!A1", "One!$A$1"}});
}

TEST(EvaluatePlace, ABooleanStaysOneOnAProtectedSheet) {
    OpenBook book("locked.fods", FlatText({{"Data", Numbers(), true}}));
    book.GoTo(u"Data!D9");
    Check(book, {{u"=AND(A1:A3>0)", "True"},
                 {u"=OR(A1:A3>5)", "False"},
                 {u"=SUM(A1:A3*1)", "6"},
                 {u"=SUM(A1:A1*1)", "1"}});
}

void SetFormat(OpenBook& book, int column, int row, const char16_t* code) {
    const auto& document = *book.application().document();
    const auto formats =
        Reference<css::util::XNumberFormatsSupplier>(document.model(), UNO_QUERY_THROW)
            ->getNumberFormats();
    sal_Int32 key = formats->queryKey(ToOUString(code), css::lang::Locale(), false);
    if (key < 0) key = formats->addNew(ToOUString(code), css::lang::Locale());
    css::uno::Any value;
    value <<= key;
    Reference<css::beans::XPropertySet>(document.Sheet(0)->getCellByPosition(column, row),
                                        UNO_QUERY_THROW)
        ->setPropertyValue(ToOUString(u"NumberFormat"), value);
}

TEST(EvaluatePlace, NumberFormatsAreNoValues) {
    OpenBook book("formats.fods", FlatText({{"Data",
                                             {{1, 1, "=1+0"},
                                              {2, 1, "=ABS([.A1])"},
                                              {3, 1, "=\"abc\"&\"\""},
                                              {4, 1, "text"},
                                              {5, 1, "=[.A1]=1"}}}}));
    SetFormat(book, 0, 0, u"\"yes\";\"no\";\"zero\"");
    SetFormat(book, 0, 1, u"\"YES\";\"NO\";\"ZERO\"");
    SetFormat(book, 0, 2, u"\"T:\"@");
    SetFormat(book, 0, 3, u"\"T:\"@");
    const auto value = [&](const char16_t* cell) { return Shown(book.Cell(cell)->Value()); };
    EXPECT_EQ(value(u"Data!A1"), "1");
    EXPECT_EQ(value(u"Data!A2"), "1");
    EXPECT_EQ(value(u"Data!A3"), "\"abc\"");
    EXPECT_EQ(value(u"Data!A4"), "\"text\"");
    EXPECT_EQ(Shown(book.Cell(u"Data!A4")->Formula()), "\"text\"");
    EXPECT_EQ(Shown(book.Cell(u"Data!A4")->Text()), "\"T:text\"");
    EXPECT_EQ(value(u"Data!A5"), "True");
    book.GoTo(u"Data!C1");
    Check(book, {{u"=UPPER(A3)", "\"ABC\""}, {u"=ABS(A2)", "1"}});
}

}  // namespace
}  // namespace korvane::calc::testing
