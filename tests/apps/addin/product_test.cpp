#include "apps/addin/product.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane {
namespace {

TEST(Product, HasTheVersionOfTheBuild) {
    const auto version = Version();
    EXPECT_EQ(std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
                  std::to_string(version.revision),
              KORVANE_VERSION);
}

TEST(Product, HasTheConfiguredLinks) {
    const auto links = Links();
    // What is joined to an address begins with "/".
    for (const auto& address : {links.updateServer, links.webSite}) {
        EXPECT_TRUE(address.empty() || address.back() != u'/') << ToUtf8(address);
        EXPECT_TRUE(address.empty() || StartsWith(address, u"http")) << ToUtf8(address);
    }
    std::string server = KORVANE_UPDATE_SERVER;
    while (!server.empty() && server.back() == '/') server.pop_back();
    EXPECT_EQ(ToUtf8(links.updateServer), server);
}

}  // namespace
}  // namespace korvane
