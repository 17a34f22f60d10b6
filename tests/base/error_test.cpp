#include "base/error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace korvane {
namespace {

TEST(Error, CarriesTheHostsNumberAndDescription) {
    const Error error(1004, u"Der Zellbereich \u00e4ndert sich");
    EXPECT_EQ(error.number(), 1004);
    EXPECT_EQ(error.description(), u"Der Zellbereich \u00e4ndert sich");
    EXPECT_STREQ(error.what(), "Der Zellbereich \u00e4ndert sich");
}

TEST(Error, IsAnExceptionThatCanBeCopiedAndOutlivesItsSource) {
    std::exception_ptr kept;
    try {
        throw Error(kErrorTypeMismatch, u"Type mismatch");
    } catch (const std::exception&) {
        kept = std::current_exception();
    }
    try {
        std::rethrow_exception(kept);
    } catch (const Error& error) {
        const Error copy = error;
        EXPECT_EQ(copy.number(), 13);
        EXPECT_STREQ(copy.what(), "Type mismatch");
    }
}

TEST(Error, NumbersAreThoseOfTheHostsLanguage) {
    EXPECT_EQ(kErrorInvalidCall, 5);
    EXPECT_EQ(kErrorOverflow, 6);
    EXPECT_EQ(kErrorTypeMismatch, 13);
    EXPECT_EQ(kErrorOutOfStack, 28);
    EXPECT_EQ(kErrorObjectMissing, 91);
    EXPECT_EQ(kErrorApplication, 1004);
}

TEST(Error, TakesAProceduresNameBehindItsDescription) {
    const Error inner = WithProcedure(Error(1004, u"refused"), u"bGoBack");
    EXPECT_EQ(inner.number(), 1004);
    EXPECT_EQ(inner.description(), u"refused (bGoBack)");
    EXPECT_EQ(WithProcedure(inner, u"EP_GoBack").description(), u"refused (bGoBack) (EP_GoBack)");
}

TEST(Error, StandsForEveryOtherException) {
    const auto current = [](auto exception) {
        try {
            throw exception;
        } catch (...) {
            return CurrentError();
        }
    };
    EXPECT_EQ(current(Error(18, u"Break")).number(), 18);
    EXPECT_EQ(current(std::bad_alloc()).number(), kErrorOutOfMemory);
    EXPECT_EQ(current(std::runtime_error("lost")).number(), kErrorApplication);
    EXPECT_EQ(current(std::runtime_error("lost")).description(), u"lost");
    EXPECT_EQ(current(1).number(), kErrorApplication);
    EXPECT_EQ(current(1).description(), kGeneralFailure);
}

TEST(Error, AReportThatFailsItselfIsLeftOut) {
    class Failing : public ErrorReporter {
    public:
        void Report(const char16_t*, const char16_t*, const Error&, bool) override {
            throw std::bad_alloc();
        }
    } reporter;
    try {
        throw Error(1004, u"refused");
    } catch (...) {
        ReportCurrent(reporter, u"M", u"P", true);
    }
}

}  // namespace
}  // namespace korvane
