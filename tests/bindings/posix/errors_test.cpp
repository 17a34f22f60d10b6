#include "bindings/posix/errors.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace korvane::posix {
namespace {

TEST(SystemError, HasTheNumberOfItsKind) {
    EXPECT_EQ(SystemError(ENOENT, "x").number(), kErrorFileNotFound);
    EXPECT_EQ(SystemError(ENOSPC, "x").number(), kErrorDiskFull);
    EXPECT_EQ(SystemError(EROFS, "x").number(), kErrorPermissionDenied);
    EXPECT_EQ(SystemError(ENOMEM, "x").number(), kErrorOutOfMemory);
    EXPECT_EQ(SystemError(EBUSY, "x").number(), kErrorFileAccess);
}

TEST(SystemError, SaysWhatFailed) {
    const Error error = SystemError(ENOENT, "/a/\xC3\xA9");
    EXPECT_EQ(error.description().find(u"/a/\u00e9: "), 0U);
    EXPECT_GT(error.description().size(), 7U);
}

}  // namespace
}  // namespace korvane::posix
