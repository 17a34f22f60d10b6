#include "apps/command/tree_printer.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"
#include "base/value.h"

namespace korvane::command {
namespace {

constexpr const char* kBold = "\x1b[1m";
constexpr const char* kDim = "\x1b[2m";
constexpr const char* kRed = "\x1b[31m";
constexpr const char* kGreen = "\x1b[1;32m";
constexpr const char* kYellow = "\x1b[33m";
constexpr const char* kReset = "\x1b[0m";
constexpr int kGap = 2;          // blanks between columns
constexpr int kLeastColumn = 8;  // a column is never cut to less

struct Row {
    std::string branch;  // the lines that lead to the label
    std::array<std::string, 3> texts;
    bool chosen = false;
    bool error = false;
};

std::string Painted(const std::string& text, const char* paint, const Style& style) {
    return style.decorated && *paint && !text.empty() ? paint + text + kReset : text;
}

bool IsChosen(const PartReport& part) {
    return ((part.kind == 2 || part.kind == 3) && part.tag == 1) || part.kind == 5;
}

template <typename MakeRow>
void AddRows(const PartReport& part, const std::string& lead, const std::string& branch,
             const Style& style, const MakeRow& makeRow, std::vector<Row>& rows) {
    rows.push_back(makeRow(part));
    rows.back().branch = branch;
    for (std::size_t k = 0; k < part.children.size(); ++k) {
        const bool last = k + 1 == part.children.size();
        if (style.decorated) {
            AddRows(part.children[k], lead + (last ? "   " : "│  "), lead + (last ? "└─ " : "├─ "),
                    style, makeRow, rows);
        } else {
            AddRows(part.children[k], lead + "  ", lead + "  ", style, makeRow, rows);
        }
    }
}

int LabelWidth(const Row& row) { return DisplayWidth(row.branch) + DisplayWidth(row.texts[0]); }

// The columns' widths: as wide as their texts, and where the terminal is too
// narrow the widest is cut first.
std::array<int, 3> Widths(const std::vector<Row>& rows, const Style& style) {
    std::array<int, 3> widths{};
    for (const Row& row : rows) {
        widths[0] = std::max(widths[0], LabelWidth(row));
        for (std::size_t k = 1; k < 3; ++k)
            widths[k] = std::max(widths[k], DisplayWidth(row.texts[k]));
    }
    if (style.width <= 0) return widths;
    const int room = style.width - 2 * kGap;
    while (widths[0] + widths[1] + widths[2] > room) {
        int& widest = *std::max_element(widths.begin(), widths.end());
        if (widest <= kLeastColumn) break;
        --widest;
    }
    return widths;
}

void AppendRow(std::string& out, const Row& row, const std::array<int, 3>& widths,
               const Style& style, const char* paint) {
    const int branchWidth = DisplayWidth(row.branch);
    std::string line = Painted(CutToWidth(row.branch, widths[0]), kDim, style);
    int used = std::min(branchWidth, widths[0]);
    int column = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        const std::string text = CutToWidth(row.texts[k], k == 0 ? widths[0] - used : widths[k]);
        const char* own = paint;
        if (k == 0 && row.chosen) own = kGreen;
        if (k == 2 && row.error) own = kRed;
        if (!text.empty()) {
            // Blanks only before a text: no line ends in them.
            line.append(static_cast<std::size_t>(column), ' ');
            column = 0;
            line += Painted(text, own, style);
        }
        if (k == 0) used += DisplayWidth(text);
        column += kGap + widths[k] - (k == 0 ? used : DisplayWidth(text));
    }
    out += line + "\n";
}

Row ReportRow(const PartReport& part) {
    Row row;
    row.texts = {OneLine(ToUtf8(part.name)), OneLine(ToUtf8(part.location)),
                 OneLine(ToUtf8(part.value))};
    row.chosen = IsChosen(part);
    row.error = IsErrorName(part.value);
    return row;
}

Row OutlineRow(const PartReport& part) {
    static constexpr std::array kLabels{"",      "condition", "if true", "if false",
                                        "index", "value",     "value"};
    Row row;
    std::string label = kLabels.at(static_cast<std::size_t>(part.kind));
    if (part.kind >= 5) label += std::to_string(part.tag);
    if (!label.empty()) label += ": ";
    row.texts[0] = label + OneLine(ToUtf8(part.formula));
    return row;
}

std::string Warning(const std::string& text, const Style& style) {
    return Painted("Note: ", kYellow, style) + text + "\n";
}

}  // namespace

std::string PrintReport(const ExplorationReport& report, const Style& style) {
    std::string out = Painted(OneLine(ToUtf8(report.cell)), kDim, style) + "  " +
                      Painted(OneLine(ToUtf8(report.formula)), kBold, style) + "\n";
    if (!report.tree) return out;
    std::vector<Row> rows;
    Row heading;
    heading.texts = {"Element", "Location", "Value"};
    rows.push_back(heading);
    AddRows(*report.tree, "", "", style, ReportRow, rows);
    const auto widths = Widths(rows, style);
    out += "\n";
    for (std::size_t k = 0; k < rows.size(); ++k) {
        AppendRow(out, rows[k], widths, style, k == 0 ? kBold : "");
    }
    if (report.bMaybeImprecise || report.bContainsIndirect) out += "\n";
    if (report.bMaybeImprecise && report.bPreciseCalc) {
        out += Warning(
            "some values may be imprecise: a part could not be evaluated in the cell itself.",
            style);
    } else if (report.bMaybeImprecise) {
        out += Warning(
            "some values may be imprecise: parts were evaluated outside their cell "
            "(--precise evaluates them in it).",
            style);
    }
    if (report.bContainsIndirect) {
        out += Warning(
            "the formula has indirect references (INDIRECT): what they lead to changes "
            "with the values.",
            style);
    }
    return out;
}

std::string PrintOutline(const PartReport& root, const Style& style) {
    std::vector<Row> rows;
    AddRows(root, "", "", style, OutlineRow, rows);
    const auto widths = Widths(rows, style);
    std::string out;
    for (const Row& row : rows) AppendRow(out, row, widths, style, "");
    return out;
}

}  // namespace korvane::command
