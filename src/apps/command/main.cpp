// korvane: the command line.
#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "apps/command/explore_command.h"
#include "apps/command/open_command.h"
#include "apps/command/parse_command.h"
#include "apps/command/replay_command.h"
#include "apps/command/terminal.h"

namespace {

using namespace korvane::command;

// Adds --functions and --no-functions; neither leaves `functions` empty.
void AddFunctionsFlags(CLI::App& command, std::optional<bool>& functions) {
    auto* on = command.add_flag_callback(
        "--functions", [&] { functions = true; }, "Show every function call as a part (default)");
    auto* off = command.add_flag_callback(
        "--no-functions", [&] { functions = false; }, "Show references and names only");
    on->excludes(off);
}

// The parser would only say that a command is required.
void RequireCommand(const CLI::App& app, int argc, char** argv) {
    const std::string_view given = argc > 1 ? argv[1] : "";
    if (given.starts_with('-')) return;
    std::string names;
    for (const CLI::App* command : app.get_subcommands(nullptr)) {
        if (command->get_name() == given) return;
        names += (names.empty() ? "" : ", ") + command->get_name();
    }
    const std::string what =
        given.empty() ? "no command" : "there is no command \"" + std::string(given) + '"';
    throw CommandError(kUsage, what + "; the commands are " + names + "; see korvane --help");
}

int Run(int argc, char** argv) {
    CLI::App app{"Takes spreadsheet formulas apart: every part with its cells and its value."};
    app.name("korvane");
    app.set_version_flag("--version", "korvane " KORVANE_VERSION);
    app.require_subcommand(1);
    app.footer(
        "Exit codes: 0 done, 1 an exploration failed, 2 usage, 3 no such file, sheet, cell or "
        "name,\n"
        "4 the spreadsheet host could not be started or was lost.");

    OpenOptions open;
    auto* openCommand = app.add_subcommand(
        "open", "Start LibreOffice Calc, with your own profile, and the add-in in it");
    openCommand
        ->add_option("BOOK", open.books,
                     "Workbooks to open, yours and not copies; none for a new spreadsheet")
        ->option_text("...");
    openCommand->footer(
        "A Calc that runs with the add-in opens the workbooks. Ctrl+Q explores the selected cell.");

    ExploreOptions explore;
    auto* exploreCommand = app.add_subcommand("explore", "Explore cells of a workbook");
    std::string book;
    std::vector<std::string> cells;
    exploreCommand->add_option("BOOK", book, "The workbook; not with --script")->option_text(" ");
    exploreCommand
        ->add_option("CELL", cells,
                     "Sheet1!B7, 'My Sheet'!B7, a defined name, or a range (its first cell); with "
                     "--script none for the active cell")
        ->option_text("...");
    AddFunctionsFlags(*exploreCommand, explore.functions);
    exploreCommand->add_flag("--precise", explore.precise,
                             "Evaluate function parts in the explored cell itself");
    auto* exploreJson =
        exploreCommand->add_flag("--json", explore.json, "One JSON object per cell and line");
    exploreCommand
        ->add_option("--script", explore.script,
                     "A scripted document in place of BOOK; - reads standard input")
        ->option_text("FILE");

    auto* all = exploreCommand->add_flag("--all", explore.all,
                                         "Every formula cell, with a summary at the end");
    auto* window = exploreCommand
                       ->add_flag("--window", explore.window,
                                  "One cell in an explorer window, until it is closed")
                       ->excludes(exploreJson)
                       ->excludes(all);
    exploreCommand
        ->add_option("--record", explore.record,
                     "Records what happens in the window of a scripted document, for replay")
        ->needs(window)
        ->option_text("FILE");
    exploreCommand
        ->add_option("--cell-timeout", explore.cellTimeout,
                     "Seconds that one cell may take with --all (30)")
        ->needs(all)
        ->check(CLI::Range(1, 86'400))
        ->option_text("SECONDS");

    ParseOptions parse;
    std::optional<bool> parseFunctions;
    auto* parseCommand = app.add_subcommand(
        "parse", "Take formula texts from standard input apart, one per line, without a workbook");
    AddFunctionsFlags(*parseCommand, parseFunctions);
    auto* json =
        parseCommand->add_flag("--json", parse.json, "One JSON object per formula and line");
    parseCommand->add_flag("--count", parse.count, "Only totals: formulas, elements, failures")
        ->excludes(json);
    parseCommand->footer(
        "A line that begins with a double quote is a JSON string, for formulas with line feeds.");

    std::string recording;
    auto* replayCommand =
        app.add_subcommand("replay", "Run a recorded session again and say where it differs");
    replayCommand->add_option("FILE", recording, "What explore --window --record has written")
        ->required()
        ->option_text(" ");
    replayCommand->footer("Exit codes: 0 all is the same, 1 it differs, 2 no whole recording.");

    RequireCommand(app, argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);  // --help, --version
    } catch (const CLI::ParseError& error) {
        const auto commands = app.get_subcommands();
        const std::string command = commands.empty() ? "" : commands.front()->get_name() + " ";
        throw CommandError(kUsage,
                           std::string(error.what()) + "; see korvane " + command + "--help");
    }
    explore.arguments = std::move(cells);
    if (!book.empty()) explore.arguments.insert(explore.arguments.begin(), book);
    if (exploreCommand->parsed()) return RunExplore(explore);
    if (replayCommand->parsed()) return RunReplay(recording);
    if (openCommand->parsed()) RunOpen(open);
    parse.functions = parseFunctions.value_or(true);
    return RunParse(parse, DetectStyle(), stdin, stdout);
}

}  // namespace

int main(int argc, char** argv) {
    // Character widths need a UTF-8 locale; numbers keep the "C" one.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    try {
        const int code = Run(argc, argv);
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
            throw CommandError(kExplorationFailed, "the output could not be written");
        }
        return code;
    } catch (const CommandError& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "korvane: %s\n", OneLine(error.what()).c_str());
        return error.code();
    } catch (const std::exception& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "korvane: %s\n", OneLine(error.what()).c_str());
        return kExplorationFailed;
    }
}
