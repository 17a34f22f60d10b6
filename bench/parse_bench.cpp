// How fast formulas are taken apart, beside the least that any reader of them
// must do: one pass over the text that copies the tokens out.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <vector>

#include "allocations.h"
#include "apps/command/lone_cell.h"
#include "apps/report/exploration.h"
#include "base/text.h"
#include "formula/scan.h"

namespace {

using korvane::CElement;
using korvane::command::CountElements;
using korvane::command::LoneCell;

std::vector<std::u16string> LoadFormulas() {
    std::vector<std::u16string> formulas;
    std::ifstream file(KORVANE_FORMULAS);
    for (std::string line; std::getline(file, line);) formulas.push_back(korvane::ToUtf16(line));
    if (!formulas.empty()) return formulas;
    const std::vector<std::u16string> own{
        u"=SUM(B2:B9)*Rates!$C$4", u"=IF(A1>0,\"paid, late\",INDEX(B1:B9,3))",
        u"='Q1 Sales'!B4-ROUND(C4/12,2)", u"=VLOOKUP($A5,Data!$A$1:$F$99,3,FALSE)"};
    for (int k = 0; k < 10'000; ++k) formulas.insert(formulas.end(), own.begin(), own.end());
    return formulas;
}

const std::vector<std::u16string>& Formulas() {
    static const auto formulas = LoadFormulas();
    return formulas;
}

// The tokens between operators, brackets and quotes, copied out.
std::vector<std::u16string> NaiveTokens(const std::u16string& formula) {
    std::vector<std::u16string> tokens;
    std::u16string token;
    for (std::size_t at = 0; at < formula.size(); ++at) {
        const char16_t ch = formula[at];
        if (korvane::bIsQuote(ch)) {
            const auto closing = formula.find(ch, at + 1);
            const auto end = closing == std::u16string::npos ? formula.size() - 1 : closing;
            token.append(formula, at, end - at + 1);
            at = end;
        } else if (korvane::bIsOperator(ch) || korvane::bIsFiller(ch)) {
            if (!token.empty()) tokens.push_back(token);
            token.clear();
        } else {
            token += ch;
        }
    }
    if (!token.empty()) tokens.push_back(token);
    return tokens;
}

std::int64_t TotalBytes() {
    std::int64_t bytes = 0;
    for (const auto& formula : Formulas()) bytes += static_cast<std::int64_t>(formula.size() * 2);
    return bytes;
}

void ReportRates(benchmark::State& state) {
    const auto formulas = static_cast<double>(Formulas().size());
    state.SetBytesProcessed(state.iterations() * TotalBytes());
    state.counters["per_formula"] = benchmark::Counter(
        formulas, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void NaiveScan(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& formula : Formulas()) {
            auto tokens = NaiveTokens(formula);
            benchmark::DoNotOptimize(tokens);
        }
    }
    ReportRates(state);
}
BENCHMARK(NaiveScan)->Unit(benchmark::kMillisecond);

void Parse(benchmark::State& state) {
    LoneCell cell;
    std::u16string error;
    std::int64_t elements = 0;
    std::int64_t allocations = 0;
    const std::int64_t callsBefore = cell.hostCalls();
    for (auto _ : state) {
        const std::int64_t before = korvane::bench::Allocations();
        elements = 0;
        for (const auto& formula : Formulas()) {
            CElement root;
            cell.Parse(formula, state.range(0) != 0, root, error);
            elements += CountElements(root);
        }
        allocations = korvane::bench::Allocations() - before;
    }
    ReportRates(state);
    state.counters["elements"] = static_cast<double>(elements);
    state.counters["allocations_per_element"] =
        static_cast<double>(allocations) / static_cast<double>(elements);
    state.counters["host_calls_per_formula"] = static_cast<double>(cell.hostCalls() - callsBefore) /
                                               static_cast<double>(state.iterations()) /
                                               static_cast<double>(Formulas().size());
}
BENCHMARK(Parse)->ArgName("every_function")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// One formula of n references: the time grows as its length.
void ParseLength(benchmark::State& state) {
    LoneCell cell;
    std::u16string formula = u"=A1";
    for (std::int64_t k = 1; k < state.range(0); ++k) formula += u"+Data!B22*SUM(C3,1)";
    std::u16string error;
    for (auto _ : state) {
        CElement root;
        cell.Parse(formula, false, root, error);
        benchmark::DoNotOptimize(root);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ParseLength)->RangeMultiplier(4)->Range(16, 16 << 10)->Complexity();

// n formulas: the time grows as their count.
void ParseCount(benchmark::State& state) {
    LoneCell cell;
    std::u16string error;
    const auto& formulas = Formulas();
    for (auto _ : state) {
        for (std::int64_t k = 0; k < state.range(0); ++k) {
            CElement root;
            cell.Parse(formulas[static_cast<std::size_t>(k) % formulas.size()], false, root, error);
        }
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ParseCount)->RangeMultiplier(4)->Range(1 << 10, 1 << 16)->Complexity();

// References within references that lead nowhere: the host is asked once for
// each, however deep they nest.
void NestedIndex(benchmark::State& state) {
    LoneCell cell;
    std::u16string formula = u"=";
    for (std::int64_t k = 0; k < state.range(0); ++k) formula += u"INDEX(";
    formula += u"A1:B9";
    for (std::int64_t k = 0; k < state.range(0); ++k) formula += u",1)";
    std::u16string error;
    const std::int64_t callsBefore = cell.hostCalls();
    for (auto _ : state) {
        CElement root;
        cell.Parse(formula, false, root, error);
    }
    state.counters["host_calls"] = static_cast<double>(cell.hostCalls() - callsBefore) /
                                   static_cast<double>(state.iterations());
}
BENCHMARK(NestedIndex)->Arg(3)->Arg(12)->Arg(64);

}  // namespace

BENCHMARK_MAIN();
