#include "navigation/go_to.h"

#include <gtest/gtest.h>

#include "navigation/navigation_test_support.h"

namespace korvane {
namespace {

class GoToTest : public test::TwoWorkbooks {};

TEST_F(GoToTest, BringsWorkbookAndSheetToTheFrontAndSelects) {
    EXPECT_TRUE(bGoTo(*Range(u"[C.xls]T!B2:C3")));
    EXPECT_EQ(Here(), "[C.xls]T!$B$2");
    EXPECT_EQ(host_->selection, (Area{2, 2, 3, 3}));
    EXPECT_TRUE(bGoTo(*Range(u"'[B.xls]My Sheet'!D4")));
    EXPECT_EQ(Here(), "'[B.xls]My Sheet'!$D$4");
}

TEST_F(GoToTest, AsksInThisOrder) {
    const auto rng = Range(u"[C.xls]T!B2");
    host_->StartLog();
    bGoTo(*rng);
    EXPECT_EQ(host_->log(),
              (std::vector<std::string>{"Range.Worksheet", "Worksheet.Parent", "Workbook.Activate",
                                        "Range.Worksheet", "Worksheet.Activate", "Range.Select"}));
}

TEST_F(GoToTest, TriesEachOfTheThreeWhateverBecameOfTheOthers) {
    const auto rng = Range(u"[C.xls]T!B2");
    // The access that fails, and where the user then stands.
    const char* const cases[][2] = {
        {"Range.Worksheet", "[C.xls]T!$B$2"},     // the sheet is found at the second try
        {"Worksheet.Parent", "[C.xls]T!$B$2"},    // the sheet brings its workbook along
        {"Workbook.Activate", "[C.xls]T!$B$2"},   // likewise
        {"Worksheet.Activate", "[C.xls]T!$B$2"},  // it is the workbook's first
        {"Range.Select", "[C.xls]T!$A$1"}};
    for (const auto& [member, here] : cases) {
        bGoTo(*Range(u"[B.xls]S!A1"));
        host_->FailMember(member, 1);
        EXPECT_FALSE(bGoTo(*rng)) << member;
        host_->FailNothing();
        EXPECT_EQ(Here(), here) << member;
    }
}

TEST_F(GoToTest, CellsOfAClosedWorkbookAreNotReached) {
    const auto rng = Range(u"[C.xls]T!B2");
    host_->CloseBook(u"C.xls");
    EXPECT_FALSE(bGoTo(*rng));
    EXPECT_EQ(Here(), "[B.xls]S!$A$1");
}

}  // namespace
}  // namespace korvane
