#include "bindings/scripted/scripted_resources.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

TEST(ScriptedResources, HoldsTheIconAndItsMask) {
    ScriptedResources resources(std::make_shared<Accesses>());
    EXPECT_FALSE(resources.Picture(u"IMGEXPLORE").empty());
    EXPECT_FALSE(resources.Picture(u"MSKEXPLORE").empty());
    EXPECT_NE(resources.Picture(u"IMGEXPLORE"), resources.Picture(u"MSKEXPLORE"));
    EXPECT_THROW(resources.Picture(u"NOPE"), Error);
    resources.pictures[u"NOPE"] = "bytes";
    EXPECT_EQ(resources.Picture(u"NOPE"), "bytes");
}

TEST(ScriptedResources, IsNotedAndFails) {
    const auto accesses = std::make_shared<Accesses>();
    ScriptedResources resources(accesses);
    accesses->StartLog();
    resources.Picture(u"IMGEXPLORE");
    EXPECT_EQ(accesses->log(), (std::vector<std::string>{"Resources.Picture IMGEXPLORE"}));
    accesses->FailMember("Resources.Picture");
    EXPECT_THROW(resources.Picture(u"IMGEXPLORE"), Error);
}

}  // namespace
}  // namespace korvane::scripted
