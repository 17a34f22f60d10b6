#include "navigation/selector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "bindings/scripted/scripted_platform.h"
#include "navigation/navigation_test_support.h"

namespace korvane {
namespace {

constexpr int kTint = 33;
constexpr int kNoFill = -4142;
constexpr int kAutomatic = -4105;
constexpr double kCustomColour = 0x123456;  // in no palette

class SelectorTest : public test::TwoWorkbooks {
protected:
    SelectorTest() { options_.Init(); }

    void Fill(const char16_t* reference, int index, double color) {
        const auto place = host_->FindCells(reference).value();
        place.sheet->fills.push_back({place.area, index, color});
    }
    // The fill's number; 0 where the cells differ.
    int Index(const char16_t* reference) {
        const Value index = Range(reference)->Interior()->ColorIndex();
        return index.Number() ? static_cast<int>(*index.Number()) : 0;
    }
    double Colour(const char16_t* reference) {
        const Value color = Range(reference)->Interior()->Color();
        return color.Number() ? *color.Number() : -1;
    }

    scripted::ScriptedPlatform platform_;
    CGlobalOptions options_{platform_.settings, *application_};
    CTints tints_;
};

TEST_F(SelectorTest, SelectsAndTintsAndRestores) {
    for (const bool hasRibbon : {false, true}) {
        CSelector selector(options_, hasRibbon, tints_);
        selector.SelectRange(Range(u"[C.xls]T!B2:C3"), true);
        EXPECT_EQ(Here(), "[C.xls]T!$B$2");
        EXPECT_EQ(host_->selection, (Area{2, 2, 3, 3}));
        EXPECT_EQ(Index(u"[C.xls]T!B2:C3"), kTint);
        selector.Deselect();
        EXPECT_EQ(Index(u"[C.xls]T!B2:C3"), kNoFill);
        EXPECT_EQ(selector.rngColoured(), nullptr);
        EXPECT_EQ(Here(), "[C.xls]T!$B$2") << "the selection stays";
    }
}

TEST_F(SelectorTest, NullOnlyRestores) {
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2"), true);
    selector.SelectRange(nullptr, true);
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
    EXPECT_EQ(Here(), "[B.xls]S!$B$2");
    const auto calls = host_->calls();
    selector.SelectRange(nullptr);
    EXPECT_EQ(host_->calls(), calls);
}

TEST_F(SelectorTest, TintsOnlyWhereItIsAskedTo) {
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2"));
    selector.SelectRange(Range(u"S!B3"), false);
    EXPECT_EQ(Here(), "[B.xls]S!$B$3");
    EXPECT_EQ(Index(u"S!B2:B3"), kNoFill);
}

TEST_F(SelectorTest, WithTheOptionOffItSelectsAndNeverTouchesAFill) {
    options_.SetbHighlightCells(false);
    CSelector selector(options_, true, tints_);
    options_.SetbHighlightCells(true);  // counts for the next one
    host_->StartLog();
    selector.SelectRange(Range(u"S!B2"), true);
    selector.Deselect();
    EXPECT_EQ(Here(), "[B.xls]S!$B$2");
    EXPECT_EQ(host_->CountOf("Range.Interior"), 0);
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
}

TEST_F(SelectorTest, AnOptionSwitchedOffLaterStillRestores) {
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2"), true);
    options_.SetbHighlightCells(false);
    selector.Deselect();
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
}

TEST_F(SelectorTest, NoFillAndAutomaticComeBackThroughTheIndex) {
    for (const bool hasRibbon : {false, true}) {
        for (const int index : {kNoFill, kAutomatic}) {
            Fill(u"S!B2", index, 0xFFFFFF);
            CSelector selector(options_, hasRibbon, tints_);
            selector.SelectRange(Range(u"S!B2"), true);
            EXPECT_EQ(Index(u"S!B2"), kTint);
            selector.Deselect();
            EXPECT_EQ(Index(u"S!B2"), index);
        }
    }
}

TEST_F(SelectorTest, WithARibbonAColourComesBackExactly) {
    Fill(u"S!B2", 5, kCustomColour);
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2"), true);
    EXPECT_EQ(Index(u"S!B2"), kTint);
    selector.Deselect();
    EXPECT_EQ(Colour(u"S!B2"), kCustomColour);
}

TEST_F(SelectorTest, WithoutARibbonAColourComesBackByItsPaletteIndex) {
    Fill(u"S!B2", 5, kCustomColour);
    CSelector selector(options_, false, tints_);
    selector.SelectRange(Range(u"S!B2"), true);
    host_->StartLog();
    selector.Deselect();
    EXPECT_EQ(Index(u"S!B2"), 5);
    EXPECT_EQ(host_->CountOf("Interior.SetColor"), 0);
}

TEST_F(SelectorTest, CellsOfDifferentFillsAreSelectedAndKeepThem) {
    Fill(u"S!B2", 5, kCustomColour);
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2:B3"), true);
    EXPECT_EQ(host_->selection, (Area{2, 2, 3, 2}));
    EXPECT_EQ(Colour(u"S!B2"), kCustomColour);
    EXPECT_EQ(Index(u"S!B3"), kNoFill);
    ASSERT_NE(selector.rngColoured(), nullptr);
    const auto calls = host_->calls();
    selector.Deselect();
    EXPECT_EQ(host_->calls(), calls) << "there is nothing to restore";
    EXPECT_EQ(selector.rngColoured(), nullptr);
}

TEST_F(SelectorTest, TheFirstCellsAreRestoredBeforeTheNextAreTinted) {
    Fill(u"S!B2", 5, kCustomColour);
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2:B2"), true);
    selector.SelectRange(Range(u"S!B2:B2"), true);  // the same ones: tinted from their own fill
    selector.SelectRange(Range(u"S!B3"), true);
    EXPECT_EQ(Colour(u"S!B2"), kCustomColour);
    EXPECT_EQ(Index(u"S!B3"), kTint);
    selector.Deselect();
    EXPECT_EQ(Index(u"S!B3"), kNoFill);
}

TEST_F(SelectorTest, ItsEndLeavesTheTint) {
    {
        CSelector selector(options_, true, tints_);
        selector.SelectRange(Range(u"S!B2"), true);
    }
    EXPECT_EQ(Index(u"S!B2"), kTint);
}

TEST_F(SelectorTest, CellsThatCannotBeSelectedAreTintedAllTheSame) {
    for (const char* member :
         {"Worksheet.Parent", "Workbook.Activate", "Worksheet.Activate", "Range.Select"}) {
        CSelector selector(options_, true, tints_);
        host_->FailMember(member);
        selector.SelectRange(Range(u"[C.xls]T!B2"), true);
        host_->FailNothing();
        EXPECT_EQ(Index(u"[C.xls]T!B2"), kTint) << member;
        selector.Deselect();
        EXPECT_EQ(Index(u"[C.xls]T!B2"), kNoFill) << member;
    }
}

TEST_F(SelectorTest, AFillThatCannotBeSavedOrSetIsLeftAsItIs) {
    for (const auto& [member, nth] : {std::pair{"Interior.ColorIndex", 1},
                                      {"Interior.Color", 1},
                                      {"Interior.SetColorIndex", 1},
                                      {"Range.Interior", 1},
                                      {"Range.Interior", 2},
                                      {"Range.Interior", 3}}) {
        CSelector selector(options_, true, tints_);
        host_->FailMember(member, nth);
        selector.SelectRange(Range(u"S!B2"), true);
        host_->FailNothing();
        EXPECT_EQ(selector.rngColoured(), nullptr) << member << nth;
        EXPECT_EQ(Index(u"S!B2"), kNoFill) << member << nth;
        EXPECT_EQ(Here(), "[B.xls]S!$B$2");
    }
}

TEST_F(SelectorTest, BothValuesAreReadAlsoWhenTheFirstFails) {
    CSelector selector(options_, true, tints_);
    host_->StartLog();
    host_->FailMember("Interior.ColorIndex");
    selector.SelectRange(Range(u"S!B2"), true);
    EXPECT_EQ(host_->CountOf("Interior.Color"), 1);
    EXPECT_EQ(host_->CountOf("Interior.SetColorIndex"), 0);
}

TEST_F(SelectorTest, ARestoreThatFailsIsNotTriedAgain) {
    for (const char* member : {"Range.Interior", "Interior.SetColorIndex"}) {
        CSelector selector(options_, true, tints_);
        selector.SelectRange(Range(u"S!B2"), true);
        host_->FailMember(member);
        selector.Deselect();
        host_->FailNothing();
        EXPECT_EQ(selector.rngColoured(), nullptr) << member;
        Fill(u"S!B2", kNoFill, 0xFFFFFF);
    }
}

TEST_F(SelectorTest, CellsOfAProtectedSheetAreSelectedAndKeepTheirFill) {
    host_->FindCells(u"S!A1")->sheet->isProtected = true;
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"S!B2"), true);
    EXPECT_EQ(Here(), "[B.xls]S!$B$2");
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
    EXPECT_EQ(selector.rngColoured(), nullptr);
}

TEST_F(SelectorTest, CellsOfAWorkbookClosedSinceAreLetGo) {
    CSelector selector(options_, true, tints_);
    selector.SelectRange(Range(u"[C.xls]T!B2"), true);
    host_->CloseBook(u"C.xls");
    selector.SelectRange(Range(u"[B.xls]S!B2"), true);
    EXPECT_EQ(Here(), "[B.xls]S!$B$2");
    EXPECT_EQ(Index(u"[B.xls]S!B2"), kTint);
    selector.Deselect();
    EXPECT_EQ(Index(u"[B.xls]S!B2"), kNoFill);
}

// Each access in turn fails: nothing leaves, and what is tinted is looked after.
TEST_F(SelectorTest, NoFailingAccessLeavesCellsTintedThatAreNotLookedAfter) {
    for (std::int64_t nth = 1; nth <= 12; ++nth) {
        CSelector selector(options_, true, tints_);
        const auto rng = Range(u"[C.xls]T!B2");
        host_->FailNthCall(nth);
        selector.SelectRange(rng, true);
        host_->FailNothing();
        EXPECT_EQ(Index(u"[C.xls]T!B2") == kTint, selector.rngColoured() != nullptr) << nth;
        selector.SelectRange(nullptr);
        EXPECT_EQ(Index(u"[C.xls]T!B2"), kNoFill) << nth;
    }
}

TEST_F(SelectorTest, TheUsersFillComesBackInWhateverOrderTintsGo) {
    Fill(u"S!B2:B3", 6, 0x00FFFF);
    // Who tints what, and who goes first, second and third.
    const std::vector<const char16_t*> cells{u"S!B2", u"S!B2:B3", u"S!B3:C4", u"S!C4"};
    std::vector<std::size_t> order{0, 1, 2, 3};
    do {
        std::vector<std::unique_ptr<CSelector>> selectors;
        for (const auto* reference : cells) {
            selectors.push_back(std::make_unique<CSelector>(options_, true, tints_));
            selectors.back()->SelectRange(Range(reference), true);
        }
        for (const std::size_t which : order) selectors[which]->Deselect();
        EXPECT_EQ(Colour(u"S!B2:B3"), 0x00FFFF);
        EXPECT_EQ(Index(u"S!C3:C4"), kNoFill);
        EXPECT_EQ(Index(u"S!B4"), kNoFill);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(SelectorTest, WhatAnotherStillShowsStaysTinted) {
    CSelector first(options_, true, tints_);
    CSelector second(options_, true, tints_);
    first.SelectRange(Range(u"S!B2"), true);
    second.SelectRange(Range(u"S!B2"), true);
    first.Deselect();
    EXPECT_EQ(Index(u"S!B2"), kTint);
    second.SelectRange(Range(u"S!C3"), true);
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
}

TEST_F(SelectorTest, AClosedWorkbookBelowAnotherTintIsPassedOver) {
    CSelector first(options_, true, tints_);
    CSelector second(options_, true, tints_);
    first.SelectRange(Range(u"S!B2"), true);
    second.SelectRange(Range(u"[C.xls]T!A1"), true);
    host_->CloseBook(u"C.xls");
    first.Deselect();
    EXPECT_EQ(Index(u"S!B2"), kNoFill);
    EXPECT_EQ(second.rngColoured(), nullptr);
    second.Deselect();
}

}  // namespace
}  // namespace korvane
