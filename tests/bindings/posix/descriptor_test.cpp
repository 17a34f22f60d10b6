#include "bindings/posix/descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace korvane::posix {
namespace {

bool IsOpen(int number) { return ::fcntl(number, F_GETFD) != -1; }

TEST(Descriptor, ClosesItselfOnce) {
    int number = -1;
    {
        Descriptor first(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        number = first.get();
        Descriptor second(std::move(first));
        EXPECT_EQ(second.get(), number);
        Descriptor third;
        EXPECT_FALSE(third);
        third = std::move(second);
        EXPECT_TRUE(third);
        EXPECT_TRUE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
}

}  // namespace
}  // namespace korvane::posix
