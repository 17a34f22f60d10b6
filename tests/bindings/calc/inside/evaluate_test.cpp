// Application.Evaluate over Calc.
#include <gtest/gtest.h>

#include <com/sun/star/table/XCell.hpp>

#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

std::vector<TestSheet::Cell> DataCells() {
    return {{1, 1, "1"},    {1, 2, "10"},   {1, 3, "=SUM([.A1:.A3])*[.B1]"},
            {2, 1, "2"},    {2, 2, "20"},   {2, 3, "=1/0"},
            {3, 1, "3"},    {3, 2, "30"},   {3, 3, "=NA()"},
            {4, 1, "text"}, {4, 2, "TRUE"}, {4, 3, "45000", "date"}};
}

std::string DataBook() {
    return FlatText({{"Data", DataCells()},
                     {"My Sheet", {{1, 1, "5"}, {2, 1, "6"}}},
                     {"Locked", DataCells(), true},
                     {"Veiled", DataCells(), false, true}},
                    {{"Rate", "[$'My Sheet'.$A$2]"},
                     {"Block", "[$Data.$A$1:.$B$3]"},
                     {"Sum_of_A", "SUM([$Data.$A$1:.$A$3])"},
                     {"Own", "[$Data.$B$2]", "Data"}});
}

struct Case {
    const char16_t* text;
    const char* value;
};

void Check(OpenBook& book, const std::vector<Case>& cases) {
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Shown(book.Evaluate(text)), value) << ToUtf8(text);
    }
}

TEST(Evaluate, ReferencesGiveRanges) {
    OpenBook book("refs.fods", DataBook());
    Check(book, {{u"=A1", "Data!$A$1"},
                 {u"=$A$1:b3", "Data!$A$1:$B$3"},
                 {u"=A:A", "Data!$A:$A"},
                 {u"=2:3", "Data!$2:$3"},
                 {u"='My Sheet'!A2", "My Sheet'!$A$2"},
                 {u"=[refs.fods]Data!B1", "Data!$B$1"},
                 {u"='[refs.fods]My Sheet'!A1", "My Sheet'!$A$1"},
                 {u"=Rate", "My Sheet'!$A$2"},
                 {u"=Block", "Data!$A$1:$B$3"},
                 {u"=Own", "Data!$B$2"},
                 {u"=INDEX(A1:B3,2,2)", "Data!$B$2"},
                 {u"=INDEX(Block,0,2)", "Data!$B$1:$B$3"},
                 {u"=OFFSET(A1,1,1)", "Data!$B$2"},
                 {u"=OFFSET(A1,0,0,3,2)", "Data!$A$1:$B$3"},
                 {u"=INDIRECT(\"B\"&A3)", "Data!$B$3"},
                 {u"=INDIRECT(\"Rate\")", "My Sheet'!$A$2"},
                 {u"=CHOOSE(2,A1,B2)", "Data!$B$2"},
                 {u"=IF(A1=1,B1,B2)", "Data!$B$1"},
                 {u"=A1:INDEX(B1:B3,2)", "Data!$A$1:$B$2"},
                 {u"=(A1)", "Data!$A$1"},
                 {u"=A1:B2 B2:C3", "Data!$B$2"}});
}

TEST(Evaluate, ValuesKeepTheirTypes) {
    OpenBook book("values.fods", DataBook());
    Check(book, {{u"=1+1", "2"},
                 {u"=\"a\"&\"b\"\"c\"", "\"ab\"c\""},
                 {u"=A1=1", "True"},
                 {u"=A1>5", "False"},
                 {u"=TRUE", "True"},
                 {u"=AND(TRUE,FALSE)", "False"},
                 {u"=SUM(A1:A3)", "6"},
                 {u"=SUM(A1:A3*B1:B3)", "140"},
                 {u"=Sum_of_A*2", "12"},
                 {u"=1.5E-10*1", "1.5E-10"},
                 {u"=IF(FALSE,1)", "False"},
                 {u"=A4&1", "\"text1\""},
                 {u"=\"\"", "\"\""},
                 {u"=0", "0"},
                 {u"=1", "1"},
                 {u"=1.25", "1.25"},
                 {u"=(7)", "7"},
                 {u"=\"1\"", "\"1\""},
                 {u"=\"a\"\"b\"", "\"a\"b\""},
                 {u"=SUM((A1:A2,B1:B2))", "33"},
                 {u"=-A2^2", "4"},
                 {u"=50%", "0.5"},
                 {u"=1=1", "True"},
                 {u"=IF(A1=1,1,0)", "1"}});
}

TEST(Evaluate, ErrorsAreTheHosts) {
    OpenBook book("errors.fods", DataBook());
    Check(book, {{u"=1/0", "#DIV/0!"},
                 {u"=#N/A", "#N/A"},
                 {u"=#REF!", "#REF!"},
                 {u"=Data!#REF!", "#REF!"},
                 {u"=#NUM!", "#NUM!"},
                 {u"=#VALUE!", "#VALUE!"},
                 {u"=#NULL!", "#NULL!"},
                 {u"=#NAME?", "#NAME?"},
                 {u"=#DIV/0!+1", "#DIV/0!"},
                 {u"=no_such_name", "#NAME?"},
                 {u"=NOSUCH(1)", "#NAME?"},
                 {u"=Nowhere!A1", "#REF!"},
                 {u"=\"a\"+1", "#VALUE!"},
                 {u"=VLOOKUP(99,A1:B3,2,FALSE)", "#N/A"},
                 {u"=INDIRECT(\"no reference\")", "#REF!"}});
}

TEST(Evaluate, MalformedTextsGiveTheValueError) {
    OpenBook book("malformed.fods", DataBook());
    for (const char16_t* text : {u"=SUM(1,2", u"=1+", u"=\"abc", u"=)", u"=A1 +* 2", u"=", u"",
                                 u"={1,2", u"=SUM(1;2)", u"='Data!A1"}) {
        EXPECT_EQ(Shown(book.Evaluate(text)), "#VALUE!") << ToUtf8(text);
    }
}

TEST(Evaluate, ArraysAreArrays) {
    OpenBook book("arrays.fods", DataBook());
    Check(book, {{u"=A1:A3*2", "{2;4;6}"},
                 {u"=TRANSPOSE(A1:A3)", "{1,2,3}"},
                 {u"={1,2;3,4}", "{1,2;3,4}"},
                 {u"=A1:A2=1", "{True;False}"},
                 {u"=1/(A1:A2-1)", "{#DIV/0!;1}"}});
}

TEST(Evaluate, TheActiveCellIsWhereTheFormulaStands) {
    OpenBook book("active.fods", DataBook());
    book.GoTo(u"'My Sheet'!C7");
    Check(book, {{u"=ROW()", "7"},
                 {u"=COLUMN()", "3"},
                 {u"=ROW()+COLUMN()*10", "37"},
                 {u"=CELL(\"ROW\")", "7"},
                 {u"=A1", "My Sheet'!$A$1"},
                 {u"=INDIRECT(\"A2\")", "My Sheet'!$A$2"},
                 {u"=A1+Data!A1", "6"}});
}

TEST(Evaluate, ProtectedAndHiddenSheetsAnswerAsOthersDo) {
    OpenBook book("locked.fods", DataBook());
    for (const std::u16string sheet : {u"Locked", u"Veiled"}) {
        book.GoTo(sheet + u"!C1");
        const std::string prefix = ToUtf8(sheet);
        EXPECT_EQ(Shown(book.Evaluate(u"=A1")), prefix + "!$A$1");
        EXPECT_EQ(Shown(book.Evaluate(u"=INDEX(A1:B3,2,2)")), prefix + "!$B$2");
        EXPECT_EQ(Shown(book.Evaluate(u"=INDIRECT(\"B2:B3\")")), prefix + "!$B$2:$B$3");
        Check(book, {{u"=SUM(A1:A3)", "6"},
                     {u"=SUM(A1:A3*B1:B3)", "140"},
                     {u"=A1=1", "True"},
                     {u"=A4&\"!\"", "\"text!\""},
                     {u"=1/0", "#DIV/0!"},
                     {u"=A1:A3*2", "{2;4;6}"},
                     {u"=ROW()", "1"}});
    }
}

TEST(Evaluate, NothingIsFetched) {
    OpenBook book("outside.fods", DataBook());
    Check(book, {{u"=WEBSERVICE(\"http://127.0.0.1:9/\")", "#REF!"},
                 {u"=LEN(WEBSERVICE(\"http://127.0.0.1:9/\"))", "#REF!"},
                 {u"=DDE(\"a\",\"b\",\"c\")", "#REF!"},
                 {u"=[Other.xlsx]S!A1", "#REF!"},
                 {u"=SUM('[Other.xlsx]My S'!A1:A3)", "#REF!"}});
}

TEST(Evaluate, NamesAreSeenFromTheActiveCell) {
    OpenBook book("relative.fods",
                  FlatText({{"Data", DataCells()}, {"Other", {{2, 2, "77"}}}},
                           {{"Next", "[.B1]"},
                            {"Twice", "Next*2"},
                            {"Fixed", "[$Data.$B$3]"},
                            {"Fetched", "COM.MICROSOFT.WEBSERVICE(\"http://127.0.0.1:9/\")"},
                            {"Hides", "LEN(Fetched)"},
                            {"Ring", "Gnir+1"},
                            {"Gnir", "Ring+1"}}));
    book.GoTo(u"Data!A2");
    Check(book, {{u"=Next", "Data!$B$2"},
                 {u"=Next+1", "21"},
                 {u"=Twice", "40"},
                 {u"=Fixed", "Data!$B$3"},
                 {u"=Fetched", "#REF!"},
                 {u"=Hides+1", "#REF!"}});
    EXPECT_TRUE(book.Evaluate(u"=Ring").AsError());
    book.GoTo(u"Other!A2");
    Check(book, {{u"=Next", "Other!$B$2"}, {u"=SUM(Next,1)", "78"}});
}

TEST(Evaluate, TablesAreKnownByTheirColumns) {
    const std::string sheets = FlatText({{"Data",
                                          {{1, 1, "Item"},
                                           {1, 2, "Net price"},
                                           {1, 3, "Count"},
                                           {2, 1, "a"},
                                           {2, 2, "1.5"},
                                           {2, 3, "2"},
                                           {3, 1, "b"},
                                           {3, 2, "2.5"},
                                           {3, 3, "4"}}}});
    const std::string table =
        "<table:database-ranges><table:database-range table:name=\"Orders\" "
        "table:target-range-address=\"Data.A1:Data.C3\""
        " table:contains-header=\"true\"/></table:database-ranges>";
    std::string text = sheets;
    text.insert(text.find("</office:spreadsheet>"), table);
    OpenBook book("tables.fods", text);
    book.GoTo(u"Data!E3");
    Check(book, {{u"=Orders[Count]", "Data!$C$2:$C$3"},
                 {u"=orders[net price]", "Data!$B$2:$B$3"},
                 {u"=SUM(Orders[Count])", "6"},
                 {u"=Orders[[#This Row],[Net price]]*Orders[@Count]", "10"},
                 {u"=Orders[[Net price]:[Count]]", "Data!$B$2:$C$3"},
                 {u"=Orders[#All]", "Data!$A$1:$C$3"},
                 {u"=Orders[[#Headers],[Count]]", "Data!$C$1"},
                 {u"=Orders[]", "Data!$A$2:$C$3"},
                 {u"=Orders[Missing]", "#REF!"},
                 {u"=Nothing[Count]", "#REF!"}});
    book.GoTo(u"Data!D3");
    // Files of this kind cannot hold such a formula, so it is written here.
    const auto& document = *book.application().document();
    document.Sheet(0)->getCellByPosition(3, 2)->setFormula(
        ToOUString(u"=SUM(Orders[[#This Row];[Net price]:[Count]])+1"));
    const auto cell = book.Cell(u"Data!D3");
    EXPECT_EQ(Shown(cell->Value()), "7.5");
    const std::string before = book.Snapshot();
    const std::u16string kept = *cell->Formula().Text();
    EXPECT_EQ(ToUtf8(kept), "=SUM(Orders[[#This Row],[Net price]:[Count]])+1");
    cell->SetFormula(u"=Orders[[#This Row],[Count]]*2");
    EXPECT_EQ(Shown(cell->Value()), "8");
    cell->SetFormula(kept);
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

TEST(Evaluate, LeavesNoTrace) {
    OpenBook book("trace.fods", DataBook());
    for (const char16_t* cell : {u"Data!C1", u"Locked!C1", u"Veiled!C1"}) {
        book.GoTo(cell);
        const std::string before = book.Snapshot();
        for (const char16_t* text : {u"=SUM(A1:A3)", u"=A1=1", u"=INDEX(A1:A3,2)", u"=A1:A3*2",
                                     u"=1/0", u"=NOW()", u"=A4", u"=SUM(A:A)", u"=NOSUCH(1)"}) {
            book.Evaluate(text);
            EXPECT_EQ(Difference(before, book.Snapshot()), "") << ToUtf8(text);
        }
    }
}

TEST(Evaluate, AClosedDocumentFails) {
    OpenBook book("closed.fods", DataBook());
    const auto cell = book.Cell(u"Data!A1");
    const auto sheet = cell->Worksheet();
    const auto names = sheet->Parent()->Names();
    book.Close();
    EXPECT_THROW(book.Evaluate(u"=1+1"), Error);
    EXPECT_THROW(cell->Value(), Error);
    EXPECT_THROW(cell->Formula(), Error);
    EXPECT_THROW(cell->SetFormula(u"=1"), Error);
    EXPECT_THROW(cell->Address(host::kExternal), Error);
    EXPECT_THROW(sheet->Name(), Error);
    EXPECT_THROW(names->Item(u"Rate"), Error);
    EXPECT_THROW(book.application().ActiveCell(), Error);
    EXPECT_THROW(book.application().Calculation(), Error);
}

}  // namespace
}  // namespace korvane::calc::testing
