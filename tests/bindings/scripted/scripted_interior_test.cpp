// The scripted host's fills.
#include <gtest/gtest.h>

#include "base/error.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ScriptedInteriorTest : public testing::Test {
protected:
    ScriptedInteriorTest() : host_(test::HostWith("=B1")) {}
    host::InteriorPtr FillOf(const char16_t* reference) {
        return host_->RangeAt(*FindPlace(host_->model(), reference))->Interior();
    }
    std::unique_ptr<ScriptedHost> host_;
};

TEST_F(ScriptedInteriorTest, CellsHaveNoFillAtFirst) {
    EXPECT_EQ(*FillOf(u"A1:C3")->ColorIndex().Number(), -4142);
    EXPECT_EQ(*FillOf(u"A1:C3")->Color().Number(), 0xFFFFFF);
}

TEST_F(ScriptedInteriorTest, AColourAndItsPlaceInThePaletteGoTogether) {
    FillOf(u"A1")->SetColorIndex(Value(3));
    EXPECT_EQ(*FillOf(u"A1")->ColorIndex().Number(), 3);
    EXPECT_EQ(*FillOf(u"A1")->Color().Number(), 255);
    FillOf(u"A1")->SetColor(254);
    EXPECT_EQ(*FillOf(u"A1")->Color().Number(), 254) << "not that of the palette";
    EXPECT_EQ(*FillOf(u"A1")->ColorIndex().Number(), 3);
    FillOf(u"A1")->SetColorIndex(Value(-4142));
    EXPECT_EQ(*FillOf(u"A1")->ColorIndex().Number(), -4142);
    EXPECT_EQ(*FillOf(u"A1")->Color().Number(), 0xFFFFFF);
}

TEST_F(ScriptedInteriorTest, CellsThatDifferHaveNoSingleFill) {
    FillOf(u"A1:B2")->SetColorIndex(Value(3));
    EXPECT_EQ(*FillOf(u"B2")->ColorIndex().Number(), 3);
    EXPECT_TRUE(FillOf(u"A1:C3")->ColorIndex().IsNull());
    EXPECT_TRUE(FillOf(u"A1:C3")->Color().IsNull());
    FillOf(u"A1:C3")->SetColor(65535);
    EXPECT_EQ(*FillOf(u"A1:C3")->Color().Number(), 65535) << "a later one lies on top";
}

TEST_F(ScriptedInteriorTest, AProtectedSheetRefuses) {
    host_->model().activeSheet->isProtected = true;
    EXPECT_THROW(FillOf(u"A1")->SetColorIndex(Value(3)), Error);
    EXPECT_THROW(FillOf(u"A1")->SetColor(1), Error);
    EXPECT_EQ(*FillOf(u"A1")->ColorIndex().Number(), -4142);
}

TEST_F(ScriptedInteriorTest, AFillMustBeANumber) {
    EXPECT_THROW(FillOf(u"A1")->SetColorIndex(Value(u"red")), Error);
}

}  // namespace
}  // namespace korvane::scripted
