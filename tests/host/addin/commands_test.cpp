#include "host/addin/commands.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvane {
namespace {

class NotedCommands : public Commands {
public:
    void EP_Explore(std::int64_t hwndParent) override {
        seen.push_back("explore " + std::to_string(hwndParent));
    }
    void EP_GoBack() override { seen.emplace_back("back"); }
    void EP_Options() override { seen.emplace_back("options"); }
    void ShowHelp(std::int32_t topic) override { seen.push_back("help " + std::to_string(topic)); }
    void ShowAbout() override { seen.emplace_back("about"); }
    std::vector<std::string> seen;
};

TEST(Commands, EachIdentifierRunsItsCommand) {
    NotedCommands commands;
    for (const auto* id : {u"kvxExplore", u"kvxBack", u"kvxOptions", u"kvxDocumentation",
                           u"kvxAbout", u"kvxabout", u"kvx", u"", u"kvx2About"}) {
        Dispatch(commands, id);
    }
    EXPECT_EQ(commands.seen,
              (std::vector<std::string>{"explore 0", "back", "options", "help 0", "about"}));
}

TEST(Commands, ARibbonIdentifierLosesItsTwo) {
    EXPECT_EQ(sCommandOfRibbonId(u"kvx2Explore"), u"kvxExplore");
    EXPECT_EQ(sCommandOfRibbonId(u"kvx2"), u"kvx");
    for (const auto* other : {u"KVX2Explore", u"kvxExplore", u"kvx", u"", u" kvx2Explore"}) {
        EXPECT_EQ(sCommandOfRibbonId(other), other);
    }
}

}  // namespace
}  // namespace korvane
