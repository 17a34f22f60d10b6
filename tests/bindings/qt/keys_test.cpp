#include "bindings/qt/keys.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

std::int32_t CodeOf(int key, Qt::KeyboardModifiers modifiers = {}, quint32 scanCode = 0) {
    return qt::KeyCode(QKeyEvent(QEvent::KeyPress, key, modifiers, scanCode, 0, 0));
}

TEST(QtKeys, HaveTheHostsCodes) {
    EXPECT_EQ(CodeOf(Qt::Key_A), 'A');
    EXPECT_EQ(CodeOf(Qt::Key_9), '9');
    EXPECT_EQ(CodeOf(Qt::Key_Return), 13);
    EXPECT_EQ(CodeOf(Qt::Key_Enter, Qt::KeypadModifier), 13);
    EXPECT_EQ(CodeOf(Qt::Key_Escape), 27);
    EXPECT_EQ(CodeOf(Qt::Key_F1), 112);
    EXPECT_EQ(CodeOf(Qt::Key_F12), 123);
    EXPECT_EQ(CodeOf(Qt::Key_Control), 17);
    EXPECT_EQ(CodeOf(Qt::Key_Down), 40);
    EXPECT_EQ(CodeOf(Qt::Key_5, Qt::KeypadModifier), 101);
    EXPECT_EQ(CodeOf(Qt::Key_unknown), 0);
}

TEST(QtKeys, LettersOfOtherScriptsHaveTheCodeOfTheirPlace) {
    constexpr int kCyrillicShortI = 0x0419;  // where a Latin keyboard has Q
    EXPECT_EQ(CodeOf(kCyrillicShortI, Qt::ControlModifier, 24), 'Q');
    EXPECT_EQ(CodeOf(kCyrillicShortI, Qt::ControlModifier, 58), 'M');
    EXPECT_EQ(CodeOf(kCyrillicShortI, Qt::ControlModifier, 200), 0);
}

TEST(QtKeys, ShiftsAddUp) {
    EXPECT_EQ(qt::ShiftState(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier), 7);
    EXPECT_EQ(qt::ShiftState(Qt::KeypadModifier), 0);
}

}  // namespace
}  // namespace korvane::test
