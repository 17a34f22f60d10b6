#include "formula/error_text.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

// The text of a value on a scripted host whose cells hold a few values.
class ErrorTextTest : public testing::Test {
protected:
    ErrorTextTest() : host_(test::HostWith("=1", R"("B1":2.5,"B2":{"error":2042},"B3":true)")) {}

    std::string TextOf(const Value& value) {
        const auto application = host_->Application();
        return ToUtf8(sErrorText(value, *application));
    }
    std::string TextOfCells(const char16_t* reference) {
        const auto application = host_->Application();
        return ToUtf8(sErrorText(application->Evaluate(reference), *application));
    }

    std::unique_ptr<scripted::ScriptedHost> host_;
};

TEST_F(ErrorTextTest, AnErrorValueBecomesItsName) {
    const std::pair<int, const char*> errors[] = {
        {2007, "#DIV/0!"}, {2042, "#N/A"},  {2029, "#NAME?"}, {2000, "#NULL!"},
        {2036, "#NUM!"},   {2023, "#REF!"}, {2015, "#VALUE!"}};
    for (const auto& [code, name] : errors) {
        EXPECT_EQ(TextOf(Value(static_cast<ErrorCode>(code))), name);
    }
}

TEST_F(ErrorTextTest, AnUnknownErrorCodeShowsAsError) {
    for (const int code : {0, 1, 1999, 2043, 2045, -1}) {
        EXPECT_EQ(TextOf(Value(static_cast<ErrorCode>(code))), "#ERROR!") << code;
    }
}

TEST_F(ErrorTextTest, OrdinaryValuesBecomeTheirTexts) {
    EXPECT_EQ(TextOf(Value(u" as it is ")), " as it is ");
    EXPECT_EQ(TextOf(Value(u"")), "");
    EXPECT_EQ(TextOf(Value(true)), "True");
    EXPECT_EQ(TextOf(Value(false)), "False");
    EXPECT_EQ(TextOf(Value(3)), "3");
    EXPECT_EQ(TextOf(Value(0.1 + 0.2)), "0.3");
    EXPECT_EQ(TextOf(Value(1e15)), "1E+15");
    EXPECT_EQ(TextOf(Value(Value::Date{46347})), "11/21/2026");
}

TEST_F(ErrorTextTest, WhatHasNoTextGivesTheEmptyOne) {
    EXPECT_EQ(TextOf(Value()), "");
    EXPECT_EQ(TextOf(Value(Value::Null{})), "");
    EXPECT_EQ(TextOf(Value(ObjectPtr())), "");
    Array array;
    array.rows = 1;
    array.columns = 2;
    array.cells = {Value(1), Value(2)};
    EXPECT_EQ(TextOf(Value(std::move(array))), "");
}

TEST_F(ErrorTextTest, ACellStandsForItsValueAndABlockForNone) {
    EXPECT_EQ(TextOfCells(u"=B1"), "2.5");
    EXPECT_EQ(TextOfCells(u"=B2"), "#N/A");
    EXPECT_EQ(TextOfCells(u"=B3"), "True");
    EXPECT_EQ(TextOfCells(u"=B9"), "");
    EXPECT_EQ(TextOfCells(u"=B1:B3"), "");
}

TEST_F(ErrorTextTest, TheValuesOfALargeBlockAreNotFetched) {
    host_->StartLog();
    EXPECT_EQ(TextOfCells(u"=A:XFD"), "");
    EXPECT_EQ(host_->CountOf("Range.Value"), 0);
}

TEST_F(ErrorTextTest, ExactlyTheEightNamesAreErrorTexts) {
    for (const auto* name :
         {u"#ERROR!", u"#VALUE!", u"#REF!", u"#NUM!", u"#NULL!", u"#NAME?", u"#N/A", u"#DIV/0!"}) {
        EXPECT_TRUE(bIsErrorText(name)) << ToUtf8(name);
    }
    for (const auto* other :
         {u"", u"#", u"#n/a", u"#N/A ", u" #N/A", u"#NA", u"#GETTING_DATA", u"#REF"}) {
        EXPECT_FALSE(bIsErrorText(other)) << ToUtf8(other);
    }
}

}  // namespace
}  // namespace korvane
