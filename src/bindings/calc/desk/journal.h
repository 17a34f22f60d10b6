// The journal of this process, in a file of its own.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "bindings/calc/desk/journal_text.h"

namespace korvane::calc {

constexpr const char* kJournalPrefix = "calc-";
constexpr const char* kJournalSuffix = ".journal";

// A fill is on the disk before the cells have it: a file may be saved with it.
// Formulas stand for no longer than a call of the office's main thread, so nothing
// but a crash of the office itself can come between; they are handed to the system,
// and outlive this process but not the machine. There is a file only while
// something is noted.
class Journal : public ChangeJournal {
public:
    // `folder` is made with the first note.
    explicit Journal(std::filesystem::path folder);
    ~Journal() override;

    long Note(const FillNote& note) noexcept override;
    long Note(const FormulaNote& note) noexcept override;
    void Complete(long number, const std::u16string& shown) noexcept override;
    void Forget(long number) noexcept override;

    const std::filesystem::path& file() const { return file_; }

private:
    bool Open();
    bool Append(const std::string& line);
    void Clear();
    template <class Line>
    long Add(Line line, bool toTheDisk) noexcept;

    std::filesystem::path folder_;
    std::filesystem::path file_;
    std::string head_;
    int descriptor_ = -1;
    std::set<long> standing_;
    long next_ = 1;
};

}  // namespace korvane::calc
