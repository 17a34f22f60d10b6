// Every real formula there is, in both modes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <vector>

#include "apps/command/lone_cell.h"
#include "base/text.h"
#include "support/exploring.h"

namespace korvane::command {
namespace {

std::string CorpusPath() {
    const char* folder = std::getenv("KORVANE_CORPUS");
    return std::string(folder ? folder : KORVANE_CORPUS) + "/formulas.txt";
}

std::set<std::string> KnownFails() {
    std::set<std::string> known;
    std::ifstream file(KORVANE_KNOWN_FAILS);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.front() == '=') known.insert(line);
    }
    return known;
}

class CorpusTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        std::ifstream file(CorpusPath());
        if (!file) {
            GTEST_SKIP() << "no corpus at " << CorpusPath()
                         << " (set KORVANE_CORPUS to the folder that holds formulas.txt)";
        }
        for (std::string line; std::getline(file, line);) formulas_.push_back(line);
        ASSERT_FALSE(formulas_.empty());
    }
    std::vector<std::string> formulas_;
};

TEST_P(CorpusTest, EveryFormulaIsTakenApartButTheKnownFails) {
    LoneCell cell;
    CElement root;
    std::set<std::string> failed;
    for (const auto& formula : formulas_) {
        std::u16string error;
        if (!cell.Parse(ToUtf16(formula), GetParam(), root, error)) {
            failed.insert(formula);
            continue;
        }
        ASSERT_EQ(ToUtf8(root.sFormula()), formula);
        test::CheckTree(root);
        if (HasFailure()) FAIL() << formula;
    }
    // CHOOSE becomes a part only when functions are shown.
    const std::set<std::string> known = GetParam() ? KnownFails() : std::set<std::string>();
    for (const auto& formula : failed) EXPECT_EQ(known.count(formula), 1U) << "fails: " << formula;
    for (const auto& formula : known) {
        EXPECT_EQ(failed.count(formula), 1U) << "stale, it is no failure (any more): " << formula;
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, CorpusTest, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "EveryFunction" : "Plain"; });

}  // namespace
}  // namespace korvane::command
