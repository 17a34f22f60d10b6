#include "apps/command/explore_all.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::command {
namespace {

ExplorationReport Fine(const std::u16string& cell, const char16_t* value = u"1") {
    ExplorationReport report;
    report.ok = true;
    report.cell = cell;
    report.tree = PartReport{};
    report.tree->value = value;
    return report;
}

// A document of cells A1 to A5 on a host that dies at "A3" and fails at "A4".
class FragileDocument : public Document {
public:
    explicit FragileDocument(int& opened) { ++opened; }
    std::vector<std::u16string> FormulaCells() override {
        return {u"A1", u"A2", u"A3", u"A4", u"A5"};
    }
    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override {
        EXPECT_FALSE(dead_) << "a lost host is asked for " << ToUtf8(cell);
        EXPECT_TRUE(bEveryFunction);
        EXPECT_FALSE(bPreciseCalc);
        if (cell == u"A2") {
            auto report = Fine(cell, u"#N/A");
            report.bMaybeImprecise = report.bContainsIndirect = true;
            return report;
        }
        if (cell == u"A3") {
            dead_ = true;
            throw CommandError(kHostLost, "it was lost");
        }
        if (cell == u"A4") {
            ExplorationReport report;
            report.cell = cell;
            report.log.push_back(u"CElement.bInitRoot: Type mismatch (bInitRoot)");
            return report;
        }
        return Fine(cell);
    }

private:
    bool dead_ = false;
};

TEST(ExploreAll, ReplacesALostHostAndGoesOnWithTheRest) {
    int opened = 0;
    std::vector<std::string> seen;
    std::size_t lastDone = 0;
    const AllSummary summary =
        ExploreAll([&] { return std::make_unique<FragileDocument>(opened); }, true, false,
                   [&](const ExplorationReport& report) {
                       seen.push_back(ToUtf8(report.cell) + (report.ok ? "" : " failed"));
                   },
                   [&](std::size_t done, std::size_t all) {
                       lastDone = done;
                       EXPECT_EQ(all, 5u);
                   });
    EXPECT_EQ(seen, (std::vector<std::string>{"A1", "A2", "A3 failed", "A4 failed", "A5"}));
    EXPECT_EQ(lastDone, 5u);
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(summary.Text(),
              "explored: 3, failed: 2, imprecise: 1, with indirect references: 1\n"
              "error values: #N/A (1)\n"
              "failures: Type mismatch (bInitRoot) (1), it was lost (1)\n"
              "hosts lost and started again: 2\n");
}

TEST(ExploreAll, EndsWhenTheHostCannotBeStartedAgain) {
    int opened = 0;
    const OpenDocument open = [&]() -> std::unique_ptr<Document> {
        if (opened == 1) throw CommandError(kHostLost, "no office");
        return std::make_unique<FragileDocument>(opened);
    };
    int reports = 0;
    EXPECT_THROW(ExploreAll(
                     open, true, false, [&](const ExplorationReport&) { ++reports; },
                     [](std::size_t, std::size_t) {}),
                 CommandError);
    EXPECT_EQ(reports, 2);
}

TEST(ExploreAll, AnEmptyDocumentIsDoneAtOnce) {
    class EmptyDocument : public Document {
    public:
        std::vector<std::u16string> FormulaCells() override { return {}; }
        ExplorationReport Explore(const std::u16string&, bool, bool) override {
            ADD_FAILURE() << "there is nothing to explore";
            return {};
        }
    };
    const auto summary =
        ExploreAll([] { return std::make_unique<EmptyDocument>(); }, true, false,
                   [](const ExplorationReport&) { FAIL(); },
                   [](std::size_t done, std::size_t all) { EXPECT_EQ(done, all); });
    EXPECT_EQ(summary.Text(),
              "explored: 0, failed: 0, imprecise: 0, with indirect references: 0\n");
}

}  // namespace
}  // namespace korvane::command
