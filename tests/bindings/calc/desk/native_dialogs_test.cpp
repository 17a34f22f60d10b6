#include "bindings/calc/desk/native_dialogs.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

// Where there is GTK, the tests of a user who is busy in Calc show that it finds them.
TEST(NativeDialogs, AreNoneWhereGtkIsNotLoaded) { EXPECT_FALSE(calc::IsGtkDialogWaiting()); }

}  // namespace
}  // namespace korvane::test
