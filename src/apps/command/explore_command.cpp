#include "apps/command/explore_command.h"

#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "apps/command/explore_all.h"
#include "apps/command/open_workbook.h"
#include "apps/command/restarting_document.h"
#include "apps/command/script_file.h"
#include "apps/command/scripted_document.h"
#include "apps/command/tree_printer.h"
#include "apps/command/window_command.h"
#include "apps/report/exploration_json.h"
#include "base/text.h"

namespace korvane::command {
namespace {

// Prints reports one after the other, and keeps count of failures.
class Output {
public:
    explicit Output(bool json) : json_(json), style_(DetectStyle()) {}

    void Print(const ExplorationReport& report) {
        if (json_) {
            Write(ToJson(report).dump() + "\n");
        } else {
            if (!first_) Write("\n");
            Write(PrintReport(report, style_));
        }
        first_ = false;
        if (report.ok) return;
        failed_ = true;
        if (json_) return;
        std::fflush(stdout);
        for (const auto& line : report.log) {
            std::fprintf(stderr, "korvane: %s could not be explored: %s\n",
                         OneLine(ToUtf8(report.cell)).c_str(), OneLine(ToUtf8(line)).c_str());
        }
    }
    void PrintSummary(const AllSummary& summary) {
        // JSON lines stay JSON lines.
        const std::string text = summary.Text();
        if (json_) {
            std::fprintf(stderr, "%s", text.c_str());
        } else {
            Write((first_ ? "" : "\n") + text);
        }
    }
    ExitCode exitCode() const { return failed_ ? kExplorationFailed : kDone; }

private:
    static void Write(const std::string& text) {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
    }

    bool json_;
    Style style_;
    bool first_ = true;
    bool failed_ = false;
};

void ExploreScript(const ExploreOptions& options, Output& output) {
    const auto documents = ReadDocuments(*options.script);
    for (std::size_t k = 0; k < documents.size(); ++k) {
        const std::string which =
            documents.size() > 1 ? " (document " + std::to_string(k + 1) + ")" : "";
        ScriptedDocument document(LoadScript(*options.script, documents[k], which));
        const bool functions =
            options.functions.value_or(document.model().bEveryFunction.value_or(true));
        const bool precise = options.precise || document.model().bPreciseCalc.value_or(false);
        if (options.arguments.empty()) output.Print(document.ExploreActiveCell(functions, precise));
        for (const auto& cell : options.arguments) {
            output.Print(document.Explore(ToUtf16(cell), functions, precise));
        }
    }
}

// One line on a terminal's standard error, written over again and again.
class Progress {
public:
    void operator()(std::size_t done, std::size_t all) {
        if (!shown_) return;
        const std::size_t percent = all == 0 ? 100 : done * 100 / all;
        if (percent == percent_ && done != all) return;
        percent_ = percent;
        if (done == all) {
            std::fprintf(stderr, "\r\x1b[K");
        } else {
            std::fprintf(stderr, "\r%zu of %zu formulas (%zu %%)\x1b[K", done, all, percent);
        }
        std::fflush(stderr);
    }

private:
    bool shown_ = isatty(STDERR_FILENO) != 0;
    std::size_t percent_ = 101;
};

void ExploreEveryFormula(const ExploreOptions& options, Output& output) {
    if (options.script ? !options.arguments.empty() : options.arguments.size() != 1) {
        throw CommandError(kUsage, "explore --all takes a workbook and no cells");
    }
    const bool functions = options.functions.value_or(true);
    const auto open = [&]() -> std::unique_ptr<Document> {
        if (!options.script) {
            return OpenWorkbook(options.arguments.front(),
                                std::chrono::seconds(options.cellTimeout));
        }
        return std::make_unique<ScriptedDocument>(LoadOnlyScript(*options.script, "explore --all"));
    };
    const AllSummary summary = ExploreAll(
        open, functions, options.precise,
        [&](const ExplorationReport& report) { output.Print(report); }, Progress());
    output.PrintSummary(summary);
}

void ExploreWorkbook(const ExploreOptions& options, Output& output) {
    if (options.arguments.size() < 2) {
        throw CommandError(kUsage,
                           "explore needs a workbook and a cell, such as: "
                           "korvane explore Budget.xlsx 'Sheet1!B7' (or --all for every formula)");
    }
    RestartingDocument document([&] { return OpenWorkbook(options.arguments.front()); });
    for (std::size_t k = 1; k < options.arguments.size(); ++k) {
        output.Print(document.Explore(ToUtf16(options.arguments[k]),
                                      options.functions.value_or(true), options.precise));
    }
}

}  // namespace

ExitCode RunExplore(const ExploreOptions& options) {
    if (options.window) return RunWindow(options);
    Output output(options.json);
    if (options.all) {
        ExploreEveryFormula(options, output);
    } else if (options.script) {
        ExploreScript(options, output);
    } else {
        ExploreWorkbook(options, output);
    }
    return output.exitCode();
}

}  // namespace korvane::command
