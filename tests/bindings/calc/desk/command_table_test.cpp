#include "bindings/calc/desk/command_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace korvane::calc {
namespace {

TEST(CommandTable, RunsWhatTheUrlStandsFor) {
    CommandTable table;
    std::vector<int> ran;
    const auto first = table.Add([&] { ran.push_back(1); });
    const auto second = table.Add([&] { ran.push_back(2); });
    EXPECT_EQ(first, u"org.korvane.addin:1");
    EXPECT_NE(first, second);
    EXPECT_TRUE(table.Has(first));
    EXPECT_TRUE(table.Run(second));
    EXPECT_TRUE(table.Run(first));
    EXPECT_EQ(ran, (std::vector<int>{2, 1}));
    EXPECT_FALSE(table.Run(u"org.korvane.addin:3"));
    EXPECT_FALSE(table.Run(u".uno:Save"));
    EXPECT_FALSE(table.Run(u""));
}

TEST(CommandTable, AUrlThatWasRemovedIsNotGivenAgain) {
    CommandTable table;
    const auto first = table.Add([] {});
    table.Remove(first);
    table.Remove(first);
    EXPECT_FALSE(table.Has(first));
    EXPECT_FALSE(table.Run(first));
    EXPECT_NE(table.Add([] {}), first);
}

TEST(CommandTable, ANameRunsWhatWasSetLast) {
    CommandTable table;
    std::string ran;
    table.Set(u"KorvaneExplore", [&] { ran += "a"; });
    table.Set(u"KorvaneExplore", [&] { ran += "b"; });
    EXPECT_EQ(CommandUrl(u"KorvaneExplore"), u"org.korvane.addin:KorvaneExplore");
    EXPECT_TRUE(table.Run(u"org.korvane.addin:KorvaneExplore"));
    EXPECT_EQ(ran, "b");
}

TEST(CommandTable, ACommandMayRemoveItself) {
    CommandTable table;
    const auto kept = std::make_shared<std::string>("still here");
    std::string read;
    std::u16string url;
    url = table.Add([&table, &url, &read, kept] {
        table.Remove(url);
        read = *kept;
    });
    EXPECT_TRUE(table.Run(url));
    EXPECT_EQ(read, "still here");
    EXPECT_FALSE(table.Run(url));
}

TEST(CommandTable, NoExceptionLeaves) {
    CommandTable table;
    const auto standard = table.Add([] { throw std::runtime_error("bad"); });
    const auto other = table.Add([] { throw 5; });
    const auto nothing = table.Add({});
    EXPECT_TRUE(table.Run(standard));
    EXPECT_TRUE(table.Run(other));
    EXPECT_TRUE(table.Run(nothing));
    EXPECT_TRUE(table.Has(standard));
}

TEST(CommandTable, KnowsItsUrls) {
    EXPECT_TRUE(IsCommandUrl(u"org.korvane.addin:1"));
    EXPECT_FALSE(IsCommandUrl(u"org.korvane.addin"));
    EXPECT_FALSE(IsCommandUrl(u".uno:ToolsMenu"));
    EXPECT_FALSE(IsCommandUrl(u""));
}

}  // namespace
}  // namespace korvane::calc
