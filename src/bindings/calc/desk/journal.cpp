#include "bindings/calc/desk/journal.h"

#include <fcntl.h>
#include <unistd.h>

#include "base/attempt.h"
#include "bindings/calc/desk/process_mark.h"

namespace korvane::calc {

namespace fs = std::filesystem;

Journal::Journal(fs::path folder) : folder_(std::move(folder)) {
    const ProcessMark own = OwnMark();
    file_ = folder_ / (kJournalPrefix + std::to_string(own.id) + "-" + std::to_string(own.start) +
                       kJournalSuffix);
    head_ = LineText(JournalHead{own});
}

Journal::~Journal() {
    if (standing_.empty()) Clear();
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool Journal::Open() {
    if (descriptor_ >= 0) return true;
    std::error_code ignored;
    fs::create_directories(folder_, ignored);
    // What the workbooks are called and hold is the user's alone.
    descriptor_ = ::open(file_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600);
    return descriptor_ >= 0 && Append(head_);
}

bool Journal::Append(const std::string& line) {
    std::size_t done = 0;
    while (done < line.size()) {
        const auto count = ::write(descriptor_, line.data() + done, line.size() - done);
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

// Half a line would make the next one unreadable: such a file is given up.
void Journal::Clear() {
    if (descriptor_ < 0) return;
    ::close(descriptor_);
    descriptor_ = -1;
    ::unlink(file_.c_str());
}

template <class Line>
long Journal::Add(Line line, bool toTheDisk) noexcept {
    long number = 0;
    Suppressed([&] {
        if (!Open()) return;
        line.number = next_;
        const auto before = ::lseek(descriptor_, 0, SEEK_END);
        if (!Append(LineText(line))) {
            // Without the half of a line that would hide what comes after it.
            if (before < 0 || ::ftruncate(descriptor_, before) != 0) Clear();
            return;
        }
        if (toTheDisk) ::fdatasync(descriptor_);
        standing_.insert(next_);
        number = next_++;
    });
    return number;
}

long Journal::Note(const FillNote& note) noexcept { return Add(FillLine{0, note}, true); }

long Journal::Note(const FormulaNote& note) noexcept { return Add(FormulaLine{0, note}, false); }

void Journal::Complete(long number, const std::u16string& shown) noexcept {
    Suppressed([&] {
        if (standing_.contains(number)) Append(LineText(ShownLine{number, shown}));
    });
}

void Journal::Forget(long number) noexcept {
    Suppressed([&] {
        if (standing_.erase(number) == 0) return;
        if (standing_.empty()) return Clear();
        Append(LineText(EndLine{number}));
    });
}

}  // namespace korvane::calc
