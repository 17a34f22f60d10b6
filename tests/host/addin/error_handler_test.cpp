#include "host/addin/error_handler.h"

#include <gtest/gtest.h>

#include "host/addin/addin_test_support.h"

namespace korvane {
namespace {

using test::kFront;
using test::Texts;

class ErrorHandlerTest : public test::WithErrorHandler {};

TEST_F(ErrorHandlerTest, AFailedStartIsOneLineAndABlankOne) {
    handler_.ErrorHandler(u"CMain", u"Auto_Open", u"", true, Error(9997, u"No bars (Auto_Open)"));
    EXPECT_EQ(Log(), (Texts{"11/16/26 01:10:30  E11.0A2.1.5  [KorvaneExplorer.xla]CMain.Auto_Open, "
                            "Error 9997: No bars (Auto_Open)",
                            ""}));
}

TEST_F(ErrorHandlerTest, AtAnEntryPointTheUserIsTold) {
    host_->model().screenUpdating = false;
    handler_.Report(u"MEntryPoints", u"EP_Explore", Error(1004, u"Lost (EP_Explore)"), true);
    ASSERT_EQ(platform_.messageBoxes.shown.size(), 1U);
    const platform::Message& box = platform_.messageBoxes.shown.front();
    EXPECT_EQ(box.text, u"Lost (EP_Explore)");
    EXPECT_EQ(box.title, u"Korvane Explorer");
    EXPECT_EQ(box.icon, platform::MessageIcon::kCritical);
    EXPECT_EQ(box.buttons, platform::MessageButtons::kOK);
    EXPECT_TRUE(host_->model().screenUpdating);
    EXPECT_EQ(handler_.number(), 0);
    EXPECT_EQ(handler_.message(), u"");
}

TEST_F(ErrorHandlerTest, BelowAnEntryPointItIsLoggedAndKeptPending) {
    host_->model().screenUpdating = false;
    handler_.Report(u"CElement", u"bInitRoot", Error(1004, u"Lost (bInitRoot)"), false);
    EXPECT_EQ(Log(), Texts{kFront + "CElement.bInitRoot, Error 1004: Lost (bInitRoot)"});
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_FALSE(host_->model().screenUpdating);
    EXPECT_EQ(handler_.number(), 1004);
    EXPECT_EQ(handler_.message(), u"Lost (bInitRoot)");
}

TEST_F(ErrorHandlerTest, AChainIsALineFromEachABlankOneAndOneBoxWithTheInnermostError) {
    handler_.Report(u"CElement", u"bInitRoot", Error(1004, u"Lost (bInitRoot)"), false);
    handler_.Report(u"FExplorer", u"bExplore", Error(9997, u"Failed (bExplore)"), false);
    handler_.Report(u"MEntryPoints", u"EP_Explore", Error(9997, u"Failed (EP_Explore)"), true);
    EXPECT_EQ(Log(), (Texts{kFront + "CElement.bInitRoot, Error 1004: Lost (bInitRoot)",
                            kFront + "FExplorer.bExplore, Error 1004: Lost (bInitRoot)",
                            kFront + "MEntryPoints.EP_Explore, Error 1004: Lost (bInitRoot)", ""}));
    EXPECT_EQ(Boxes(), Texts{"Lost (bInitRoot)"});
}

TEST_F(ErrorHandlerTest, TheNextChainIsItsOwn) {
    handler_.Report(u"M", u"EP_A", Error(1, u"a"), true);
    handler_.Report(u"M", u"EP_B", Error(2, u"b"), true);
    EXPECT_EQ(Log(), (Texts{kFront + "M.EP_A, Error 1: a", "", kFront + "M.EP_B, Error 2: b", ""}));
    EXPECT_EQ(Boxes(), (Texts{"a", "b"}));
}

TEST_F(ErrorHandlerTest, AUserBreakIsNeitherLoggedNorShown) {
    host_->model().screenUpdating = false;
    handler_.Report(u"M", u"bP", Error(18, u"Break (bP)"), false);
    EXPECT_EQ(handler_.number(), 18);
    handler_.Report(u"M", u"bQ", Error(9997, u"Failed (bQ)"), false);
    EXPECT_EQ(handler_.number(), 18);
    handler_.Report(u"M", u"EP_P", Error(9997, u"Failed (EP_P)"), true);
    EXPECT_EQ(handler_.number(), 0);
    EXPECT_TRUE(platform_.files.lines.empty());
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_FALSE(host_->model().screenUpdating);
}

TEST_F(ErrorHandlerTest, AUserBreakTakesTheChainOver) {
    handler_.Report(u"M", u"bP", Error(1004, u"Lost (bP)"), false);
    handler_.Report(u"M", u"bQ", Error(18, u"Break (bQ)"), false);
    EXPECT_EQ(handler_.message(), u"Break (bQ)");
    handler_.Report(u"M", u"EP_P", Error(9997, u"Failed (EP_P)"), true);
    EXPECT_EQ(Log(), Texts{kFront + "M.bP, Error 1004: Lost (bP)"})
        << "the blank line follows only an entry of the entry point";
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_EQ(handler_.number(), 0);
}

TEST_F(ErrorHandlerTest, WhatWasReportedAlreadyEndsSilentlyAtTheEntryPoint) {
    handler_.Report(u"M", u"bP", Error(9998, u"Told"), false);
    EXPECT_EQ(handler_.number(), 9998);
    handler_.Report(u"M", u"EP_P", Error(9997, u"Failed"), true);
    EXPECT_EQ(handler_.number(), 0);
    EXPECT_TRUE(platform_.files.lines.empty());
    EXPECT_EQ(Boxes(), Texts{});
    handler_.Report(u"M", u"EP_Q", Error(1004, u"Lost"), true);
    EXPECT_EQ(Boxes(), Texts{"Lost"}) << "the next failure is told again";
}

TEST_F(ErrorHandlerTest, ANamedWorkbookStandsInTheLocation) {
    host_->StartLog();
    handler_.ErrorHandler(u"M", u"P", u"Budget.xls", false, Error(1, u"a"));
    EXPECT_EQ(Log(), Texts{"11/16/26 01:10:30  E11.0A2.1.5  [Budget.xls]M.P, Error 1: a"});
    EXPECT_EQ(host_->CountOf("Application.ThisWorkbook"), 0);
}

TEST_F(ErrorHandlerTest, NumbersAndDatesAreWrittenAlikeEverywhere) {
    platform_.clock.now = {2005, 1, 2, 23, 4, 5};
    handler_.Report(u"M", u"P", Error(kErrorObjectGone, u"gone"), false);
    EXPECT_EQ(Log(), Texts{"01/02/05 23:04:05  E11.0A2.1.5  [KorvaneExplorer.xla]M.P, "
                           "Error -2147417848: gone"});
}

TEST_F(ErrorHandlerTest, ADescriptionOfSeveralLinesIsOneLineOfTheLog) {
    handler_.Report(u"M", u"P", Error(1, u"a\r\nb\nc"), true);
    EXPECT_EQ(Log(), (Texts{kFront + "M.P, Error 1: a  b c", ""}));
    EXPECT_EQ(Boxes(), Texts{"a\r\nb\nc"});
}

TEST_F(ErrorHandlerTest, BeforeTheAddinFolderIsKnownTheLogIsInTheStateFolder) {
    folder_.clear();
    handler_.Report(u"CMain", u"Auto_Open", Error(1, u"a"), true);
    EXPECT_EQ(Log(u"/state/korvane\\Error.log"),
              (Texts{kFront + "CMain.Auto_Open, Error 1: a", ""}));
    folder_ = u"D:\\Known\\";
    handler_.Report(u"CMain", u"Auto_Open", Error(2, u"b"), true);
    EXPECT_EQ(Log(u"D:\\Known\\Error.log").size(), 2U);
}

TEST_F(ErrorHandlerTest, WithoutAHostItsTextsAreEmpty) {
    application_.reset();
    handler_.Report(u"CMain", u"Auto_Open", Error(1, u"a"), true);
    EXPECT_EQ(Log(), (Texts{"11/16/26 01:10:30  EA2.1.5  []CMain.Auto_Open, Error 1: a", ""}));
    EXPECT_EQ(Boxes(), Texts{"a"});
}

TEST_F(ErrorHandlerTest, WhatTheHostDoesNotSayIsEmpty) {
    host_->FailMember("Application.Version");
    handler_.Report(u"M", u"P", Error(1, u"a"), true);
    host_->FailNothing();
    for (const char* member : {"Application.ThisWorkbook", "Workbook.Name"}) {
        host_->FailMember(member);
        handler_.Report(u"M", u"P", Error(1, u"a"), true);
        host_->FailNothing();
    }
    const std::string nameless = "11/16/26 01:10:30  E11.0A2.1.5  []M.P, Error 1: a";
    EXPECT_EQ(Log(), (Texts{"11/16/26 01:10:30  EA2.1.5  [KorvaneExplorer.xla]M.P, Error 1: a", "",
                            nameless, "", nameless, ""}));
    EXPECT_EQ(Boxes().size(), 3U);
}

TEST_F(ErrorHandlerTest, ALogThatCannotBeWrittenIsSkippedAndTheBoxShown) {
    platform_.files.readOnly = {folder_};
    handler_.Report(u"M", u"P", Error(1, u"a"), true);
    EXPECT_TRUE(platform_.files.lines.empty());
    EXPECT_EQ(Boxes(), Texts{"a"});
    EXPECT_EQ(handler_.number(), 0);
}

TEST_F(ErrorHandlerTest, ABlankLineFollowsOnlyAnEntryThatWasWritten) {
    host_->FailMember("Files.AppendLine", 1);
    handler_.Report(u"M", u"P", Error(1, u"a"), true);
    EXPECT_TRUE(platform_.files.lines.empty());
}

// Each access in turn fails: nothing leaves the handler, the chain is over, and
// one box at most was shown.
TEST_F(ErrorHandlerTest, NoFailingAccessKeepsTheChainFromEnding) {
    for (const bool folderKnown : {true, false}) {
        if (!folderKnown) folder_.clear();
        for (std::int64_t nth = 1; nth <= 9; ++nth) {
            platform_.messageBoxes.shown.clear();
            platform_.files.lines.clear();
            host_->model().screenUpdating = false;
            host_->FailNthCall(nth);
            handler_.Report(u"M", u"P", Error(1, u"a"), true);
            const std::string failed = host_->lastFailure();
            host_->FailNothing();
            EXPECT_EQ(handler_.number(), 0) << nth;
            EXPECT_EQ(Boxes().size(), failed == "MessageBoxes.Show" ? 0U : 1U) << failed;
            EXPECT_EQ(host_->model().screenUpdating, failed != "Application.SetScreenUpdating")
                << failed;
        }
    }
}

}  // namespace
}  // namespace korvane
