#include "contract/host_contract.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"
#include "formula/error_text.h"
#include "host/constants.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane::test {
namespace {

class HostContract : public testing::Test {
protected:
    HostContract() : host_(MakeContractHost()) { Cell(u"Data!A1")->Select(); }

    host::Application& app() { return host_->application(); }
    host::RangePtr Cell(const std::u16string& reference) { return host_->Cells(reference); }

    // What Evaluate answers: cells as their external address, else the text.
    std::string Evaluated(const std::u16string& text) {
        const Value value = app().Evaluate(text);
        if (const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject())) {
            return ToUtf8(range->Address(host::kExternal));
        }
        if (const Array* array = value.AsArray()) {
            std::string out = "{";
            for (const Value& cell : array->cells) out += ToUtf8(sErrorText(cell, app())) + " ";
            return out + "}";
        }
        return ToUtf8(sErrorText(value, app()));
    }
    static std::string TextOf(const Value& value) {
        if (value.IsNull()) return "(null)";
        if (value.IsEmpty()) return "(empty)";
        return value.Text() ? ToUtf8(*value.Text()) : "(no text)";
    }
    std::string ValueText(const std::u16string& reference) {
        return ToUtf8(sErrorText(Cell(reference)->Value(), app()));
    }
    std::string FormulaOf(const std::u16string& reference) {
        return TextOf(Cell(reference)->Formula());
    }

    std::unique_ptr<ContractHost> host_;
};

TEST_F(HostContract, AddressesAreWrittenAsExcelWritesThem) {
    const struct {
        const char16_t* reference;
        const char* relative;
        const char* external;
    } cases[] = {
        {u"Data!A1", "A1", "[Contract.fods]Data!$A$1"},
        {u"Data!B3:A1", "A1:B3", "[Contract.fods]Data!$A$1:$B$3"},
        {u"Data!A:A", "A:A", "[Contract.fods]Data!$A:$A"},
        {u"Data!2:3", "2:3", "[Contract.fods]Data!$2:$3"},
        {u"'My Sheet'!A2", "A2", "'[Contract.fods]My Sheet'!$A$2"},
    };
    for (const auto& expected : cases) {
        const auto range = Cell(expected.reference);
        EXPECT_EQ(ToUtf8(range->Address(host::kRelative)), expected.relative);
        EXPECT_EQ(ToUtf8(range->Address(host::kExternal)), expected.external);
    }
}

TEST_F(HostContract, CellsHaveFormulasValuesAndTexts) {
    EXPECT_EQ(FormulaOf(u"Data!A1"), "1");
    EXPECT_EQ(FormulaOf(u"Data!A4"), "text");
    EXPECT_EQ(FormulaOf(u"Data!A5"), "");
    EXPECT_EQ(FormulaOf(u"Data!C1"), "=SUM(A1:A3)*B1");
    EXPECT_EQ(ValueText(u"Data!C1"), "60");
    EXPECT_EQ(ValueText(u"Data!B4"), "True");
    EXPECT_EQ(ValueText(u"Data!A4"), "text");
    EXPECT_EQ(ValueText(u"Data!A5"), "");
    EXPECT_EQ(ValueText(u"Data!C2"), "#DIV/0!");
    EXPECT_EQ(ValueText(u"Data!C3"), "#N/A");
    EXPECT_EQ(TextOf(Cell(u"Data!A4")->Text()), "text");
    EXPECT_EQ(TextOf(Cell(u"Data!A1")->Text()), "1");
    EXPECT_EQ(TextOf(Cell(u"Data!A5")->Text()), "");
}

TEST_F(HostContract, ABlockHasArraysAndNoTextUnlessItsCellsShowTheSame) {
    const Value value = Cell(u"Data!A1:B2")->Value();
    const Array* array = value.AsArray();
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->rows, 2u);
    EXPECT_EQ(array->columns, 2u);
    EXPECT_EQ(ToUtf8(sErrorText(array->At(2, 1), app())), "2");
    EXPECT_EQ(ToUtf8(sErrorText(array->At(1, 2), app())), "10");
    const Value formulas = Cell(u"Data!C1:C2")->Formula();
    ASSERT_NE(formulas.AsArray(), nullptr);
    EXPECT_EQ(TextOf(formulas.AsArray()->At(2, 1)), "=1/0");
    EXPECT_TRUE(Cell(u"Data!A1:A2")->Text().IsNull());
    EXPECT_EQ(TextOf(Cell(u"Data!E1:E3")->Text()), "");
}

TEST_F(HostContract, CountsCellsOfAnyBlock) {
    EXPECT_EQ(Cell(u"Data!A1")->CountLarge(), 1);
    EXPECT_EQ(Cell(u"Data!A1:B3")->CountLarge(), 6);
    EXPECT_EQ(Cell(u"Data!A:A")->CountLarge(), 1'048'576);
}

TEST_F(HostContract, ArrayFormulasKnowTheirBlocks) {
    EXPECT_FALSE(Cell(u"Data!C1")->HasArray());
    EXPECT_THROW(Cell(u"Data!C1")->CurrentArray(), Error);
    EXPECT_TRUE(Cell(u"Data!C4")->HasArray());
    EXPECT_EQ(ToUtf8(Cell(u"Data!C4")->CurrentArray()->Address(host::kRelative)), "C4");
    for (const char16_t* member : {u"Data!C5", u"Data!C6"}) {
        EXPECT_TRUE(Cell(member)->HasArray());
        EXPECT_EQ(ToUtf8(Cell(member)->CurrentArray()->Address(host::kRelative)), "C5:C6");
        EXPECT_EQ(TextOf(Cell(member)->FormulaArray()), "=A1:A2*2");
    }
    EXPECT_EQ(ValueText(u"Data!C4"), "140");
    EXPECT_EQ(ValueText(u"Data!C6"), "4");
}

TEST_F(HostContract, EvaluateAnswersCellsForReferencesAndNames) {
    EXPECT_EQ(Evaluated(u"=A1"), "[Contract.fods]Data!$A$1");
    EXPECT_EQ(Evaluated(u"=$A$1:b2"), "[Contract.fods]Data!$A$1:$B$2");
    EXPECT_EQ(Evaluated(u"='My Sheet'!A2"), "'[Contract.fods]My Sheet'!$A$2");
    EXPECT_EQ(Evaluated(u"='[Contract.fods]My Sheet'!$A$2"), "'[Contract.fods]My Sheet'!$A$2");
    EXPECT_EQ(Evaluated(u"=rate"), "'[Contract.fods]My Sheet'!$A$2");
    EXPECT_EQ(Evaluated(u"=Block"), "[Contract.fods]Data!$A$1:$B$3");
    EXPECT_EQ(Evaluated(u"=Own"), "[Contract.fods]Data!$B$2");
    EXPECT_EQ(Evaluated(u"=INDEX(A1:B3,2,2)"), "[Contract.fods]Data!$B$2");
    EXPECT_EQ(Evaluated(u"=OFFSET([Contract.fods]Data!$A$1,1,1,,)"), "[Contract.fods]Data!$B$2");
    EXPECT_EQ(Evaluated(u"=INDIRECT(\"Data!B2\",1)"), "[Contract.fods]Data!$B$2");
}

TEST_F(HostContract, EvaluateAnswersValuesWithTheirTypes) {
    EXPECT_EQ(Evaluated(u"=5"), "5");
    EXPECT_EQ(Evaluated(u"=\"a \"\"b\"\"\""), "a \"b\"");
    EXPECT_NE(app().Evaluate(u"=TRUE").Boolean(), nullptr);
    EXPECT_NE(app().Evaluate(u"=A1>0").Boolean(), nullptr);
    EXPECT_EQ(Evaluated(u"=SUM(A1:A3)"), "6");
    EXPECT_EQ(Evaluated(u"=Twice"), "40");
    EXPECT_EQ(Evaluated(u"=A1:A3*2"), "{2 4 6 }");
    EXPECT_EQ(Evaluated(u"=1/0"), "#DIV/0!");
    EXPECT_EQ(Evaluated(u"=NoSuchName"), "#NAME?");
    EXPECT_EQ(Evaluated(u"=SUM(1,"), "#VALUE!");  // answered, not raised
}

TEST_F(HostContract, SheetlessReferencesMeanTheActiveSheet) {
    Cell(u"'My Sheet'!A1")->Worksheet()->Activate();
    Cell(u"'My Sheet'!A1")->Select();
    EXPECT_EQ(Evaluated(u"=A1"), "'[Contract.fods]My Sheet'!$A$1");
    EXPECT_EQ(ToUtf8(app().ActiveCell()->Address(host::kExternal)),
              "'[Contract.fods]My Sheet'!$A$1");
    Cell(u"Data!B2")->Worksheet()->Activate();
    Cell(u"Data!B2")->Select();
    EXPECT_EQ(ToUtf8(app().ActiveCell()->Address(host::kExternal)), "[Contract.fods]Data!$B$2");
}

TEST_F(HostContract, NamesAreFoundIgnoringCase) {
    const auto sheet = Cell(u"Data!A1")->Worksheet();
    const auto book = sheet->Parent();
    EXPECT_EQ(sheet->Names()->Item(u"Rate"), nullptr);
    ASSERT_NE(book->Names()->Item(u"RATE"), nullptr);
    EXPECT_EQ(ToUtf8(book->Names()->Item(u"rate")->Name_()), "Rate");
    EXPECT_EQ(ToUtf8(book->Names()->Item(u"Rate")->RefersTo()), "='My Sheet'!$A$2");
    EXPECT_EQ(ToUtf8(book->Names()->Item(u"Twice")->RefersTo()), "=Data!$B$2*2");
    for (const char16_t* text : {u"own", u"Data!Own"}) {
        ASSERT_NE(sheet->Names()->Item(text), nullptr) << ToUtf8(text);
        EXPECT_EQ(ToUtf8(sheet->Names()->Item(text)->Name_()), "Data!Own");
    }
    // Through the workbook too, by its sheet.
    for (const char16_t* text : {u"Data!Own", u"data!own", u"[Contract.fods]Data!Own"}) {
        ASSERT_NE(book->Names()->Item(text), nullptr) << ToUtf8(text);
        EXPECT_EQ(ToUtf8(book->Names()->Item(text)->Name_()), "Data!Own");
    }
    for (const char16_t* text : {u"Own", u"'My Sheet'!Own", u"Data!Rate", u"Nowhere!Own",
                                 u"[Other.fods]Data!Own", u"'Data!Own"}) {
        EXPECT_EQ(book->Names()->Item(text), nullptr) << ToUtf8(text);
    }
    EXPECT_EQ(sheet->Names()->Item(u"'My Sheet'!Own"), nullptr);
    EXPECT_EQ(book->Names()->Item(u"A1>0"), nullptr);
    EXPECT_EQ(book->Names()->Item(u"NoSuchName"), nullptr);
}

TEST_F(HostContract, ARangeKnowsTheNameThatIsExactlyIt) {
    const auto name = Cell(u"'My Sheet'!A2")->Name();
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(ToUtf8(name->Name_()), "Rate");
    EXPECT_EQ(Cell(u"'My Sheet'!A1")->Name(), nullptr);
}

TEST_F(HostContract, SheetsAndWorkbooksHaveNames) {
    const auto sheet = Cell(u"'My Sheet'!A1")->Worksheet();
    EXPECT_EQ(ToUtf8(sheet->Name()), "My Sheet");
    EXPECT_EQ(ToUtf8(sheet->Parent()->Name()), "Contract.fods");
    EXPECT_FALSE(sheet->ProtectContents());
    EXPECT_TRUE(Cell(u"Locked!A1")->Worksheet()->ProtectContents());
}

TEST_F(HostContract, HiddenIsNullWhereOnlySomeRowsOrColumnsAreHidden) {
    const auto hidden = [&](const char16_t* reference, bool rows) {
        const auto range = Cell(reference);
        const Value value = rows ? range->EntireRow()->Hidden() : range->EntireColumn()->Hidden();
        return value.IsNull() ? "null" : *value.Boolean() ? "hidden" : "shown";
    };
    EXPECT_STREQ(hidden(u"Data!A1", true), "shown");
    EXPECT_STREQ(hidden(u"Data!A8", true), "hidden");
    EXPECT_STREQ(hidden(u"Data!A7:A8", true), "null");
    EXPECT_STREQ(hidden(u"Data!A8", false), "shown");
    EXPECT_STREQ(hidden(u"Data!H1", false), "hidden");
    EXPECT_STREQ(hidden(u"Data!G1:H1", false), "null");
    EXPECT_THROW(Cell(u"Data!A1")->Hidden(), Error);
}

TEST_F(HostContract, AFormulaIsWrittenAndPutBack) {
    const auto cell = Cell(u"Data!C1");
    const std::u16string own = *cell->Formula().Text();
    cell->SetFormula(u"=A1+B2");
    EXPECT_EQ(FormulaOf(u"Data!C1"), "=A1+B2");
    EXPECT_EQ(ValueText(u"Data!C1"), "21");
    cell->SetFormula(u"=SUM(A1:A3)");
    EXPECT_EQ(ValueText(u"Data!C1"), "6");
    cell->SetFormula(own);
    EXPECT_EQ(FormulaOf(u"Data!C1"), "=SUM(A1:A3)*B1");
    EXPECT_EQ(ValueText(u"Data!C1"), "60");
}

TEST_F(HostContract, ACellsOwnArrayFormulaIsWrittenAndPutBack) {
    const auto cell = Cell(u"Data!C4");
    const std::u16string own = *cell->FormulaArray().Text();
    cell->SetFormulaArray(u"=SUM(A1:A3)");
    EXPECT_EQ(ValueText(u"Data!C4"), "6");
    EXPECT_TRUE(Cell(u"Data!C4")->HasArray());
    cell->SetFormulaArray(own);
    EXPECT_EQ(ValueText(u"Data!C4"), "140");
    EXPECT_TRUE(Cell(u"Data!C4")->HasArray());
}

TEST_F(HostContract, RefusedWritesRaiseAndChangeNothing) {
    EXPECT_THROW(Cell(u"Data!C5")->SetFormulaArray(u"=1"), Error);
    EXPECT_THROW(Cell(u"Data!C5")->SetFormula(u"=1"), Error);
    EXPECT_EQ(TextOf(Cell(u"Data!C6")->FormulaArray()), "=A1:A2*2");
    EXPECT_THROW(Cell(u"Locked!B1")->SetFormula(u"=1"), Error);
    EXPECT_EQ(FormulaOf(u"Locked!B1"), "=A1*2");
    EXPECT_THROW(Cell(u"Data!C1")->SetFormula(u"=SUM(1,"), Error);
    EXPECT_EQ(FormulaOf(u"Data!C1"), "=SUM(A1:A3)*B1");
}

TEST_F(HostContract, FillsAreSetAndGivenBack) {
    const auto interior = Cell(u"Data!A1:A2")->Interior();
    ASSERT_NE(interior->ColorIndex().Number(), nullptr);
    EXPECT_EQ(*interior->ColorIndex().Number(), -4142);
    Cell(u"Data!A1")->Interior()->SetColorIndex(Value(33));
    EXPECT_EQ(*Cell(u"Data!A1")->Interior()->ColorIndex().Number(), 33);
    EXPECT_EQ(*Cell(u"Data!A1")->Interior()->Color().Number(), 0xFFCC00);
    EXPECT_TRUE(interior->ColorIndex().IsNull());
    Cell(u"Data!A1")->Interior()->SetColorIndex(Value(-4142));
    EXPECT_EQ(*interior->ColorIndex().Number(), -4142);
}

TEST_F(HostContract, TheCalculationStateIsKept) {
    const int mode = app().Calculation();
    const bool updating = app().ScreenUpdating();
    app().SetCalculation(host::xlCalculationManual);
    app().SetScreenUpdating(false);
    EXPECT_EQ(app().Calculation(), host::xlCalculationManual);
    EXPECT_FALSE(app().ScreenUpdating());
    EXPECT_EQ(Evaluated(u"=SUM(A1:A3)"), "6");
    app().SetCalculation(mode);
    app().SetScreenUpdating(updating);
    EXPECT_EQ(app().Calculation(), mode);
    EXPECT_EQ(app().ScreenUpdating(), updating);
}

TEST_F(HostContract, AClosedWorkbookFailsWhereverItIsTouched) {
    const auto cell = Cell(u"Data!C1");
    const auto sheet = cell->Worksheet();
    const auto book = sheet->Parent();
    const auto names = book->Names();
    const auto name = names->Item(u"Rate");
    const auto interior = cell->Interior();
    host_->CloseBook();
    EXPECT_THROW(cell->Formula(), Error);
    EXPECT_THROW(cell->Value(), Error);
    EXPECT_THROW(cell->Text(), Error);
    EXPECT_THROW(cell->Address(host::kExternal), Error);
    EXPECT_THROW(cell->HasArray(), Error);
    EXPECT_THROW(cell->SetFormula(u"=1"), Error);
    EXPECT_THROW(cell->CountLarge(), Error);
    EXPECT_THROW(cell->Worksheet(), Error);
    EXPECT_THROW(cell->EntireRow(), Error);
    EXPECT_THROW(cell->Select(), Error);
    EXPECT_THROW(sheet->Name(), Error);
    EXPECT_THROW(sheet->ProtectContents(), Error);
    EXPECT_THROW(book->Name(), Error);
    EXPECT_THROW(names->Item(u"Rate"), Error);
    EXPECT_THROW(name->RefersTo(), Error);
    EXPECT_THROW(interior->ColorIndex(), Error);
}

TEST_F(HostContract, TheAddinsOwnWorkbookHasANameAndAFolder) {
    const host::WorkbookPtr workbook = app().ThisWorkbook();
    EXPECT_FALSE(workbook->Name().empty());
    EXPECT_EQ(workbook->Name().find_first_of(u"/\\"), std::u16string::npos);
    EXPECT_FALSE(workbook->Path().empty());
    EXPECT_EQ(workbook->TypeName(), u"Workbook");
}

}  // namespace
}  // namespace korvane::test
