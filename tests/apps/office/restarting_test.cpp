// An office that is lost is not the user's problem.
#include <gtest/gtest.h>
#include <signal.h>

#include "apps/command/office_document.h"
#include "apps/command/restarting_document.h"
#include "base/text.h"
#include "files_under_test.h"

namespace korvane::command {
namespace {

using testing::SmallWorkbook;
using testing::TestFolder;

TEST(RestartingOffice, ALostOfficeIsReplacedAndTheCellTriedAgain) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    {
        pid_t office = 0;
        RestartingDocument document([&] {
            auto opened = std::make_unique<OfficeDocument>(path);
            office = opened->process().id();
            return opened;
        });
        EXPECT_TRUE(document.Explore(u"Data!C1", true, false).ok);
        kill(office, SIGKILL);
        const auto report = document.Explore(u"Data!C1", true, false);
        ASSERT_TRUE(report.ok);
        EXPECT_EQ(ToUtf8(report.tree->value), "60");
        EXPECT_TRUE(document.Explore(u"Data!C1", true, true).ok);
        EXPECT_EQ(document.hostsLost(), 1);
    }
    EXPECT_TRUE(folder.IsClean());
}

}  // namespace
}  // namespace korvane::command
