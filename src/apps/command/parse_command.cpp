#include "apps/command/parse_command.h"

#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/command/lone_cell.h"
#include "apps/command/tree_printer.h"
#include "apps/report/exploration.h"
#include "base/text.h"

namespace korvane::command {
namespace {

using Json = nlohmann::ordered_json;

// A hundred times the longest formula that a host takes. A line beyond it is
// passed over without being kept.
constexpr std::size_t kLongestLine = std::size_t{1} << 20;

class Lines {
public:
    explicit Lines(std::FILE* in) : in_(in), buffer_(std::size_t{1} << 16) {}

    // The next line without its end ("\n" or "\r\n"); false at the end.
    // `tooLong` says that the line was longer than kLongestLine.
    bool Next(std::string& line, bool& tooLong) {
        line.clear();
        tooLong = false;
        bool any = false;
        for (;;) {
            if (at_ == end_) {
                at_ = 0;
                end_ = std::fread(buffer_.data(), 1, buffer_.size(), in_);
                if (end_ == 0) break;
            }
            any = true;
            const char* begin = buffer_.data() + at_;
            const auto* stop = static_cast<const char*>(std::memchr(begin, '\n', end_ - at_));
            const std::size_t length = stop ? static_cast<std::size_t>(stop - begin) : end_ - at_;
            tooLong = tooLong || line.size() + length > kLongestLine;
            if (!tooLong) line.append(begin, length);
            at_ += length + (stop ? 1 : 0);
            if (stop) break;
        }
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return any;
    }

private:
    std::FILE* in_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
};

Json NodeOf(const CElement& element) {
    Json children = Json::array();
    for (const auto& sub : element.colSubs()) children.push_back(NodeOf(*sub));
    return Json{{"name", ToUtf8(element.sName())},
                {"function", ToUtf8(element.sFunction())},
                {"formula", ToUtf8(element.sFormula())},
                {"kind", static_cast<int>(element.enGetType())},
                {"tag", element.lTag()},
                {"pos", element.lPos()},
                {"rootPos", element.lRootPosition()},
                {"length", element.lLength()},
                {"children", std::move(children)}};
}

// The formula that a line stands for.
std::string FormulaOf(const std::string& line) {
    if (line.empty() || line.front() != '"') return line;
    return Json::parse(line).get<std::string>();
}

}  // namespace

ExitCode RunParse(const ParseOptions& options, const Style& style, std::FILE* in, std::FILE* out) {
    std::int64_t formulas = 0;
    std::int64_t elements = 0;
    std::int64_t failures = 0;
    LoneCell cell;
    Lines lines(in);
    std::string line;
    bool tooLong = false;
    const auto write = [&](const std::string& text) {
        if (!options.count) std::fwrite(text.data(), 1, text.size(), out);
    };
    const auto fail = [&](const std::string& formula, const std::string& error) {
        ++failures;
        if (options.json) {
            // Bytes that are no UTF-8 are shown as U+FFFD.
            write(Json{{"formula", formula}, {"error", error}}.dump(
                      -1, ' ', false, Json::error_handler_t::replace) +
                  "\n");
        } else {
            write(OneLine(formula) + "\n  error: " + OneLine(error) + "\n");
        }
    };
    while (lines.Next(line, tooLong)) {
        ++formulas;
        if (tooLong) {
            fail("", "the line is too long for a formula (1 MiB at most)");
            continue;
        }
        std::string formula;
        try {
            formula = FormulaOf(line);
        } catch (const Json::exception&) {
            fail(line, "a line that begins with a double quote must be a JSON string");
            continue;
        }
        CElement root;
        std::u16string error;
        if (!cell.Parse(ToUtf16(formula), options.functions, root, error)) {
            fail(formula, ToUtf8(error));
        } else if (options.count) {
            elements += CountElements(root);
        } else if (options.json) {
            write(Json{{"formula", ToUtf8(root.sFormula())}, {"tree", NodeOf(root)}}.dump() + "\n");
        } else {
            write(PrintOutline(PartOf(root), style));
        }
    }
    if (options.count) {
        std::fprintf(out, "formulas: %lld\nelements: %lld\nfailures: %lld\n",
                     static_cast<long long>(formulas), static_cast<long long>(elements),
                     static_cast<long long>(failures));
    }
    std::fflush(out);
    return failures > 0 ? kExplorationFailed : kDone;
}

}  // namespace korvane::command
