// Fills come and go without a trace: what stood before a tint stands after it.
#include "bindings/calc/tint_ledger.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "base/error.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/uno_text.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr sal_Int32 kTint = 0x00CCFF;
constexpr sal_Int32 kOdd = 0x123456;
constexpr sal_Int32 kStyled = 0xABCDEF;

class TintLedgerTest : public ::testing::Test {
protected:
    TintLedgerTest()
        : book_("tints.fods", FlatText({{"Data", {{1, 1, "1"}, {2, 1, "2"}, {3, 1, "3"}}}})) {
        const Reference<css::container::XNameContainer> styles(
            Reference<css::style::XStyleFamiliesSupplier>(Model(), UNO_QUERY_THROW)
                ->getStyleFamilies()
                ->getByName(ToOUString(u"CellStyles")),
            UNO_QUERY_THROW);
        const auto style = Reference<css::lang::XMultiServiceFactory>(Model(), UNO_QUERY_THROW)
                               ->createInstance(ToOUString(u"com.sun.star.style.CellStyle"));
        css::uno::Any value;
        value <<= style;
        styles->insertByName(ToOUString(u"Coloured"), value);
        SetProperty(style, u"CellBackColor", kStyled);
    }
    const CalcDocument& Document() { return *book_.application().document(); }
    Reference<css::frame::XModel> Model() { return Document().model(); }
    static void SetProperty(const Reference<css::uno::XInterface>& on, const char16_t* name,
                            sal_Int32 number) {
        css::uno::Any value;
        value <<= number;
        Reference<css::beans::XPropertySet>(on, UNO_QUERY_THROW)
            ->setPropertyValue(ToOUString(name), value);
    }
    CellRangeRef Cells(const char16_t* reference) {
        return Document().Sheet(0)->getCellRangeByName(ToOUString(reference));
    }
    void Colour(const char16_t* reference, sal_Int32 color) {
        SetProperty(Cells(reference), u"CellBackColor", color);
    }
    void Style(const char16_t* reference) {
        css::uno::Any value;
        value <<= ToOUString(u"Coloured");
        Reference<css::beans::XPropertySet>(Cells(reference), UNO_QUERY_THROW)
            ->setPropertyValue(ToOUString(u"CellStyle"), value);
    }
    // Every cell of A1:C6 with its colour; "*" marks its own.
    std::string Look() {
        std::string text;
        for (sal_Int32 row = 0; row < 6; ++row) {
            for (sal_Int32 column = 0; column < 3; ++column) {
                const auto cell =
                    Document().Sheet(0)->getCellRangeByPosition(column, row, column, row);
                const Fill fill = FillsOf(cell).parts.front().fill;
                text += std::to_string(fill.color) + (fill.isOwn ? "* " : " ");
            }
        }
        return text;
    }
    host::InteriorPtr Interior(const char16_t* reference) {
        const CellBlock block = BlockOf(Cells(reference));
        return CalcRange::Make(book_.application().document(), block.Sheet,
                               {block.StartRow + 1, block.StartColumn + 1, block.EndRow + 1,
                                block.EndColumn + 1})
            ->Interior();
    }
    // As the add-in does it: keeps the index, tints, and writes the index back.
    void TintAndRestore(const char16_t* reference) {
        const std::string before = Look();
        const std::string all = book_.Snapshot();
        const Value saved = Interior(reference)->ColorIndex();
        ASSERT_NE(saved.Number(), nullptr) << before;
        Interior(reference)->SetColorIndex(Value(33));
        EXPECT_EQ(Shown(Interior(reference)->ColorIndex()), "33");
        EXPECT_EQ(Shown(Interior(reference)->Color()), "16763904");
        Interior(reference)->SetColorIndex(saved);
        EXPECT_EQ(Look(), before);
        EXPECT_EQ(Difference(all, book_.Snapshot()), "");
        EXPECT_TRUE(Document().tints().IsEmpty());
    }

    OpenBook book_;
};

TEST_F(TintLedgerTest, EveryStateOfACellIsRestored) {
    TintAndRestore(u"A1");
    Colour(u"A2", kNoFill);
    Colour(u"A3", 0xFFFF00);
    Colour(u"A4", kOdd);
    Style(u"A5");
    Style(u"A6");
    Colour(u"A6", kNoFill);
    for (const char16_t* cell : {u"A2", u"A3", u"A4", u"A5", u"A6"}) TintAndRestore(cell);
    EXPECT_EQ(Shown(Interior(u"A1")->ColorIndex()), "-4142");
    EXPECT_EQ(Shown(Interior(u"A3")->ColorIndex()), "6");
    for (const char16_t* cell : {u"A2", u"A4", u"A5", u"A6"}) {
        EXPECT_GE(*Interior(cell)->ColorIndex().Number(), kFirstPrivateIndex);
    }
}

TEST_F(TintLedgerTest, CellsThatLookAlikeForDifferentReasonsKeepThem) {
    Colour(u"A2", kNoFill);
    TintAndRestore(u"A1:C3");
    Style(u"B1:B3");
    Colour(u"C1:C2", kStyled);
    Style(u"C3");
    TintAndRestore(u"B1:C3");
    TintAndRestore(u"C2:C3");
}

TEST_F(TintLedgerTest, CellsThatDifferHaveNoIndex) {
    Style(u"B1");
    // Both are styles, and so of the default state.
    EXPECT_TRUE(Interior(u"A1:B1")->ColorIndex().IsNull());
    EXPECT_TRUE(Interior(u"A1:B1")->Color().IsNull());
    Colour(u"A2", kOdd);
    EXPECT_TRUE(Interior(u"A1:A2")->ColorIndex().IsNull());
    EXPECT_EQ(Shown(Interior(u"A1:A3")->Color()), "null");
}

TEST_F(TintLedgerTest, NoFillIsWrittenOverAStyle) {
    Style(u"A1");
    Interior(u"A1")->SetColorIndex(Value(-4142));
    EXPECT_EQ(Shown(Interior(u"A1")->Color()), "16777215");
    EXPECT_THROW(Interior(u"A1")->SetColorIndex(Value(57)), Error);
    EXPECT_THROW(Interior(u"A1")->SetColorIndex(Value(9999)), Error);
    EXPECT_THROW(Interior(u"A1")->SetColorIndex(Value(1e300)), Error);
}

TEST_F(TintLedgerTest, TintsAreTakenOffAndPutBack) {
    Colour(u"B2", kOdd);
    Style(u"C1:C3");
    const std::string before = Look();
    const std::string all = book_.Snapshot();
    const Value first = Interior(u"A1:A3")->ColorIndex();
    const Value second = Interior(u"B2")->ColorIndex();
    const Value third = Interior(u"C1:C3")->ColorIndex();
    for (const char16_t* cells : {u"A1:A3", u"B2", u"C1:C3"}) {
        Interior(cells)->SetColorIndex(Value(33));
    }
    const std::string tinted = Look();
    TintLedger& tints = Document().tints();
    tints.TakeOff();
    tints.TakeOff();
    EXPECT_EQ(Look(), before);
    EXPECT_EQ(Difference(all, book_.Snapshot()), "");
    tints.PutBack();
    EXPECT_EQ(Look(), before);
    tints.PutBack();
    EXPECT_EQ(Look(), tinted);
    // Ended while taken off: it does not come back. Begun then: it does.
    tints.TakeOff();
    Interior(u"B2")->SetColorIndex(second);
    const Value fourth = Interior(u"B5")->ColorIndex();
    Interior(u"B5")->SetColorIndex(Value(33));
    EXPECT_EQ(Look(), before);
    tints.PutBack();
    EXPECT_EQ(Shown(Interior(u"B2")->Color()), std::to_string(0x563412));
    EXPECT_EQ(Shown(Interior(u"B5")->ColorIndex()), "33");
    Interior(u"B5")->SetColorIndex(fourth);
    Interior(u"C1:C3")->SetColorIndex(third);
    Interior(u"A1:A3")->SetColorIndex(first);
    EXPECT_EQ(Look(), before);
    EXPECT_TRUE(tints.IsEmpty());
    EXPECT_EQ(Difference(all, book_.Snapshot()), "");
}

TEST_F(TintLedgerTest, WhatTheUserFillsMeanwhileIsHis) {
    const Value saved = Interior(u"A1:A4")->ColorIndex();
    Interior(u"A1:A4")->SetColorIndex(Value(33));
    Colour(u"A2", kOdd);
    TintLedger& tints = Document().tints();
    tints.TakeOff();
    EXPECT_EQ(Shown(Interior(u"A1")->ColorIndex()), "-4142");
    EXPECT_EQ(FillsOf(Cells(u"A2")).parts.front().fill, (Fill{kOdd, true}));
    Colour(u"A3", kOdd);
    tints.PutBack();
    EXPECT_EQ(FillsOf(Cells(u"A1")).parts.front().fill, (Fill{kTint, true}));
    EXPECT_EQ(FillsOf(Cells(u"A2")).parts.front().fill, (Fill{kOdd, true}));
    EXPECT_EQ(FillsOf(Cells(u"A3")).parts.front().fill, (Fill{kOdd, true}));
    Interior(u"A1:A4")->SetColorIndex(saved);
    EXPECT_EQ(Look().substr(0, Look().find("1193046")), "-1 -1 -1 ");
    EXPECT_EQ(FillsOf(Cells(u"A3")).parts.front().fill, (Fill{kOdd, true}));
    EXPECT_EQ(FillsOf(Cells(u"A4")).parts.front().fill, Fill{});
}

TEST_F(TintLedgerTest, TintsFollowTheirCells) {
    Style(u"A2");
    const auto cell = book_.Cell(u"Data!A2");
    const Value saved = cell->Interior()->ColorIndex();
    cell->Interior()->SetColorIndex(Value(33));
    Reference<css::table::XColumnRowRange>(Document().Sheet(0), UNO_QUERY_THROW)
        ->getRows()
        ->insertByIndex(0, 2);
    TintLedger& tints = Document().tints();
    tints.TakeOff();
    EXPECT_EQ(FillsOf(Cells(u"A4")).parts.front().fill, (Fill{kStyled, false}));
    tints.PutBack();
    EXPECT_EQ(FillsOf(Cells(u"A4")).parts.front().fill, (Fill{kTint, true}));
    cell->Interior()->SetColorIndex(saved);
    EXPECT_EQ(FillsOf(Cells(u"A4")).parts.front().fill, (Fill{kStyled, false}));
    EXPECT_TRUE(tints.IsEmpty());
}

TEST_F(TintLedgerTest, ASecondTintOfTheSameCellsEndsWithTheFirst) {
    Colour(u"A1", kOdd);
    const std::string before = Look();
    const Value first = Interior(u"A1")->ColorIndex();
    Interior(u"A1")->SetColorIndex(Value(33));
    const Value second = Interior(u"A1")->ColorIndex();
    Interior(u"A1")->SetColorIndex(Value(33));
    Interior(u"A1")->SetColorIndex(second);
    Interior(u"A1")->SetColorIndex(first);
    EXPECT_EQ(Look(), before);
    EXPECT_TRUE(Document().tints().IsEmpty());
    // Cells that have the tint's colour already are not tinted.
    Colour(u"A1", kTint);
    const std::string tint = Look();
    TintAndRestore(u"A1");
    Interior(u"A1")->SetColorIndex(Value(33));
    Document().tints().Drop();
    EXPECT_EQ(Look(), tint);
}

TEST_F(TintLedgerTest, WhatTheUserFillsUnderSeveralTintsIsHis) {
    for (const int count : {1, 2, 3, 4}) {
        for (const bool isLate : {false, true}) {
            Colour(u"A1", kStyled);
            std::vector<Value> saved;
            for (int k = 0; k < count; ++k) {
                // The last one on what the user has filled, or all before he does.
                if (!isLate && k + 1 == count) Colour(u"A1", kOdd);
                saved.push_back(Interior(u"A1")->ColorIndex());
                Interior(u"A1")->SetColorIndex(Value(33));
            }
            if (isLate) Colour(u"A1", kOdd);
            for (auto index = saved.rbegin(); index != saved.rend(); ++index) {
                Interior(u"A1")->SetColorIndex(*index);
            }
            EXPECT_EQ(FillsOf(Cells(u"A1")).parts.front().fill, (Fill{kOdd, true}))
                << count << isLate;
            EXPECT_TRUE(Document().tints().IsEmpty()) << count << isLate;
        }
    }
}

TEST_F(TintLedgerTest, DroppedTintsDoNotComeBack) {
    const std::string before = Look();
    const Value saved = Interior(u"A1:B2")->ColorIndex();
    Interior(u"A1:B2")->SetColorIndex(Value(33));
    TintLedger& tints = Document().tints();
    tints.Drop();
    EXPECT_EQ(Look(), before);
    EXPECT_TRUE(tints.IsEmpty());
    tints.TakeOff();
    tints.PutBack();
    Interior(u"A1:B2")->SetColorIndex(saved);
    EXPECT_EQ(Look(), before);
}

TEST_F(TintLedgerTest, ASheetThatIsProtectedMeanwhileIsLeftAlone) {
    Interior(u"A1")->SetColorIndex(Value(33));
    TintLedger& tints = Document().tints();
    tints.TakeOff();
    const std::string before = Look();
    Reference<css::util::XProtectable>(Document().Sheet(0), UNO_QUERY_THROW)->protect({});
    tints.PutBack();
    EXPECT_EQ(Look(), before);
    EXPECT_THROW(Interior(u"A1")->SetColorIndex(Value(-4142)), Error);
}

}  // namespace
}  // namespace korvane::calc::testing
