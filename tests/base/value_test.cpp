#include "base/value.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/text.h"

namespace korvane {
namespace {

TEST(Value, IsEmptyUntilItHoldsSomething) {
    const Value value;
    EXPECT_TRUE(value.IsEmpty());
    EXPECT_FALSE(value.IsNull());
    EXPECT_EQ(value.Number(), nullptr);
    EXPECT_EQ(value.Text(), nullptr);
    EXPECT_EQ(value.AsObject(), nullptr);
}

TEST(Value, AnswersOnlyForTheKindThatItHolds) {
    const Value flag(false);
    ASSERT_NE(flag.Boolean(), nullptr);
    EXPECT_FALSE(*flag.Boolean());
    EXPECT_EQ(flag.Number(), nullptr) << "a Boolean is no number";

    const Value whole(3);
    ASSERT_NE(whole.Number(), nullptr);
    EXPECT_EQ(*whole.Number(), 3.0);
    EXPECT_EQ(whole.Boolean(), nullptr);

    const Value text(u"abc");
    ASSERT_NE(text.Text(), nullptr) << "a text must not become a Boolean on its way in";
    EXPECT_EQ(*text.Text(), u"abc");

    const Value date(Value::Date{1.5});
    ASSERT_NE(date.AsDate(), nullptr);
    EXPECT_EQ(date.AsDate()->serial, 1.5);
    EXPECT_EQ(date.Number(), nullptr);

    const Value error(ErrorCode::kNA);
    ASSERT_NE(error.AsError(), nullptr);
    EXPECT_EQ(static_cast<int>(*error.AsError()), 2042);

    EXPECT_TRUE(Value(Value::Null{}).IsNull());
    EXPECT_FALSE(Value(Value::Null{}).IsEmpty());
}

TEST(Value, ArraysCountFromOneRowByRow) {
    Array array;
    array.rows = 2;
    array.columns = 3;
    for (int k = 1; k <= 6; ++k) array.cells.emplace_back(k);
    const Value value(std::move(array));
    ASSERT_NE(value.AsArray(), nullptr);
    EXPECT_EQ(*value.AsArray()->At(1, 1).Number(), 1);
    EXPECT_EQ(*value.AsArray()->At(1, 3).Number(), 3);
    EXPECT_EQ(*value.AsArray()->At(2, 1).Number(), 4);
    EXPECT_THROW(value.AsArray()->At(3, 1), std::out_of_range);
}

TEST(Value, HoldsAnObjectForAsLongAsItLives) {
    class Thing : public Object {
    public:
        std::u16string TypeName() const override { return u"Thing"; }
    };
    auto thing = std::make_shared<Thing>();
    {
        const Value value{ObjectPtr(thing)};
        EXPECT_EQ(value.AsObject(), thing);
        EXPECT_EQ(thing.use_count(), 2);
    }
    EXPECT_EQ(thing.use_count(), 1);
}

TEST(Value, ErrorsHaveTheHostsNames) {
    EXPECT_EQ(ErrorName(ErrorCode::kDiv0), u"#DIV/0!");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2042)), u"#N/A");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2029)), u"#NAME?");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2000)), u"#NULL!");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2036)), u"#NUM!");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2023)), u"#REF!");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2015)), u"#VALUE!");
    EXPECT_EQ(ErrorName(static_cast<ErrorCode>(2001)), u"#ERROR!");
    for (const int code : {2000, 2007, 2015, 2023, 2029, 2036, 2042, 1}) {
        EXPECT_TRUE(IsErrorName(ErrorName(static_cast<ErrorCode>(code)))) << code;
    }
    EXPECT_FALSE(IsErrorName(u"#n/a"));
    EXPECT_FALSE(IsErrorName(u""));
}

}  // namespace
}  // namespace korvane
