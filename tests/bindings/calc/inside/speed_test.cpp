// Not a test: how much exploring costs on top of Calc's own evaluation. Run by
// tools/bench_calc.py.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "apps/report/exploration.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

using Clock = std::chrono::steady_clock;

std::vector<TestSheet::Cell> ModelCells() {
    std::vector<TestSheet::Cell> cells;
    for (int row = 1; row <= 100; ++row) {
        const std::string here = std::to_string(row);
        cells.push_back({row, 1, here});
        cells.push_back({row, 2, "=[.A" + here + "]*2+SUM([.A1:.A" + here + "])"});
        cells.push_back({row, 3, "=IF([.B" + here + "]>50;INDEX([.A1:.A100];[.A" + here + "]);0)"});
    }
    return cells;
}

void AddTexts(const PartReport& part, std::vector<std::u16string>& texts) {
    texts.push_back(u"=" + part.formula);
    for (const auto& child : part.children) AddTexts(child, texts);
}

double Milliseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

TEST(DISABLED_Speed, ExploringBesideEvaluating) {
    OpenBook book("speed.fods", FlatText({{"Data", ModelCells()}}));
    constexpr int kRounds = 5;
    double exploring = 0;
    double evaluating = 0;
    std::size_t parts = 0;
    for (int round = 0; round < kRounds; ++round) {
        for (int row = 1; row <= 100; ++row) {
            for (const char16_t* column : {u"B", u"C"}) {
                std::u16string address = column;
                for (const char digit : std::to_string(row)) address += static_cast<char16_t>(digit);
                const auto cell = book.Cell(address);
                cell->Select();
                const auto started = Clock::now();
                const auto report = korvane::Explore(book.application(), cell, true, false);
                exploring += Milliseconds(started);
                ASSERT_TRUE(report.ok);
                std::vector<std::u16string> texts;
                for (const auto& child : report.tree->children) AddTexts(child, texts);
                const auto again = Clock::now();
                for (const auto& text : texts) book.Evaluate(text);
                evaluating += Milliseconds(again);
                parts += texts.size();
            }
        }
    }
    const auto perPart = [&](double all) { return all * 1000 / static_cast<double>(parts); };
    std::printf("speed: %zu parts; exploring %.0f us per part, evaluating their texts %.0f us: %.2f times\n",
                parts, perPart(exploring), perPart(evaluating), exploring / evaluating);
}

}  // namespace
}  // namespace korvane::calc::testing
