#include "host/addin/entry_point.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "host/addin/addin_test_support.h"

namespace korvane {
namespace {

using test::kFront;
using test::Texts;

class EntryPointTest : public test::WithErrorHandler {
protected:
    template <class Body>
    bool At(const char16_t* procedure, Body body) {
        return AtEntryPoint(handler_, u"MEntryPoints", procedure, body);
    }
};

TEST_F(EntryPointTest, RunsItsBodyAndReportsNothing) {
    int runs = 0;
    EXPECT_TRUE(At(u"EP_Explore", [&] { ++runs; }));
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(platform_.files.lines.empty());
    EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(EntryPointTest, AFailureIsReportedUnderItsNameAndDoesNotLeave) {
    EXPECT_FALSE(At(u"EP_Explore", [] { throw Error(1004, u"Lost"); }));
    EXPECT_EQ(Log(),
              (Texts{kFront + "MEntryPoints.EP_Explore, Error 1004: Lost (EP_Explore)", ""}));
    EXPECT_EQ(Boxes(), Texts{"Lost (EP_Explore)"});
}

TEST_F(EntryPointTest, EveryOtherExceptionIsAFailureToo) {
    EXPECT_FALSE(At(u"EP_A", [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(At(u"EP_B", [] { throw std::out_of_range("outside"); }));
    EXPECT_FALSE(At(u"EP_C", [] { throw 1; }));
    EXPECT_EQ(Boxes(), (Texts{"Out of memory (EP_A)", "outside (EP_B)",
                              "Application-defined or object-defined error (EP_C)"}));
}

TEST_F(EntryPointTest, AStepThatFailedShowsWhatWentWrong) {
    const auto bStep = [&] {
        return Guarded(handler_, u"CStack", u"bGoBack", [] { throw Error(1004, u"Lost"); });
    };
    At(u"EP_GoBack", [&] {
        if (!bStep()) RaiseStepFailed();
    });
    EXPECT_EQ(Log(), (Texts{kFront + "CStack.bGoBack, Error 1004: Lost (bGoBack)",
                            kFront + "MEntryPoints.EP_GoBack, Error 1004: Lost (bGoBack)", ""}));
    EXPECT_EQ(Boxes(), Texts{"Lost (bGoBack)"});
}

TEST_F(EntryPointTest, AStepThatSaysNoMoreIsErrorNumber9997) {
    At(u"EP_GoBack", [] { RaiseStepFailed(); });
    EXPECT_EQ(Boxes(), Texts{"Application-defined or object-defined error (EP_GoBack)"});
    EXPECT_EQ(Log().front(), kFront +
                                 "MEntryPoints.EP_GoBack, Error 9997: Application-defined or "
                                 "object-defined error (EP_GoBack)");
}

TEST_F(EntryPointTest, AFailureThatReachedNoEntryPointDoesNotMaskTheNextActions) {
    handler_.Report(u"M", u"bP", Error(1, u"old"), false);
    At(u"EP_Explore", [] { throw Error(2, u"new"); });
    EXPECT_EQ(Boxes(), Texts{"new (EP_Explore)"});
}

TEST_F(EntryPointTest, AnEntryPointWithinAnotherSharesItsPendingError) {
    At(u"Explore", [&] {
        handler_.Report(u"M", u"bP", Error(1, u"first"), false);
        At(u"EP_Explore", [] { throw Error(9997, u"second"); });
        EXPECT_EQ(handler_.number(), 0);
    });
    EXPECT_EQ(Boxes(), Texts{"first"});
}

TEST_F(EntryPointTest, AFailureWithinAnInnerEntryPointIsShownOnce) {
    EXPECT_TRUE(At(u"Explore",
                   [&] { EXPECT_FALSE(At(u"EP_Explore", [] { throw Error(1004, u"Lost"); })); }));
    EXPECT_EQ(Boxes(), Texts{"Lost (EP_Explore)"});
    EXPECT_EQ(Log().size(), 2U);
}

TEST_F(EntryPointTest, TheOutermostStartsCleanAgainAfterOneThatFailed) {
    At(u"EP_A", [] { throw Error(1, u"a"); });
    handler_.Report(u"M", u"bP", Error(2, u"stray"), false);
    At(u"EP_B", [&] { EXPECT_EQ(handler_.number(), 0); });
}

TEST_F(EntryPointTest, AUserBreakEndsTheActionSilently) {
    EXPECT_FALSE(At(u"EP_Explore", [] { throw Error(kUserBreak, u"Break"); }));
    EXPECT_TRUE(platform_.files.lines.empty());
    EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(EntryPointTest, WhatWasToldAlreadyIsNotToldAgain) {
    EXPECT_FALSE(At(u"EP_Options", [] { throw Error(kAlreadyReported, u"Told"); }));
    EXPECT_EQ(Boxes(), Texts{});
    EXPECT_EQ(handler_.number(), 0);
}

}  // namespace
}  // namespace korvane
