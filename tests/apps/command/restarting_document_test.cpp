// A host that is lost, and what becomes of the cell that it was busy with.
#include "apps/command/restarting_document.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::command {
namespace {

// What the hosts of one test have in common.
struct Hosts {
    int opened = 0;
    int explored = 0;
    int dying = 0;  // so many explorations of "B1" lose the host
};

class FragileDocument : public Document {
public:
    explicit FragileDocument(Hosts& hosts) : hosts_(hosts) { ++hosts_.opened; }
    std::vector<std::u16string> FormulaCells() override { return {u"A1", u"B1"}; }
    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override {
        EXPECT_FALSE(lost_);
        ++hosts_.explored;
        lost_ = cell == u"T1" || (cell == u"B1" && hosts_.dying-- > 0);
        if (cell == u"T1") throw TimeIsUp("it took too long");
        if (cell == u"X1") throw CommandError(kNotFound, "no such cell");
        if (lost_) throw CommandError(kHostLost, "the host was lost");
        ExplorationReport report;
        report.ok = true;
        report.cell = cell;
        report.bEveryFunction = bEveryFunction;
        report.bPreciseCalc = bPreciseCalc;
        return report;
    }

private:
    Hosts& hosts_;
    bool lost_ = false;
};

class RestartingDocumentTest : public testing::Test {
protected:
    Hosts hosts_;
    RestartingDocument document_{[this] { return std::make_unique<FragileDocument>(hosts_); }};
};

TEST_F(RestartingDocumentTest, TheInterruptedCellIsTriedOnceMore) {
    hosts_.dying = 1;
    EXPECT_TRUE(document_.Explore(u"A1", true, false).ok);
    const auto report = document_.Explore(u"B1", true, true);
    EXPECT_TRUE(report.ok);
    EXPECT_TRUE(report.bPreciseCalc);
    EXPECT_EQ(hosts_.opened, 2);
    EXPECT_EQ(document_.hostsLost(), 1);
}

TEST_F(RestartingDocumentTest, ACellThatLosesTheHostTwiceFailsAndTheNextGoesOn) {
    hosts_.dying = 9;
    const auto report = document_.Explore(u"B1", true, false);
    EXPECT_FALSE(report.ok);
    EXPECT_EQ(ToUtf8(report.cell), "B1");
    EXPECT_TRUE(report.bEveryFunction);
    ASSERT_EQ(report.log.size(), 1u);
    EXPECT_EQ(ToUtf8(report.log[0]), "Korvane.Explore: the host was lost");
    EXPECT_EQ(hosts_.explored, 2);
    EXPECT_TRUE(document_.Explore(u"A1", true, false).ok);
    EXPECT_EQ(hosts_.opened, 3);
    EXPECT_EQ(document_.hostsLost(), 2);
}

TEST_F(RestartingDocumentTest, ACellWhoseTimeWasUpIsNotTriedAgain) {
    EXPECT_FALSE(document_.Explore(u"T1", true, false).ok);
    EXPECT_EQ(hosts_.explored, 1);
    EXPECT_TRUE(document_.Explore(u"A1", true, false).ok);
    EXPECT_EQ(document_.hostsLost(), 1);
}

TEST_F(RestartingDocumentTest, OtherFailuresAreTheCallers) {
    EXPECT_THROW(document_.Explore(u"X1", true, false), CommandError);
    EXPECT_EQ(document_.hostsLost(), 0);
    EXPECT_EQ(document_.FormulaCells().size(), 2u);
}

TEST(RestartingDocument, EndsWhenNoHostCanBeStarted) {
    Hosts hosts;
    hosts.dying = 1;
    RestartingDocument document([&]() -> std::unique_ptr<Document> {
        if (hosts.opened == 1) throw CommandError(kHostLost, "no office");
        return std::make_unique<FragileDocument>(hosts);
    });
    EXPECT_THROW(document.Explore(u"B1", true, false), CommandError);
}

}  // namespace
}  // namespace korvane::command
