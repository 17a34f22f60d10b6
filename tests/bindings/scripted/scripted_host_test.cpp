#include "bindings/scripted/scripted_host.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ScriptedHostTest : public testing::Test {
protected:
    ScriptedHostTest()
        : host_(test::HostOf(R"({"workbooks":[{"name":"B.xls","names":{"Rate":"=S!$B$2"},
              "sheets":[{"name":"S","cells":{"A1":1}}]},{"name":"P.xls","sheets":[{"name":"T"}]}],
              "evaluate":{"=Broken":{"fail":true}}})")) {}

    std::unique_ptr<ScriptedHost> host_;
};

TEST_F(ScriptedHostTest, CountsTheHandlesThatAreHeld) {
    EXPECT_EQ(host_->LiveHandles(), 0);
    {
        const auto application = host_->Application();
        const auto cell = application->ActiveCell();
        const auto copy = cell;
        EXPECT_EQ(host_->LiveHandles(), 2) << "a copy is no new handle";
        const auto sheet = cell->Worksheet();
        const auto book = sheet->Parent();
        EXPECT_EQ(host_->LiveHandles(), 4);
        const Value value = application->Evaluate(u"=A1");
        EXPECT_EQ(host_->LiveHandles(), 5) << "a value holds its object";
    }
    EXPECT_EQ(host_->LiveHandles(), 0);
}

TEST_F(ScriptedHostTest, HasOneApplicationForAllWhoHoldIt) {
    auto application = host_->Application();
    EXPECT_EQ(host_->Application(), application);
    EXPECT_EQ(host_->LiveHandles(), 1);
    application.reset();
    EXPECT_EQ(host_->LiveHandles(), 0);
    application = host_->Application();
    EXPECT_EQ(host_->LiveHandles(), 1) << "and another one later";
    EXPECT_EQ(application->Version(), u"11.0");
}

TEST_F(ScriptedHostTest, HandsTheAddinItsOwnWorkbook) {
    host_->thisWorkbookPath = u"C:\\Add-ins";
    const auto book = host_->AddinWorkbook();
    EXPECT_EQ(host_->calls(), 0) << "being handed it is no access";
    EXPECT_EQ(host_->LiveHandles(), 1);
    EXPECT_EQ(book->Name(), u"KorvaneExplorer.xla");
    EXPECT_EQ(book->Path(), u"C:\\Add-ins");
    EXPECT_EQ(book->Names()->Item(u"Rate"), nullptr);
    EXPECT_EQ(host_->calls(), 4);
    EXPECT_THROW(book->Activate(), Error) << "an add-in has no window to bring to the front";
    EXPECT_EQ(host_->model().activeBook->name, u"B.xls");
    host_->FailMember("Workbook.Path");
    EXPECT_THROW(book->Path(), Error);
}

TEST_F(ScriptedHostTest, SharesTheAccessesThatItIsGiven) {
    const auto accesses = std::make_shared<Accesses>();
    ScriptedHost one(Model{}, accesses);
    ScriptedHost other(Model{}, accesses);
    one.StartLog();
    one.Application()->Version();
    other.Application()->Caption();
    EXPECT_EQ(other.log(),
              (std::vector<std::string>{"Application.Version", "Application.Caption"}));
    EXPECT_EQ(one.calls(), 2);
    EXPECT_EQ(&one.accesses(), accesses.get());
    other.FailMember("Application.Version");
    EXPECT_THROW(one.Application()->Version(), Error);
    EXPECT_EQ(host_->calls(), 0) << "a host without has its own";
}

TEST_F(ScriptedHostTest, NotesEveryAccessFromTheStartOn) {
    const auto application = host_->Application();
    application->Calculation();
    EXPECT_TRUE(host_->log().empty());
    host_->StartLog();
    application->Evaluate(u"=A1");
    application->ActiveCell()->HasArray();
    EXPECT_EQ(host_->log(), (std::vector<std::string>{"Application.Evaluate =A1",
                                                      "Application.ActiveCell", "Range.HasArray"}));
    EXPECT_EQ(host_->CountOf("Application.Evaluate"), 1);
    EXPECT_EQ(host_->CountOf("Application.Evaluate =A1"), 1);
    EXPECT_EQ(host_->CountOf("Application"), 0) << "whole members only";
    EXPECT_EQ(host_->calls(), 4);
}

TEST_F(ScriptedHostTest, FailsTheNthCallOnce) {
    const auto application = host_->Application();
    application->Calculation();
    host_->FailNthCall(2);
    EXPECT_NO_THROW(application->Calculation());
    try {
        application->Version();
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), kErrorApplication);
        EXPECT_EQ(error.description(), u"Application.Version failed");
    }
    EXPECT_EQ(host_->lastFailure(), "Application.Version");
    EXPECT_NO_THROW(application->Version());
}

TEST_F(ScriptedHostTest, FailsAMemberAlwaysOrItsNthCall) {
    const auto application = host_->Application();
    host_->FailMember("Application.Calculation");
    EXPECT_THROW(application->Calculation(), Error);
    EXPECT_THROW(application->Calculation(), Error);
    EXPECT_NO_THROW(application->ScreenUpdating());
    host_->FailMember("Application.Calculation", 2);
    EXPECT_NO_THROW(application->Calculation());
    EXPECT_THROW(application->Calculation(), Error);
    EXPECT_NO_THROW(application->Calculation());
    host_->FailMember("Application.Calculation");
    host_->FailNothing();
    EXPECT_NO_THROW(application->Calculation());
    EXPECT_EQ(host_->lastFailure(), "");
}

TEST_F(ScriptedHostTest, FindsTheCellsThatAUserNames) {
    EXPECT_TRUE(host_->FindCells(u"B2")->area == (Area{2, 2, 2, 2}));
    EXPECT_TRUE(host_->FindCells(u"Rate")->area == (Area{2, 2, 2, 2}));
    EXPECT_EQ(host_->FindCells(u"[P.xls]T!A1")->book->name, u"P.xls");
    for (const auto* text : {u"", u"Nope", u"5", u"Broken", u"Nope!A1"}) {
        EXPECT_FALSE(host_->FindCells(text)) << ToUtf8(text);
    }
    EXPECT_EQ(host_->calls(), 0) << "asking is no access";
}

TEST_F(ScriptedHostTest, AClosedWorkbookAnswersNothing) {
    const auto application = host_->Application();
    const auto cell = application->ActiveCell();
    const auto sheet = cell->Worksheet();
    const auto book = sheet->Parent();
    host_->CloseBook(u"b.xls");
    const auto gone = [](const auto& call) {
        try {
            call();
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    };
    EXPECT_EQ(gone([&] { cell->Value(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { cell->Address(host::kRelative); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { sheet->Name(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { book->Name(); }), kErrorObjectGone);
    EXPECT_EQ(application->ActiveCell()->Worksheet()->Name(), u"T") << "another one is active now";
    host_->CloseBook(u"P.xls");
    EXPECT_EQ(gone([&] { application->ActiveCell(); }), kErrorObjectMissing);
    EXPECT_EQ(application->Selection(), nullptr);
    host_->CloseBook(u"never opened");
}

}  // namespace
}  // namespace korvane::scripted
