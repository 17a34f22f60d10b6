// A journal's lines as texts.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "bindings/calc/change_journal.h"

namespace korvane::calc {

// A process that cannot be mistaken for a later one with the same number.
struct ProcessMark {
    long id = 0;
    long long start = 0;  // ticks since the machine started
    std::string boot;     // which start of the machine
    friend bool operator==(const ProcessMark&, const ProcessMark&) = default;
};

struct JournalHead {
    ProcessMark process;
};
struct FillLine {
    long number;
    FillNote note;
};
struct FormulaLine {
    long number;
    FormulaNote note;
};
struct ShownLine {
    long number;
    std::u16string shown;
};
struct EndLine {
    long number;
};
using JournalLine = std::variant<JournalHead, FillLine, FormulaLine, ShownLine, EndLine>;

// With a line break at its end and none within.
std::string LineText(const JournalLine& line);

// What of a journal's changes stands still.
struct JournalContent {
    ProcessMark process;
    std::vector<FillLine> fills;  // in the order in which they were made
    std::vector<FormulaLine> formulas;
};
enum class JournalReading { kReady, kCorrupt };
// The last line may have been cut off by the death of its process: a line without
// its end does not count.
JournalReading ReadJournal(std::string_view text, JournalContent& content);

}  // namespace korvane::calc
