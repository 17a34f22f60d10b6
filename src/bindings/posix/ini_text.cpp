#include "bindings/posix/ini_text.h"

#include "bindings/posix/ini_escape.h"

namespace korvane::posix {
namespace {

enum class LineKind { kBlank, kSection, kBrokenSection, kKey, kOther };

// A stretch of the file's bytes.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct Line {
    LineKind kind = LineKind::kOther;
    Span name;            // of a section or key, escaped
    Span text;            // of a key, escaped
    std::size_t end = 0;  // behind the line end
};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Part(const std::string& bytes, Span span) {
    return std::string_view(bytes).substr(span.begin, span.end - span.begin);
}

Span Trim(const std::string& bytes, Span span) {
    const auto blank = [&](std::size_t at) {
        return bytes[at] == ' ' || bytes[at] == '\t' || bytes[at] == '\r';
    };
    while (span.begin < span.end && blank(span.begin)) ++span.begin;
    while (span.begin < span.end && blank(span.end - 1)) --span.end;
    return span;
}

// A header without its end still ends the section before: what follows it does
// not belong there.
void ReadSection(const std::string& bytes, Span content, Line& line) {
    const auto close = FindUnescaped(Part(bytes, content), ']');
    line.kind = LineKind::kBrokenSection;
    if (close == std::string_view::npos) return;
    line.kind = LineKind::kSection;
    line.name = Trim(bytes, {content.begin + 1, content.begin + close});
}

void ReadKey(const std::string& bytes, Span content, Line& line) {
    const auto equals = FindUnescaped(Part(bytes, content), '=');
    if (equals == std::string_view::npos) return;
    line.kind = LineKind::kKey;
    line.name = Trim(bytes, {content.begin, content.begin + equals});
    line.text = Trim(bytes, {content.begin + equals + 1, content.end});
}

Line ReadLine(const std::string& bytes, std::size_t begin) {
    Line line;
    const auto feed = bytes.find('\n', begin);
    const std::size_t close = feed == std::string::npos ? bytes.size() : feed;
    line.end = feed == std::string::npos ? close : feed + 1;
    if (begin == 0 && bytes.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
        begin = kByteOrderMark.size();
    }
    const Span content = Trim(bytes, {begin, close});
    if (content.begin == content.end) {
        line.kind = LineKind::kBlank;
    } else if (bytes[content.begin] == '[') {
        ReadSection(bytes, content, line);
    } else if (bytes[content.begin] != ';' && bytes[content.begin] != '#') {
        ReadKey(bytes, content, line);
    }
    return line;
}

bool EndsLine(const std::string& bytes, std::size_t at) { return at == 0 || bytes[at - 1] == '\n'; }

}  // namespace

struct IniText::Place {
    bool hasSection = false;
    bool hasKey = false;
    Span text;             // with the key: its text
    std::size_t next = 0;  // with the section: behind its last line that is not blank
};

IniText::Place IniText::PlaceOf(std::u16string_view section, std::u16string_view key) const {
    Place place;
    bool inside = false;
    Line line;
    for (std::size_t at = 0; at < bytes_.size(); at = line.end) {
        line = ReadLine(bytes_, at);
        if (line.kind == LineKind::kBrokenSection) inside = false;
        if (line.kind == LineKind::kSection) inside = Unescape(Part(bytes_, line.name)) == section;
        if (!inside || line.kind == LineKind::kBlank) continue;
        place.hasSection = true;
        place.next = line.end;
        if (line.kind == LineKind::kKey && Unescape(Part(bytes_, line.name)) == key) {
            place.hasKey = true;
            place.text = line.text;
            break;
        }
    }
    return place;
}

std::optional<std::u16string> IniText::Find(std::u16string_view section,
                                            std::u16string_view key) const {
    const Place place = PlaceOf(section, key);
    if (!place.hasKey) return std::nullopt;
    return Unescape(Part(bytes_, place.text));
}

bool IniText::Set(std::u16string_view section, std::u16string_view key, std::u16string_view text) {
    const Place place = PlaceOf(section, key);
    if (!place.hasKey) {
        const std::string line = EscapeName(key) + "=" + EscapeText(text) + "\n";
        if (place.hasSection) {
            InsertLines(place.next, line);
        } else {
            AppendSection("[" + EscapeName(section) + "]\n" + line);
        }
        return true;
    }
    if (Unescape(Part(bytes_, place.text)) == text) return false;
    bytes_.replace(place.text.begin, place.text.end - place.text.begin, EscapeText(text));
    return true;
}

void IniText::InsertLines(std::size_t at, const std::string& lines) {
    bytes_.insert(at, EndsLine(bytes_, at) ? lines : "\n" + lines);
}

void IniText::AppendSection(const std::string& lines) {
    InsertLines(bytes_.size(), bytes_.empty() ? lines : "\n" + lines);
}

}  // namespace korvane::posix
