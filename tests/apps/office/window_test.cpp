// Explorer windows over an office: the user's end of them is in this process.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "../window/user_view.h"
#include "apps/command/office_document.h"
#include "base/text.h"
#include "files_under_test.h"

namespace korvane::command {
namespace {

using testing::SmallWorkbook;
using testing::TestFolder;
using window::test::UserView;

constexpr const char16_t* kTree = u"trvTree";

OfficeDocument::WindowRequest RequestFor(const std::u16string& cell, const TestFolder& folder) {
    OfficeDocument::WindowRequest request;
    request.cell = cell;
    request.config = folder.path() / "config";
    request.state = folder.path() / "state";
    return request;
}

// The number of the row with this location; 0 for none.
std::int32_t RowAt(const std::vector<platform::TreeNode>& nodes, const std::u16string& location) {
    for (std::size_t k = 0; k < nodes.size(); ++k) {
        if (nodes[k].subItems.front() == location) return static_cast<std::int32_t>(k) + 1;
    }
    return 0;
}

TEST(OfficeWindow, ExploresAWorkbook) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    UserView view([](UserView& user) {
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [small.fods]Data!$C$1"));
        const auto window = user.newest();
        const auto& nodes = user.Control(window, kTree).nodes();
        ASSERT_GE(nodes.size(), 3U);
        EXPECT_EQ(nodes[0].subItems.back(), u"60");
        user.Do(window, kTree, platform::NodeSelected{0, 0, RowAt(nodes, u"Data!A1:A3")});
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [small.fods]Data!$A$1:$A$3"))
            << ToUtf8(user.status);
        user.Do(window, kTree, platform::KeyDown{0, 0, 'Q', platform::kCtrl});
        ASSERT_TRUE(user.WaitForWindows(2));
        user.Do(platform::CloseAsked{user.newest(), true});
        ASSERT_TRUE(user.WaitForWindows(1));
        user.Do(platform::CloseAsked{window, true});
        EXPECT_TRUE(user.WaitForWindows(0));
    });
    {
        OfficeDocument document(path, {}, {}, view.coreEnd());
        view.CloseCoreEnd();
        document.ShowWindow(RequestFor(u"Data!C1", folder));
        EXPECT_TRUE(view.boxes.empty());
        // The office is as good as before, but for its view.
        EXPECT_TRUE(document.Explore(u"Data!C1", true, false).ok);
        EXPECT_THROW(document.ShowWindow(RequestFor(u"Data!C1", folder)), CommandError);
    }
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "config/Korvane/Korvane.ini"));
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeWindow, TellsWhyThereIsNone) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    UserView view([](UserView& user) {
        user.WaitUntil([&] { return !user.status.empty(); });
        user.Leave();
    });
    OfficeDocument document(path, {}, {}, view.coreEnd());
    view.CloseCoreEnd();
    for (const auto& [cell, code] :
         {std::pair(u"Data!Nowhere", kNotFound), {u"Data!C1", kHostLost}}) {
        try {
            document.ShowWindow(RequestFor(cell, folder));
            ADD_FAILURE();
        } catch (const CommandError& error) {
            EXPECT_EQ(error.code(), code) << error.what();
        }
    }
}

}  // namespace
}  // namespace korvane::command
