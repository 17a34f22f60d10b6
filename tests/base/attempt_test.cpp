#include "base/attempt.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"

namespace korvane {
namespace {

class Lines : public ErrorReporter {
public:
    void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                bool isEntryPoint) override {
        lines.push_back(ToUtf8(std::u16string(module) + u"." + procedure + u": ") +
                        std::to_string(error.number()) + " " + error.what() +
                        (isEntryPoint ? " (entry point)" : ""));
    }
    std::vector<std::string> lines;
};

TEST(Attempt, AStepSucceedsUnlessAnErrorEndsIt) {
    int steps = 0;
    EXPECT_TRUE(Succeeds([&] { ++steps; }));
    EXPECT_FALSE(Succeeds([&] {
        ++steps;
        throw Error(1004, u"refused");
    }));
    EXPECT_EQ(steps, 2);
}

TEST(Attempt, WhatIsNoErrorPassesOn) {
    EXPECT_THROW(Succeeds([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(Succeeds([] { throw 1; }), int);
}

TEST(Attempt, NothingPassesASuppressedStep) {
    EXPECT_TRUE(Suppressed([] {}));
    EXPECT_FALSE(Suppressed([] { throw Error(1004, u"refused"); }));
    EXPECT_FALSE(Suppressed([] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Suppressed([] { throw 1; }));
}

TEST(Attempt, AGuardedBodyReturnsWhatItSays) {
    Lines reporter;
    EXPECT_TRUE(Guarded(reporter, u"M", u"bP", [] {}));
    EXPECT_TRUE(Guarded(reporter, u"M", u"bP", [] { return true; }));
    EXPECT_FALSE(Guarded(reporter, u"M", u"bP", [] { return false; }));
    EXPECT_TRUE(reporter.lines.empty());
}

TEST(Attempt, AGuardedFailureIsReportedUnderItsProcedureAndGivesFalse) {
    Lines reporter;
    EXPECT_FALSE(Guarded(reporter, u"M", u"bP", [] { throw Error(1004, u"refused"); }));
    EXPECT_FALSE(Guarded(reporter, u"M", u"bP", [] { throw std::bad_alloc(); }));
    EXPECT_FALSE(Guarded(reporter, u"M", u"bP", [] { throw std::out_of_range("outside"); }));
    EXPECT_FALSE(Guarded(reporter, u"M", u"bP", []() -> bool { throw 1; }));
    EXPECT_EQ(reporter.lines, (std::vector<std::string>{
                                  "M.bP: 1004 refused (bP)", "M.bP: 7 Out of memory (bP)",
                                  "M.bP: 1004 outside (bP)",
                                  "M.bP: 1004 Application-defined or object-defined error (bP)"}));
}

}  // namespace
}  // namespace korvane
