// Range, Name, Worksheet and Workbook over Calc.
#include <gtest/gtest.h>

#include <com/sun/star/table/XColumnRowRange.hpp>

#include "apps/report/exploration.h"
#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "host/constants.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"
#include "workbook.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;

namespace {

std::vector<TestSheet::Cell> DataCells() {
    return {{1, 1, "1"},
            {1, 2, "10"},
            {1, 3, "=SUM([.A1:.A3])*[.B1]"},
            {2, 1, "2"},
            {2, 2, "20"},
            {2, 3, "{=SUM([.A1:.A3]*[.B1:.B3])}"},
            {3, 1, "3"},
            {3, 2, "30"},
            {3, 3, "{=[.A1:.A2]*2}", "", 2, 1},
            {5, 1, "text"},
            {5, 2, "TRUE"},
            {5, 3, "45000.5", "date"},
            {6, 1, "=IF([.A1]=1;TRUE();#N/A)"},
            {6, 2, "=1/0", "yellow"},
            {6, 3, "=[.A1]=1"},
            {7, 1, "=1+#REF!+#DIV/0!", "open"},
            {7, 2, "=\"it's \"&\"#N/A\"&Rate"},
            {7, 3, "=$'My Sheet'.A1+SUM([.A:.A])"}};
}

std::string DataBook() {
    return FlatText(
        {{"Data", DataCells(), false, false, {2}, {3}},
         {"My Sheet", {{1, 1, "5"}, {2, 1, "6"}}},
         {"Locked", DataCells(), true},
         {"Veiled", DataCells(), false, true}},
        {{"Rate", "[$'My Sheet'.$A$2]"}, {"Own", "[$Data.$B$2]", "Data"}, {"Next", "[.B1]"}});
}

std::u16string Formula(OpenBook& book, const std::u16string& cell) {
    const Value formula = book.Cell(cell)->Formula();
    return formula.Text() ? *formula.Text() : u"(no text)";
}

TEST(Range, FormulasReadAsExcelWritesThem) {
    OpenBook book("texts.fods", DataBook());
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!A1")), "1");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!A5")), "text");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!B5")), "TRUE");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!D9")), "");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!C1")), "=SUM(A1:A3)*B1");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!C2")), "=SUM(A1:A3*B1:B3)");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!C3")), "=A1:A2*2");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!C4")), "=A1:A2*2");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!A6")), "=IF(A1=1,TRUE,#N/A)");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!A7")), "=1+#REF!+#DIV/0!");
    EXPECT_EQ(ToUtf8(Formula(book, u"Data!B7")), "=\"it's \"&\"#N/A\"&Rate");
}

TEST(Range, ValuesAndTexts) {
    OpenBook book("range.fods", DataBook());
    EXPECT_EQ(Shown(book.Cell(u"Data!A1")->Value()), "1");
    EXPECT_EQ(Shown(book.Cell(u"Data!A5")->Value()), "\"text\"");
    EXPECT_EQ(Shown(book.Cell(u"Data!B5")->Value()), "True");
    EXPECT_EQ(Shown(book.Cell(u"Data!C5")->Value()), "date 45000.5");
    EXPECT_EQ(Shown(book.Cell(u"Data!C6")->Value()), "True");
    EXPECT_EQ(Shown(book.Cell(u"Data!B6")->Value()), "#DIV/0!");
    EXPECT_EQ(Shown(book.Cell(u"Data!D9")->Value()), "empty");
    EXPECT_EQ(Shown(book.Cell(u"Data!C5")->Text()), "\"2023-03-15\"");
    book.GoTo(u"Data!A1");
    const auto block = std::dynamic_pointer_cast<host::Range>(book.Evaluate(u"=A1:B2").AsObject());
    ASSERT_TRUE(block);
    EXPECT_EQ(Shown(block->Value()), "{1,10;2,20}");
    EXPECT_EQ(Shown(block->Text()), "null");
    EXPECT_EQ(block->CountLarge(), 4);
    const auto columns = std::dynamic_pointer_cast<host::Range>(book.Evaluate(u"=E:F").AsObject());
    EXPECT_EQ(columns->CountLarge(), 2 * std::int64_t{kSheetRows});
    EXPECT_EQ(Shown(columns->Text()), "\"\"");
}

TEST(Range, AddressesAsExcelWritesThem) {
    OpenBook book("my book.fods", DataBook());
    const auto cell = book.Cell(u"'My Sheet'!B7");
    EXPECT_EQ(ToUtf8(cell->Address(host::kExternal)), "'[my book.fods]My Sheet'!$B$7");
    EXPECT_EQ(ToUtf8(cell->Address(host::kRelative)), "B7");
    EXPECT_EQ(ToUtf8(cell->Worksheet()->Name()), "My Sheet");
    EXPECT_EQ(ToUtf8(cell->Worksheet()->Parent()->Name()), "my book.fods");
    book.GoTo(u"Data!A1");
    const auto columns = std::dynamic_pointer_cast<host::Range>(book.Evaluate(u"=A:B").AsObject());
    EXPECT_EQ(ToUtf8(columns->Address(host::kRelative)), "A:B");
}

TEST(Range, HiddenRowsAndColumns) {
    OpenBook book("hidden.fods", DataBook());
    book.GoTo(u"Data!A1");
    const auto hidden = [&](const char16_t* text) {
        const auto range = std::dynamic_pointer_cast<host::Range>(book.Evaluate(text).AsObject());
        return Shown(range->EntireRow()->Hidden()) + " " + Shown(range->EntireColumn()->Hidden());
    };
    EXPECT_EQ(hidden(u"=A1"), "False False");
    EXPECT_EQ(hidden(u"=A2"), "True False");
    EXPECT_EQ(hidden(u"=C1"), "False True");
    EXPECT_EQ(hidden(u"=A1:B3"), "null False");
    EXPECT_EQ(hidden(u"=A3:B9"), "False False");
    EXPECT_EQ(hidden(u"=B1:D1"), "False null");
    EXPECT_EQ(hidden(u"=A:A"), "null False");
    EXPECT_THROW(book.Cell(u"A1")->Hidden(), Error);
}

TEST(Range, ArraysAreFound) {
    OpenBook book("array.fods", DataBook());
    EXPECT_FALSE(book.Cell(u"Data!C1")->HasArray());
    EXPECT_TRUE(book.Cell(u"Data!C4")->HasArray());
    EXPECT_EQ(ToUtf8(book.Cell(u"Data!C4")->CurrentArray()->Address(host::kRelative)), "C3:C4");
    EXPECT_THROW(book.Cell(u"Data!C1")->CurrentArray(), Error);
}

TEST(Names, AreFoundIgnoringCaseAndSheetPrefix) {
    OpenBook book("names.fods", DataBook());
    const auto sheet = book.Cell(u"Data!A1")->Worksheet();
    const auto ofSheet = sheet->Names();
    const auto ofBook = sheet->Parent()->Names();
    ASSERT_TRUE(ofBook->Item(u"rate"));
    EXPECT_EQ(ToUtf8(ofBook->Item(u"rate")->Name_()), "Rate");
    EXPECT_EQ(ToUtf8(ofBook->Item(u"Rate")->RefersTo()), "='My Sheet'!$A$2");
    EXPECT_FALSE(ofBook->Item(u"Own"));
    EXPECT_FALSE(ofBook->Item(u"A1"));
    EXPECT_FALSE(ofBook->Item(u"SUM(A1)"));
    ASSERT_TRUE(ofSheet->Item(u"Own"));
    ASSERT_TRUE(ofSheet->Item(u"data!own"));
    EXPECT_EQ(ToUtf8(ofSheet->Item(u"Own")->Name_()), "Data!Own");
    EXPECT_FALSE(ofSheet->Item(u"'My Sheet'!Own"));
    EXPECT_EQ(ToUtf8(book.Cell(u"'My Sheet'!A2")->Name()->Name_()), "Rate");
    EXPECT_EQ(ToUtf8(book.Cell(u"Data!B2")->Name()->Name_()), "Data!Own");
    EXPECT_FALSE(book.Cell(u"Data!A1")->Name());
    EXPECT_EQ(ToUtf8(book.Cell(u"Rate")->Address(host::kRelative)), "A2");
    book.GoTo(u"Data!A5");
    EXPECT_EQ(ToUtf8(ofBook->Item(u"Next")->RefersTo()), "=B5");
}

// Writes a text into a cell for a moment, as precise evaluation does.
void WriteAndPutBack(OpenBook& book, const std::u16string& place, const std::u16string& text,
                     const std::string& value) {
    const auto cell = book.Cell(place);
    const bool isArray = cell->HasArray();
    const std::u16string kept = *cell->Formula().Text();
    const std::string before = book.Snapshot();
    if (isArray) {
        cell->SetFormulaArray(text);
    } else {
        cell->SetFormula(text);
    }
    EXPECT_EQ(Shown(cell->Value()), value) << ToUtf8(place) << ToUtf8(text);
    if (isArray) {
        cell->SetFormulaArray(kept);
    } else {
        cell->SetFormula(kept);
    }
    EXPECT_EQ(Difference(before, book.Snapshot()), "") << ToUtf8(place) << ToUtf8(text);
}

TEST(PreciseWriting, PutsEveryKindOfCellBack) {
    OpenBook book("precise.fods", DataBook());
    for (const char16_t* place :
         {u"Data!C1", u"Data!C2", u"Data!A6", u"Data!B6", u"Data!C6", u"Data!A7", u"Data!B7",
          u"Data!C7", u"Data!A1", u"Data!A5", u"Veiled!C1"}) {
        WriteAndPutBack(book, place, u"=A1=1",
                        place == std::u16string_view(u"Data!A1") ? "#VALUE!" : "True");
        WriteAndPutBack(book, place, u"=B3*2", "60");
        WriteAndPutBack(book, place, u"=\"x\"&B3", "\"x30\"");
        WriteAndPutBack(book, place, u"=1/0", "#DIV/0!");
        WriteAndPutBack(book, place, u"=#N/A", "#N/A");
    }
}

TEST(PreciseWriting, RefusesWhatExcelRefuses) {
    OpenBook book("refused.fods", DataBook());
    const std::string before = book.Snapshot();
    const auto cell = book.Cell(u"Data!C1");
    cell->Formula();
    for (const char16_t* text : {u"=SUM(1,2", u"=1+", u"=\"abc",
                                 u"=WEBSERVICE(\"http://127.0.0.1:9/\")", u"=[Other.xlsx]S!A1"}) {
        EXPECT_THROW(cell->SetFormula(text), Error) << ToUtf8(text);
    }
    EXPECT_THROW(book.Cell(u"Locked!C1")->SetFormula(u"=1"), Error);
    EXPECT_THROW(book.Cell(u"Data!C4")->SetFormulaArray(u"=1"), Error);
    EXPECT_THROW(book.Cell(u"Data!C3")->SetFormula(u"=1"), Error);
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

// Calc shows "B#REF!" and can read it no more, whatever it is written from.
TEST(PreciseWriting, AFormulaWithHalfOfAReferenceIsNotWritten) {
    OpenBook book("deleted.fods", DataBook());
    const auto cell = book.Cell(u"Data!F1");
    const auto& data = book.application().document()->Sheet(0);
    data->getCellByPosition(5, 0)->setFormula(ToOUString(u"=IF(B9>1;B9;2)"));
    const css::uno::Reference<css::table::XColumnRowRange> sheet(data, css::uno::UNO_QUERY_THROW);
    sheet->getRows()->removeByIndex(8, 1);
    const std::string before = Shown(cell->Formula());
    const std::string all = book.Snapshot();
    EXPECT_THROW(cell->SetFormula(u"=1"), Error) << before;
    EXPECT_EQ(Shown(cell->Formula()), before);
    EXPECT_EQ(Difference(all, book.Snapshot()), "");
}

TEST(Application, KeepsItsStateAndTellsItself) {
    OpenBook book("state.fods", DataBook());
    auto& application = book.application();
    EXPECT_EQ(application.Calculation(), host::xlCalculationAutomatic);
    application.SetCalculation(host::xlCalculationManual);
    EXPECT_EQ(application.Calculation(), host::xlCalculationManual);
    application.SetScreenUpdating(false);
    EXPECT_FALSE(application.ScreenUpdating());
    application.SetScreenUpdating(true);
    EXPECT_TRUE(application.ScreenUpdating());
    EXPECT_FALSE(application.Version().empty());
    EXPECT_FALSE(application.DecimalSeparator().empty());
    EXPECT_NE(application.DateText(45000), application.DateText(45000.5));
    EXPECT_EQ(application.DateText(45000.5).find(application.DateText(45000) + u" "), 0u);
    EXPECT_EQ(application.CommandBars(), nullptr);
    EXPECT_THROW(application.OnKey(u"^q"), Error);
}

TEST(Interior, FillsComeAndGo) {
    OpenBook book("fill.fods", DataBook());
    const auto interior = book.Cell(u"Data!B6")->Interior();
    EXPECT_EQ(Shown(interior->ColorIndex()), "6");
    EXPECT_EQ(Shown(interior->Color()), "65535");
    const auto plain = book.Cell(u"Data!A1")->Interior();
    EXPECT_EQ(Shown(plain->ColorIndex()), "-4142");
    plain->SetColorIndex(Value(33));
    EXPECT_EQ(Shown(plain->ColorIndex()), "33");
    EXPECT_EQ(Shown(plain->Color()), "16763904");
    plain->SetColorIndex(Value(-4142));
    EXPECT_EQ(Shown(plain->ColorIndex()), "-4142");
    EXPECT_THROW(book.Cell(u"Locked!A1")->Interior()->SetColorIndex(Value(33)), Error);
}

TEST(Exploring, LeavesTheDocumentAsItWas) {
    OpenBook book("explored.fods", DataBook());
    for (const char16_t* place :
         {u"Data!C1", u"Data!C2", u"Data!C3", u"Data!A6", u"Data!A7", u"Data!B7", u"Data!C7",
          u"Locked!C1", u"Locked!C2", u"Veiled!C1"}) {
        const auto cell = book.Cell(place);
        cell->Select();
        const std::string before = book.Snapshot();
        for (const bool precise : {false, true}) {
            const auto report = Explore(book.application(), cell, true, precise);
            EXPECT_TRUE(report.ok) << ToUtf8(place);
            EXPECT_EQ(Difference(before, book.Snapshot()), "")
                << ToUtf8(place) << " precise " << precise;
        }
    }
}

}  // namespace
}  // namespace korvane::calc::testing
