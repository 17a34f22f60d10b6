#include "base/error.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace korvane
