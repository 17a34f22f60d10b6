#include "navigation/history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "navigation/navigation_test_support.h"

namespace korvane {
namespace {

class Lines : public ErrorReporter {
public:
    void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                bool isEntryPoint) override {
        EXPECT_FALSE(isEntryPoint);
        lines.push_back(ToUtf8(std::u16string(module) + u"." + procedure + u": ") + error.what());
    }
    std::vector<std::string> lines;
};

class HistoryTest : public test::TwoWorkbooks {
protected:
    ~HistoryTest() override {
        history_.reset();
        EXPECT_TRUE(reporter_.lines.empty()) << reporter_.lines.front();
    }
    void Explore(const char16_t* reference) { history_->AddRange(Range(reference)); }
    // Goes back, and says where the user then stands.
    std::string Back() {
        EXPECT_TRUE(history_->bGoBack());
        return Here();
    }
    // The user moves to a cell of the active sheet himself.
    void MoveTo(std::int32_t row, std::int32_t column) {
        host_->model().activeCell = host_->selection = {row, column, row, column};
    }

    Lines reporter_;
    std::unique_ptr<CHistory> history_ = std::make_unique<CHistory>(*application_, reporter_);
};

TEST_F(HistoryTest, WithNothingExploredGoingBackDoesNothing) {
    const auto calls = host_->calls();
    EXPECT_TRUE(history_->bGoBack());
    EXPECT_EQ(host_->calls(), calls);
    EXPECT_EQ(history_->lPosition(), 0);
}

TEST_F(HistoryTest, GoesBackFromTheNewestToTheOldestAndStaysThere) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    EXPECT_EQ(history_->lPosition(), 0);
    MoveTo(9, 9);
    EXPECT_EQ(Back(), "[B.xls]S!$B$2");
    EXPECT_EQ(history_->lPosition(), 2);
    EXPECT_EQ(Back(), "[B.xls]S!$A$1");
    EXPECT_EQ(history_->lPosition(), 1);
    EXPECT_EQ(Back(), "[B.xls]S!$A$1");
    EXPECT_EQ(history_->lPosition(), 1);
    EXPECT_EQ(history_->count(), 2U) << "going back removes nothing";
}

TEST_F(HistoryTest, GoesBackAcrossSheetsAndWorkbooks) {
    Explore(u"[C.xls]T!C3");
    Explore(u"'[B.xls]My Sheet'!D4:E5");
    Explore(u"[B.xls]S!B2");
    EXPECT_EQ(Back(), "[B.xls]S!$B$2");
    EXPECT_EQ(Back(), "'[B.xls]My Sheet'!$D$4");
    EXPECT_EQ(host_->selection, (Area{4, 4, 5, 5}));
}

TEST_F(HistoryTest, TheSameCellTwiceInARowIsStoredOnce) {
    Explore(u"S!A1");
    Explore(u"S!A1");
    EXPECT_EQ(history_->count(), 1U);
    Explore(u"S!B2");
    Explore(u"S!A1");
    EXPECT_EQ(history_->count(), 3U);
    Explore(u"'My Sheet'!A1");
    EXPECT_EQ(history_->count(), 4U) << "the same address on another sheet";
}

TEST_F(HistoryTest, ARepeatAndNothingLeaveThePlaceAsItIs) {
    history_->AddRange(nullptr);
    EXPECT_EQ(history_->count(), 0U);
    Explore(u"S!A1");
    Explore(u"S!B2");
    Back();
    Explore(u"S!B2");
    EXPECT_EQ(history_->lPosition(), 2);
    history_->AddRange(nullptr);
    EXPECT_EQ(history_->lPosition(), 2);
    EXPECT_EQ(history_->count(), 2U);
    Explore(u"S!C3");
    EXPECT_EQ(history_->lPosition(), 0);
}

TEST_F(HistoryTest, TheHundredAndFirstDropsTheOldest) {
    for (std::int32_t row = 1; row <= 101; ++row) {
        history_->AddRange(host_->RangeAt(
            {host_->model().activeBook, host_->model().activeSheet, {row, 1, row, 1}}));
        EXPECT_EQ(history_->count(), static_cast<std::size_t>(std::min(row, 100)));
    }
    for (std::int32_t row = 101; row >= 2; --row) {
        EXPECT_EQ(Back(), "[B.xls]S!$A$" + std::to_string(row));
    }
    EXPECT_EQ(Back(), "[B.xls]S!$A$2") << "A1 was dropped";
    EXPECT_EQ(history_->lPosition(), 1);
}

TEST_F(HistoryTest, AUserWhoMovedAwayStartsAgainFromTheNewest) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    Explore(u"S!C3");
    Back();
    EXPECT_EQ(Back(), "[B.xls]S!$B$2");
    MoveTo(9, 9);
    EXPECT_EQ(Back(), "[B.xls]S!$C$3");
    EXPECT_EQ(history_->lPosition(), 3);
}

TEST_F(HistoryTest, ANewlyExploredCellIsTheNewestAgain) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    Back();
    Back();
    Explore(u"S!C3");
    EXPECT_EQ(Back(), "[B.xls]S!$C$3");
}

TEST_F(HistoryTest, ABlockIsNotWhereItsFirstCellIs) {
    Explore(u"S!A1");
    Explore(u"S!B2:B3");
    EXPECT_EQ(Back(), "[B.xls]S!$B$2");
    EXPECT_EQ(Back(), "[B.xls]S!$B$2") << "the active cell is one cell, the entry is two";
    EXPECT_EQ(history_->lPosition(), 2);
}

TEST_F(HistoryTest, CellsOfAClosedWorkbookArePassedOverAndStay) {
    Explore(u"[B.xls]S!A1");
    Explore(u"[C.xls]T!C3");
    MoveTo(9, 9);
    host_->CloseBook(u"C.xls");
    EXPECT_EQ(Back(), "[B.xls]S!$A$1");
    EXPECT_EQ(history_->lPosition(), 1);
    EXPECT_EQ(history_->count(), 2U);
    Explore(u"[B.xls]S!B2");
    EXPECT_EQ(history_->count(), 3U) << "cells that cannot be read are no repeat";
}

TEST_F(HistoryTest, WhereNothingCanBeReachedThePlaceIsTheOneTriedLast) {
    Explore(u"[C.xls]T!A1");
    Explore(u"[C.xls]T!B2");
    host_->CloseBook(u"C.xls");
    EXPECT_EQ(Back(), "[B.xls]S!$A$1");
    EXPECT_EQ(history_->lPosition(), 1);
    EXPECT_EQ(Back(), "[B.xls]S!$A$1") << "the entry cannot be read: from the newest again";
}

TEST_F(HistoryTest, AMoveThatPartlyFailedIsTriedWithTheNextOlder) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    for (const char* member : {"Range.Worksheet", "Worksheet.Parent", "Workbook.Activate",
                               "Worksheet.Activate", "Range.Select"}) {
        MoveTo(9, 9);
        host_->FailMember(member, 1);
        EXPECT_TRUE(history_->bGoBack());
        EXPECT_EQ(history_->lPosition(), 1) << member;
        EXPECT_EQ(Here(), "[B.xls]S!$A$1") << member;
        host_->FailNothing();
    }
}

TEST_F(HistoryTest, AHostThatFailsThroughoutIsNoFailure) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    host_->FailMember("Range.Select");
    EXPECT_EQ(Back(), "[B.xls]S!$A$1");
    EXPECT_EQ(history_->lPosition(), 1) << "the entry that was tried last";
}

TEST_F(HistoryTest, AddressesThatCannotBeReadMakeNoRepeat) {
    Explore(u"S!A1");
    for (const int nth : {1, 2}) {
        host_->FailMember("Range.Address", nth);
        Explore(u"S!A1");
        host_->FailNothing();
    }
    EXPECT_EQ(history_->count(), 3U);
}

TEST_F(HistoryTest, APlaceThatCannotBeReadIsAUserWhoMovedAway) {
    Explore(u"S!A1");
    Explore(u"S!B2");
    for (const auto& [member, nth] :
         {std::pair{"Range.Address", 1}, {"Range.Address", 2}, {"Application.ActiveCell", 1}}) {
        MoveTo(9, 9);
        EXPECT_EQ(Back(), "[B.xls]S!$B$2");
        host_->FailMember(member, nth);
        EXPECT_TRUE(history_->bGoBack());
        host_->FailNothing();
        EXPECT_EQ(Here(), "[B.xls]S!$B$2") << member << nth;
        EXPECT_EQ(history_->lPosition(), 2);
    }
}

TEST_F(HistoryTest, GoesBackWhenNothingIsActive) {
    Explore(u"[C.xls]T!A1");
    Explore(u"[B.xls]S!B2");
    EXPECT_EQ(Back(), "[B.xls]S!$B$2");
    host_->nothingOpen = true;
    EXPECT_TRUE(history_->bGoBack());
    EXPECT_EQ(history_->lPosition(), 2);
}

// A range that no host has: it raises what no host may raise.
class BrokenRange : public host::Range {
public:
    korvane::Value Formula() override { return korvane::Value(); }
    void SetFormula(const std::u16string&) override {}
    korvane::Value FormulaArray() override { return korvane::Value(); }
    void SetFormulaArray(const std::u16string&) override {}
    bool HasArray() override { return false; }
    host::RangePtr CurrentArray() override { return nullptr; }
    korvane::Value Value() override { return korvane::Value(); }
    std::int64_t CountLarge() override { return 1; }
    korvane::Value Text() override { return korvane::Value(); }
    std::u16string Address(const host::AddressForm&) override { return u"broken"; }
    host::WorksheetPtr Worksheet() override { throw std::bad_alloc(); }
    host::NamePtr Name() override { return nullptr; }
    host::RangePtr EntireRow() override { return nullptr; }
    host::RangePtr EntireColumn() override { return nullptr; }
    korvane::Value Hidden() override { return korvane::Value(); }
    host::InteriorPtr Interior() override { return nullptr; }
    void Select() override {}
    void Activate() override {}
};

TEST_F(HistoryTest, AnyOtherFailureIsReportedAndGivesFalse) {
    Explore(u"S!A1");
    history_->AddRange(std::make_shared<BrokenRange>());
    EXPECT_FALSE(history_->bGoBack());
    EXPECT_EQ(reporter_.lines, std::vector<std::string>{"CStack.bGoBack: Out of memory (bGoBack)"});
    reporter_.lines.clear();
}

}  // namespace
}  // namespace korvane
