#include "bindings/calc/desk/journal_text.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/text.h"

namespace korvane::calc {

namespace {

constexpr std::string_view kHead = "korvane-calc-journal-1";
constexpr std::string_view kFill = "fill";
constexpr std::string_view kFormula = "formula";
constexpr std::string_view kShown = "shown";
constexpr std::string_view kEnd = "end";
constexpr std::size_t kBlockNumbers = 5;
constexpr std::size_t kPartFields = kBlockNumbers + 2;
// Larger than any sheet has rows.
constexpr long kLargestPlace = 1L << 24;

using Fields = std::vector<std::string>;

std::string Escaped(std::string_view text) {
    std::string out;
    for (const char ch : text) {
        switch (ch) {
            case '%': out += "%25"; break;
            case '\t': out += "%09"; break;
            case '\n': out += "%0A"; break;
            case '\r': out += "%0D"; break;
            default: out += ch;
        }
    }
    return out;
}

std::string Unescaped(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const std::string_view code = text.substr(0, 3);
        const char special = code == "%25"   ? '%'
                             : code == "%09" ? '\t'
                             : code == "%0A" ? '\n'
                             : code == "%0D" ? '\r'
                                             : '\0';
        out += special != '\0' ? special : text.front();
        text.remove_prefix(special != '\0' ? 3 : 1);
    }
    return out;
}

class Writer {
public:
    explicit Writer(std::string_view word) : line_(word) {}
    Writer& Add(std::string_view text) {
        line_ += '\t';
        line_ += Escaped(text);
        return *this;
    }
    Writer& Add(const std::u16string& text) { return Add(std::string_view(ToUtf8(text))); }
    Writer& AddNumber(long long number) { return Add(std::string_view(std::to_string(number))); }
    Writer& Add(const Fill& fill) { return AddNumber(fill.color).AddNumber(fill.isOwn ? 1 : 0); }
    std::string Done() { return line_ + '\n'; }

private:
    std::string line_;
};

// Reads fields in turn; what is missing or no number makes it fail.
class Reader {
public:
    explicit Reader(const Fields& fields) : fields_(fields) {}
    std::string Text() {
        if (at_ >= fields_.size()) {
            failed_ = true;
            return {};
        }
        return fields_[at_++];
    }
    std::u16string Wide() { return ToUtf16(Text()); }
    long long Number() {
        const std::string text = Text();
        long long number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
            failed_ = true;
        }
        return number;
    }
    sal_Int32 Place() {
        const long long number = Number();
        if (number < 0 || number > kLargestPlace) failed_ = true;
        return static_cast<sal_Int32>(number);
    }
    bool Flag() { return Number() != 0; }
    calc::Fill Fill() {
        const long long color = Number();
        if (color < kNoFill || color > 0xFFFFFF) failed_ = true;
        return {static_cast<sal_Int32>(color), Flag()};
    }
    std::size_t Left() const { return fields_.size() - at_; }
    // All was there and nothing is left.
    bool Succeeded() const { return !failed_ && at_ == fields_.size(); }

private:
    const Fields& fields_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

Fields FieldsOf(std::string_view line) {
    Fields fields;
    for (std::size_t from = 0;;) {
        const auto tab = line.find('\t', from);
        fields.push_back(Unescaped(line.substr(from, tab - from)));
        if (tab == std::string_view::npos) return fields;
        from = tab + 1;
    }
}

std::optional<JournalLine> LineOf(std::string_view text) {
    const Fields fields = FieldsOf(text);
    Reader reader(fields);
    const std::string word = reader.Text();
    JournalLine line;
    if (word == kHead) {
        JournalHead head;
        head.process.id = static_cast<long>(reader.Number());
        head.process.start = reader.Number();
        head.process.boot = reader.Text();
        line = head;
    } else if (word == kFill) {
        FillLine fill{static_cast<long>(reader.Number()), {}};
        fill.note.url = reader.Wide();
        fill.note.sheet = reader.Wide();
        fill.note.written = reader.Fill();
        while (reader.Left() >= kPartFields) {
            FillNote::Part part;
            part.block.Sheet = static_cast<sal_Int16>(reader.Place());
            part.block.StartColumn = reader.Place();
            part.block.StartRow = reader.Place();
            part.block.EndColumn = reader.Place();
            part.block.EndRow = reader.Place();
            part.before = reader.Fill();
            fill.note.parts.push_back(part);
        }
        line = fill;
    } else if (word == kFormula) {
        FormulaLine formula{static_cast<long>(reader.Number()), {}};
        formula.note.url = reader.Wide();
        formula.note.sheet = reader.Wide();
        formula.note.column = reader.Place();
        formula.note.row = reader.Place();
        formula.note.before = reader.Wide();
        formula.note.beforeIsFormula = reader.Flag();
        formula.note.hadOwnFormat = reader.Flag();
        formula.note.written = reader.Wide();
        line = formula;
    } else if (word == kShown) {
        const auto number = static_cast<long>(reader.Number());
        line = ShownLine{number, reader.Wide()};
    } else if (word == kEnd) {
        line = EndLine{static_cast<long>(reader.Number())};
    } else {
        return std::nullopt;
    }
    if (!reader.Succeeded()) return std::nullopt;
    return line;
}

struct TextOf {
    std::string operator()(const JournalHead& line) const {
        return Writer(kHead)
            .AddNumber(line.process.id)
            .AddNumber(line.process.start)
            .Add(line.process.boot)
            .Done();
    }
    std::string operator()(const FillLine& line) const {
        Writer writer(kFill);
        writer.AddNumber(line.number).Add(line.note.url).Add(line.note.sheet);
        writer.Add(line.note.written);
        for (const auto& part : line.note.parts) {
            writer.AddNumber(part.block.Sheet)
                .AddNumber(part.block.StartColumn)
                .AddNumber(part.block.StartRow)
                .AddNumber(part.block.EndColumn)
                .AddNumber(part.block.EndRow)
                .Add(part.before);
        }
        return writer.Done();
    }
    std::string operator()(const FormulaLine& line) const {
        return Writer(kFormula)
            .AddNumber(line.number)
            .Add(line.note.url)
            .Add(line.note.sheet)
            .AddNumber(line.note.column)
            .AddNumber(line.note.row)
            .Add(line.note.before)
            .AddNumber(line.note.beforeIsFormula ? 1 : 0)
            .AddNumber(line.note.hadOwnFormat ? 1 : 0)
            .Add(line.note.written)
            .Done();
    }
    std::string operator()(const ShownLine& line) const {
        return Writer(kShown).AddNumber(line.number).Add(line.shown).Done();
    }
    std::string operator()(const EndLine& line) const {
        return Writer(kEnd).AddNumber(line.number).Done();
    }
};

}  // namespace

std::string LineText(const JournalLine& line) { return std::visit(TextOf{}, line); }

JournalReading ReadJournal(std::string_view text, JournalContent& content) {
    content = {};
    bool isFirst = true;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        const auto line = LineOf(text.substr(0, end));
        text.remove_prefix(end + 1);
        if (!line) return JournalReading::kCorrupt;
        if (const auto* head = std::get_if<JournalHead>(&*line)) {
            if (!isFirst) return JournalReading::kCorrupt;
            content.process = head->process;
        } else if (isFirst) {
            return JournalReading::kCorrupt;
        }
        isFirst = false;
        if (const auto* fill = std::get_if<FillLine>(&*line)) content.fills.push_back(*fill);
        if (const auto* formula = std::get_if<FormulaLine>(&*line)) {
            content.formulas.push_back(*formula);
        }
        if (const auto* shown = std::get_if<ShownLine>(&*line)) {
            for (auto& formula : content.formulas) {
                if (formula.number == shown->number) formula.note.shown = shown->shown;
            }
        }
        if (const auto* ended = std::get_if<EndLine>(&*line)) {
            const auto isIt = [&](const auto& other) { return other.number == ended->number; };
            std::erase_if(content.fills, isIt);
            std::erase_if(content.formulas, isIt);
        }
    }
    return isFirst ? JournalReading::kCorrupt : JournalReading::kReady;
}

}  // namespace korvane::calc
