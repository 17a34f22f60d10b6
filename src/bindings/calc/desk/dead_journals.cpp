#include "bindings/calc/desk/dead_journals.h"

#include <fstream>
#include <iterator>

#include "base/attempt.h"
#include "bindings/calc/desk/journal.h"
#include "bindings/calc/desk/process_mark.h"

namespace korvane::calc {

namespace fs = std::filesystem;

namespace {

std::string TextOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool IsJournal(const fs::path& file) {
    const std::string name = file.filename().string();
    return name.starts_with(kJournalPrefix) && name.ends_with(kJournalSuffix);
}

// An empty file is one that its process has just made, or died making.
void KeepAside(const fs::path& file) {
    std::error_code ignored;
    fs::rename(file, fs::path(file).concat(".unreadable"), ignored);
}

}  // namespace

std::vector<DeadJournals::Found> DeadJournals::Of(const std::u16string& url) const {
    std::vector<Found> all;
    Suppressed([&] {
        std::error_code missing;
        for (const auto& entry : fs::directory_iterator(folder_, missing)) {
            if (!IsJournal(entry.path())) continue;
            Found found{entry.path(), {}};
            const std::string text = TextOf(found.file);
            if (text.empty()) continue;
            if (ReadJournal(text, found.content) == JournalReading::kCorrupt) {
                KeepAside(found.file);
                continue;
            }
            if (IsAlive(found.content.process)) continue;
            const auto isOther = [&](const auto& line) { return line.note.url != url; };
            std::erase_if(found.content.fills, isOther);
            std::erase_if(found.content.formulas, isOther);
            if (!found.content.fills.empty() || !found.content.formulas.empty()) {
                all.push_back(std::move(found));
            }
        }
    });
    return all;
}

// Two processes may do so at a time: lines are only added, and one that was added
// twice says the same.
void DeadJournals::Forget(const fs::path& file, const std::set<long>& numbers) {
    Suppressed([&] {
        std::string text = TextOf(file);
        std::string more;
        // A line that was cut off must not swallow the next one.
        const auto end = text.rfind('\n');
        if (end == std::string::npos) return;
        const bool isCut = end + 1 != text.size();
        for (const long number : numbers) more += LineText(EndLine{number});
        JournalContent left;
        ReadJournal(text.substr(0, end + 1) + more, left);
        std::error_code ignored;
        if (left.fills.empty() && left.formulas.empty()) {
            fs::remove(file, ignored);
            return;
        }
        if (isCut) fs::resize_file(file, end + 1, ignored);
        std::ofstream(file, std::ios::binary | std::ios::app) << more << std::flush;
    });
}

}  // namespace korvane::calc
