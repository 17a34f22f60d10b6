// How long a user of Calc waits for the add-in, and what it leaves in memory: real
// keys and pixels on a desktop that nobody sees.
//
//   desk_bench [ROUNDS [EXPLORATIONS]]
#include <signal.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "screen.h"
#include "support/desktop_office.h"
#include "workbook.h"

namespace korvane::bench {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::OutputOf;

constexpr const char* kBook = "parts.fods";
constexpr const char* kExplorer = "Korvane Explorer";
constexpr int kFewExplorations = 10;

double Percentile(std::vector<double> values, double part) {
    if (values.empty()) throw std::runtime_error("nothing was measured");
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(last * part + 0.5)];
}
double Median(const std::vector<double>& values) { return Percentile(values, 0.5); }

class Calc : public test::DesktopOffice {
public:
    Calc(const test::Desktop& desktop, const fs::path& folder)
        : DesktopOffice(
              desktop, folder,
              {{KORVANE_COMPONENT, "org.korvane.office.Addin", "korvane_office_addin", true},
               {KORVANE_COMPONENT, "org.korvane.office.AddinJob", "korvane_office_addin_job", false,
                true},
               {KORVANE_COMPONENT, "org.korvane.office.Commands", "korvane_office_commands"},
               {KORVANE_BARE_CALC, "org.korvane.bench.BareCalc", "korvane_bench_bare_calc", false,
                true}},
              {(folder / kBook).string()},
              {std::string("KORVANE_VIEW=") + KORVANE_VIEW,
               "XDG_CONFIG_HOME=" + (folder / "config").string(),
               "XDG_STATE_HOME=" + (folder / "state").string()}) {
        if (!ready() || !Focus(kBook) || AskUntil("key", IsYes) != "yes") {
            throw std::runtime_error("Calc did not start with the add-in");
        }
    }
    pid_t View() const {
        const std::string id = OutputOf("pgrep -x korvane-view -P " + std::to_string(this->id()));
        return id.empty() ? 0 : std::stoi(id);
    }
    // A number that it is asked for.
    double Number(const std::string& order) {
        const std::string answer = Ask(order);
        try {
            return std::stod(answer);
        } catch (const std::exception&) {
            throw std::runtime_error(order + ": " + answer);
        }
    }

private:
    static bool IsYes(const std::string& answer) { return answer == "yes"; }
};

// Memory of its own that a process has, in KiB. Counted page by page: the numbers
// that the system keeps at hand are rough.
long MemoryOf(pid_t process) {
    std::ifstream in("/proc/" + std::to_string(process) + "/smaps_rollup");
    long size = 0;
    for (std::string line; std::getline(in, line);) {
        for (const std::string field : {"Anonymous:", "Swap:"}) {
            if (line.rfind(field, 0) == 0) size += std::stol(line.substr(field.size()));
        }
    }
    return size;
}

class Bench {
public:
    explicit Bench(const fs::path& folder)
        : screen_(desktop_.Environment().front().substr(8)), calc_(desktop_, Prepared(folder)) {
        // Beside each other: the cells, and the explorer over the sheet's other end.
        desktop_.Do(std::string("search --onlyvisible --name '^") + kBook +
                    "' windowmove 0 0 windowsize 1270 960");
        Open(CellOf(100));
        desktop_.Do(std::string("search --onlyvisible --name '^") + kExplorer +
                    "$' windowmove --sync 580 500");
        std::this_thread::sleep_for(500ms);
        window_ = screen_.Windows(kExplorer).at(0);
        Close();
    }

    void KeyToWindow(int rounds) {
        std::printf(
            "\nKey press to explorer window with its rows, medians of %d, in ms; the two in the\n"
            "middle are processor time, waiting for a processor counts as the rest\n",
            rounds);
        std::printf("%-22s %7s %7s %9s %9s %9s %7s\n", "", "parts", "whole", "Calc's", "ours in",
                    "window", "ours/");
        std::printf("%-22s %7s %7s %9s %9s %9s %7s\n", "", "", "", "own", "exploring", "and rest",
                    "whole");
        for (const bool isFirst : {false, true}) {
            for (const int parts : kParts) Measure(parts, rounds, isFirst);
        }
    }

    // The tree's first row stands for the cell itself.
    void Selecting() {
        Open(kWalkedCell);
        const Strip pane = {window_.x + 20, window_.y + window_.height - 130, window_.width - 40,
                            60};
        const Strip sheet = {40, 230, 400, 500};
        std::vector<double> marked, tinted;
        screen_.Watch({tree()}, [&] { screen_.Press("Down"); });
        for (int row = 1; row <= kWalkedRows; ++row) {
            const auto times = screen_.Watch({pane, sheet}, [&] { screen_.Press("Down"); });
            if (times[0]) marked.push_back(*times[0]);
            if (times[1]) tinted.push_back(*times[1]);
        }
        Close();
        std::printf("\nDown key in the tree, of %zu, in ms          median    95 %%\n",
                    marked.size());
        std::printf("the part is marked in the formula            %7.1f %7.1f\n", Median(marked),
                    Percentile(marked, 0.95));
        std::printf("its cells are tinted and selected            %7.1f %7.1f\n", Median(tinted),
                    Percentile(tinted, 0.95));
    }

    void Memory(int explorations) {
        std::printf("\nMemory in MiB, after opening and closing     office    view\n");
        long office = 0;
        long view = 0;
        for (int k = 1; k <= explorations; ++k) {
            Open(CellOf(k % 2 == 0 ? 100 : 10));
            Close();
            if (k != kFewExplorations && k != explorations) continue;
            const long nowOffice = MemoryOf(calc_.id());
            const long nowView = MemoryOf(calc_.View());
            std::printf("%6d windows                              %8.1f %7.1f\n", k,
                        static_cast<double>(nowOffice) / 1024, static_cast<double>(nowView) / 1024);
            if (k == explorations && k > kFewExplorations) {
                const double more = k - kFewExplorations;
                std::printf("growth for each window, in KiB              %7.2f %7.2f\n",
                            static_cast<double>(nowOffice - office) / more,
                            static_cast<double>(nowView - view) / more);
            }
            office = nowOffice;
            view = nowView;
        }
    }

private:
    static fs::path Prepared(const fs::path& folder) {
        std::ofstream(folder / kBook, std::ios::binary) << WorkbookText();
        return folder;
    }
    // The rows of the tree's first column, below its header.
    Strip tree() const { return {window_.x + 12, window_.y + 40, 220, 130, 120}; }

    void Select(const std::string& cell) {
        calc_.Ask("select " + cell);
        const auto hasKeys = [this] { return screen_.ActiveTitle().rfind(kBook, 0) == 0; };
        if (!screen_.Until(hasKeys)) throw std::runtime_error("Calc has not got the keyboard");
    }
    void WaitForExplorer() {
        const auto hasKeys = [this] {
            return screen_.ActiveTitle() == kExplorer && screen_.Windows(kExplorer).size() == 1;
        };
        if (!screen_.Until(hasKeys)) throw std::runtime_error("there is no explorer");
    }
    void Open(const std::string& cell) {
        Select(cell);
        screen_.Press("q", "Control_L");
        WaitForExplorer();
    }
    void Close() {
        screen_.Press("Escape");
        const auto isGone = [this] { return screen_.Windows(kExplorer).empty(); };
        if (!screen_.Until(isGone)) throw std::runtime_error("the explorer does not close");
    }
    // The next window is shown by a program that has still to be started.
    void EndView() {
        const pid_t view = calc_.View();
        ::kill(view, SIGKILL);
        screen_.Until([this, view] { return calc_.View() != view; });
        std::this_thread::sleep_for(100ms);
    }

    void Measure(int parts, int rounds, bool isFirst) {
        std::vector<double> whole, own, exploring;
        double count = 0;
        for (int round = 0; round < rounds; ++round) {
            std::istringstream explored(calc_.Ask("explore " + CellOf(parts)));
            double time = 0;
            if (!(explored >> time >> count)) throw std::runtime_error(explored.str());
            exploring.push_back(time / 1000);
            own.push_back(calc_.Number("evaluate") / 1000);
            Select(CellOf(parts));
            if (isFirst) EndView();
            std::this_thread::sleep_for(300ms);
            const auto time2 =
                screen_.Watch({tree()}, [&] { screen_.Press("q", "Control_L"); }).front();
            WaitForExplorer();
            Close();
            if (time2) whole.push_back(*time2);
        }
        const double all = Median(whole);
        const double calcs = Median(own);
        const double ours = Median(exploring) - calcs;
        std::printf("%-22s %7.0f %7.1f %9.1f %9.1f %9.1f %5.0f %%\n",
                    isFirst ? "view to be started" : "view runs", count, all, calcs, ours,
                    all - calcs - ours, (all - calcs) / all * 100);
    }

    test::Desktop desktop_;
    Screen screen_;
    Calc calc_;
    Strip window_;
};

std::string Load() {
    std::ifstream in("/proc/loadavg");
    std::string one;
    in >> one;
    return one;
}

int Run(int rounds, int explorations) {
    if (const std::string why = test::DesktopOffice::WhyNot(); !why.empty()) {
        std::printf("The add-in in Calc is not measured: %s\n", why.c_str());
        return 0;
    }
    std::string name = (fs::temp_directory_path() / "korvane-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) return 1;
    int result = 0;
    try {
        std::printf("The add-in in Calc, on %u processors with a load of %s before\n",
                    std::thread::hardware_concurrency(), Load().c_str());
        Bench bench(name);
        bench.KeyToWindow(rounds);
        bench.Selecting();
        bench.Memory(explorations);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        result = 1;
    }
    fs::remove_all(name);
    return result;
}

}  // namespace
}  // namespace korvane::bench

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int explorations = argc > 2 ? std::atoi(argv[2]) : 1000;
    return korvane::bench::Run(std::max(rounds, 1), std::max(explorations, 1));
}
