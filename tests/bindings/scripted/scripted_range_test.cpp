// The scripted host's ranges.
#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"
#include "host/name.h"
#include "host/worksheet.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ScriptedRangeTest : public testing::Test {
protected:
    ScriptedRangeTest()
        : host_(test::HostOf(
              R"j({"workbooks":[{"name":"B.xls","names":{"Rate":"=S!$B$2","Block":"=S!$B$2:$B$3"},
            "sheets":[{"name":"S","hiddenRows":[5],"hiddenCols":["D"],"names":{"Own":"=S!C3"},
                "cells":{
                "A1":{"formula":"=SUM(B1,1)","value":3,"text":"3.00"},"B1":2,"B2":"text","B3":true,
                "B4":{"error":2042},"B5":{"value":7,"text":null},
                "E1":{"formula":"=F1:F3","value":1,"hasArray":true,"currentArray":"E1:E3"},
                "E2":{"formula":"=F1:F3","value":2,"hasArray":true,"currentArray":"E1:E3"},
                "F1":{"formula":"=1+1","value":2,"hasArray":true},
                "G1":{"value":1,"hidden":"row"}}},
                {"name":"My Sheet"},{"name":"Locked","protected":true,
                    "cells":{"A1":{"formula":"=1","value":1}}}]}],
            "literals":true,"evaluate":{"=SUM(B1,2)":{"value":4},"=X":{"fail":true}},
            "write":{"=W":{"value":9},"=SUM(B1,1)":{"value":99}}})j")) {}
    ~ScriptedRangeTest() override { EXPECT_EQ(host_->LiveHandles(), 0); }

    host::RangePtr At(const char16_t* reference) {
        return host_->RangeAt(*FindPlace(host_->model(), reference));
    }
    std::string AddressOf(const char16_t* reference, const host::AddressForm& form) {
        return ToUtf8(At(reference)->Address(form));
    }

    std::unique_ptr<ScriptedHost> host_;
};

TEST_F(ScriptedRangeTest, WritesAddressesAsExcelDoes) {
    EXPECT_EQ(AddressOf(u"B2", host::kRelative), "B2");
    EXPECT_EQ(AddressOf(u"B2:C3", {}), "$B$2:$C$3");
    EXPECT_EQ(AddressOf(u"B2", host::kExternal), "[B.xls]S!$B$2");
    EXPECT_EQ(AddressOf(u"'My Sheet'!A:A", host::kExternal), "'[B.xls]My Sheet'!$A:$A");
    EXPECT_EQ(AddressOf(u"1:1", host::kRelative), "1:1");
}

TEST_F(ScriptedRangeTest, GivesFormulasValuesAndTexts) {
    EXPECT_EQ(*At(u"A1")->Formula().Text(), u"=SUM(B1,1)");
    EXPECT_EQ(*At(u"B1")->Formula().Text(), u"2");
    EXPECT_EQ(*At(u"B3")->Formula().Text(), u"True");
    EXPECT_EQ(*At(u"Z9")->Formula().Text(), u"");
    EXPECT_EQ(*At(u"A1")->Value().Number(), 3);
    EXPECT_TRUE(At(u"Z9")->Value().IsEmpty());
    EXPECT_EQ(*At(u"A1")->Text().Text(), u"3.00");
    EXPECT_EQ(*At(u"B1")->Text().Text(), u"2") << "a missing text is the value's";
    EXPECT_EQ(*At(u"B4")->Text().Text(), u"#N/A");
    EXPECT_EQ(*At(u"Z9")->Text().Text(), u"");
    EXPECT_TRUE(At(u"B5")->Text().IsNull());
}

TEST_F(ScriptedRangeTest, GivesArraysForBlocks) {
    const Value formulas = At(u"A1:B2")->Formula();
    ASSERT_NE(formulas.AsArray(), nullptr);
    EXPECT_EQ(formulas.AsArray()->rows, 2U);
    EXPECT_EQ(*formulas.AsArray()->At(1, 1).Text(), u"=SUM(B1,1)");
    EXPECT_EQ(*formulas.AsArray()->At(2, 2).Text(), u"text");
    EXPECT_EQ(*formulas.AsArray()->At(2, 1).Text(), u"");
    const Value values = At(u"B1:B4")->Value();
    EXPECT_EQ(*values.AsArray()->At(4, 1).AsError(), ErrorCode::kNA);
    EXPECT_EQ(At(u"A:XFD")->CountLarge(), std::int64_t{1048576} * 16384);
    EXPECT_THROW(At(u"A:XFD")->Value(), Error) << "no memory holds that";
}

TEST_F(ScriptedRangeTest, ABlockHasATextOnlyWhenAllItsCellsShowIt) {
    EXPECT_TRUE(At(u"A1:B1")->Text().IsNull());
    EXPECT_EQ(*At(u"Y8:Z9")->Text().Text(), u"");
    EXPECT_TRUE(At(u"B1:B9")->Text().IsNull());
    host_->model().activeSheet->At(20, 1).content.value = Value(4);
    EXPECT_TRUE(At(u"A20:A21")->Text().IsNull()) << "one of them is empty";
    host_->model().activeSheet->At(21, 1).content.value = Value(u"4");
    EXPECT_EQ(*At(u"A20:A21")->Text().Text(), u"4");
    EXPECT_TRUE(At(u"A:A")->Text().IsNull());
}

TEST_F(ScriptedRangeTest, AWrittenFormulaGivesItsValueUntilTheOwnOneIsPutBack) {
    const auto cell = At(u"A1");
    cell->SetFormula(u"=W");
    EXPECT_EQ(*cell->Formula().Text(), u"=W");
    EXPECT_EQ(*cell->Value().Number(), 9);
    EXPECT_EQ(*cell->Text().Text(), u"9");
    cell->SetFormula(u"=SUM(B1,2)");
    EXPECT_EQ(*cell->Value().Number(), 4);
    cell->SetFormula(u"=SUM(B1,1)");
    EXPECT_EQ(*cell->Value().Number(), 3);
    EXPECT_EQ(*cell->Text().Text(), u"3.00");
}

TEST_F(ScriptedRangeTest, WritingTheOwnFormulaAsksTheDocumentTooAndThenPutsItBack) {
    const auto cell = At(u"A1");
    cell->SetFormula(u"=SUM(B1,1)");
    EXPECT_EQ(*cell->Value().Number(), 99);
    cell->SetFormula(u"=SUM(B1,1)");
    EXPECT_EQ(*cell->Value().Number(), 3);
    EXPECT_EQ(*cell->Text().Text(), u"3.00");
    // Without an answer the formula gives what it gave.
    host_->model().write.clear();
    cell->SetFormula(u"=SUM(B1,1)");
    EXPECT_EQ(*cell->Value().Number(), 3);
}

TEST_F(ScriptedRangeTest, ARefusedWriteChangesNothing) {
    EXPECT_THROW(At(u"A1")->SetFormula(u"=X"), Error);
    EXPECT_EQ(*At(u"A1")->Formula().Text(), u"=SUM(B1,1)");
    EXPECT_EQ(*At(u"A1")->Value().Number(), 3);
    EXPECT_THROW(At(u"Locked!A1")->SetFormula(u"=1"), Error);
    EXPECT_THROW(At(u"A1:B2")->SetFormula(u"=1"), Error);
}

TEST_F(ScriptedRangeTest, AConstantCanBeWrittenToo) {
    At(u"A1")->SetFormula(u"abc");
    EXPECT_EQ(*At(u"A1")->Value().Text(), u"abc");
    EXPECT_EQ(*At(u"A1")->Formula().Text(), u"abc");
}

TEST_F(ScriptedRangeTest, KnowsArrayFormulas) {
    EXPECT_FALSE(At(u"A1")->HasArray());
    EXPECT_TRUE(At(u"E2")->HasArray());
    EXPECT_EQ(ToUtf8(At(u"E2")->CurrentArray()->Address(host::kRelative)), "E1:E3");
    EXPECT_EQ(ToUtf8(At(u"F1")->CurrentArray()->Address(host::kRelative)), "F1");
    EXPECT_THROW(At(u"A1")->CurrentArray(), Error);
    EXPECT_EQ(*At(u"E1")->FormulaArray().Text(), u"=F1:F3");
    EXPECT_THROW(At(u"E1")->SetFormulaArray(u"=1"), Error) << "a part of a larger array";
    EXPECT_THROW(At(u"E1")->SetFormula(u"=1"), Error);
    EXPECT_EQ(*At(u"E1")->Formula().Text(), u"=F1:F3");
    At(u"F1")->SetFormulaArray(u"=W");
    EXPECT_EQ(*At(u"F1")->Value().Number(), 9);
    EXPECT_TRUE(At(u"F1")->HasArray());
    At(u"F1")->SetFormulaArray(u"=1+1");
    EXPECT_EQ(*At(u"F1")->Value().Number(), 2);
}

TEST_F(ScriptedRangeTest, SaysWhetherItsRowsAndColumnsAreHidden) {
    EXPECT_EQ(*At(u"A5")->EntireRow()->Hidden().Boolean(), true);
    EXPECT_EQ(*At(u"A4")->EntireRow()->Hidden().Boolean(), false);
    EXPECT_TRUE(At(u"A4:A5")->EntireRow()->Hidden().IsNull()) << "one of the two";
    EXPECT_EQ(*At(u"D9")->EntireColumn()->Hidden().Boolean(), true);
    EXPECT_TRUE(At(u"A1:D1")->EntireColumn()->Hidden().IsNull());
    EXPECT_EQ(*At(u"A5")->EntireColumn()->Hidden().Boolean(), false);
    EXPECT_EQ(*At(u"G1")->EntireRow()->Hidden().Boolean(), true) << "the cell says so itself";
    EXPECT_EQ(*At(u"G1")->EntireColumn()->Hidden().Boolean(), false);
    EXPECT_EQ(*At(u"A1")->EntireRow()->Hidden().Boolean(), false) << "though G1 in its row says so";
    EXPECT_THROW(At(u"A5")->Hidden(), Error);
    EXPECT_EQ(ToUtf8(At(u"B2:C3")->EntireRow()->Address(host::kRelative)), "2:3");
    EXPECT_EQ(ToUtf8(At(u"B2:C3")->EntireColumn()->Address(host::kRelative)), "B:C");
}

TEST_F(ScriptedRangeTest, FindsTheNameOfExactlyItsCells) {
    EXPECT_EQ(At(u"B2")->Name()->Name_(), u"Rate");
    EXPECT_EQ(At(u"B2:B3")->Name()->Name_(), u"Block");
    EXPECT_EQ(At(u"C3")->Name()->Name_(), u"S!Own");
    EXPECT_EQ(At(u"B3")->Name(), nullptr);
    EXPECT_EQ(At(u"'My Sheet'!B2")->Name(), nullptr);
}

TEST_F(ScriptedRangeTest, SelectsOnTheActiveSheetOnly) {
    At(u"B2:C3")->Select();
    EXPECT_TRUE(host_->selection == (Area{2, 2, 3, 3}));
    EXPECT_TRUE(host_->model().activeCell == (Area{2, 2, 2, 2}));
    At(u"D4")->Activate();
    EXPECT_TRUE(host_->model().activeCell == (Area{4, 4, 4, 4}));
    EXPECT_TRUE(host_->selection == (Area{2, 2, 3, 3}));
    const auto other = At(u"'My Sheet'!A1");
    EXPECT_THROW(other->Select(), Error);
    EXPECT_THROW(other->Activate(), Error);
    other->Worksheet()->Activate();
    EXPECT_NO_THROW(other->Select());
}

}  // namespace
}  // namespace korvane::scripted
