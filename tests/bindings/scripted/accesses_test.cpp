#include "bindings/scripted/accesses.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

TEST(Accesses, CountsEveryAccessAndNotesThoseFromTheStartOn) {
    Accesses accesses;
    accesses.Enter("Range.Formula");
    EXPECT_TRUE(accesses.log().empty());
    accesses.StartLog();
    accesses.Enter("Shell.Open", u"http://a");
    accesses.Enter("Shell.Open");
    accesses.Enter("Shell.OpenAll");
    EXPECT_EQ(accesses.log(),
              (std::vector<std::string>{"Shell.Open http://a", "Shell.Open", "Shell.OpenAll"}));
    EXPECT_EQ(accesses.calls(), 4);
    EXPECT_EQ(accesses.CountOf("Shell.Open"), 2);
    EXPECT_EQ(accesses.CountOf("Shell.Open http://a"), 1);
    EXPECT_EQ(accesses.CountOf("Shell"), 0) << "whole members only";
}

TEST(Accesses, FailsTheNthCallWhateverItIs) {
    Accesses accesses;
    accesses.Enter("A.One");
    accesses.FailNthCall(2);
    EXPECT_NO_THROW(accesses.Enter("A.One"));
    EXPECT_EQ(accesses.lastFailure(), "");
    try {
        accesses.Enter("B.Two", u"detail");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), kErrorApplication);
        EXPECT_EQ(error.description(), u"B.Two failed");
    }
    EXPECT_EQ(accesses.lastFailure(), "B.Two");
    EXPECT_NO_THROW(accesses.Enter("B.Two"));
}

TEST(Accesses, ACallThatFailsIsNotedAndCounted) {
    Accesses accesses;
    accesses.StartLog();
    accesses.FailMember("A.One");
    EXPECT_THROW(accesses.Enter("A.One"), Error);
    EXPECT_EQ(accesses.calls(), 1);
    EXPECT_EQ(accesses.CountOf("A.One"), 1);
}

TEST(Accesses, FailsAMemberAlwaysOrOnce) {
    Accesses accesses;
    accesses.FailMember("A.One");
    accesses.FailMember("A.Two", 2);
    for (int k = 1; k <= 3; ++k) {
        EXPECT_THROW(accesses.Enter("A.One"), Error) << k;
        if (k == 2) {
            EXPECT_THROW(accesses.Enter("A.Two"), Error);
        } else {
            EXPECT_NO_THROW(accesses.Enter("A.Two")) << k;
        }
        EXPECT_NO_THROW(accesses.Enter("A.Three")) << k;
    }
}

TEST(Accesses, ForgetsWhatWasToFail) {
    Accesses accesses;
    accesses.FailMember("A.One");
    EXPECT_THROW(accesses.Enter("A.One"), Error);
    accesses.FailNthCall(1);
    accesses.FailNothing();
    EXPECT_NO_THROW(accesses.Enter("A.One"));
    EXPECT_EQ(accesses.lastFailure(), "");
}

TEST(Accesses, WhatNeverFailsIsNotedButNotCounted) {
    Accesses accesses;
    accesses.StartLog();
    accesses.FailNthCall(1);
    accesses.FailMember("Clock.Now");
    EXPECT_NO_THROW(accesses.Note("Clock.Now"));
    EXPECT_EQ(accesses.calls(), 0);
    EXPECT_EQ(accesses.CountOf("Clock.Now"), 1);
    EXPECT_THROW(accesses.Enter("A.One"), Error) << "the first that could fail";
}

}  // namespace
}  // namespace korvane::scripted
