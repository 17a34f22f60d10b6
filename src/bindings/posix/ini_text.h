// Texts under sections and keys, as lines that a person can read and edit:
//
//   [Section]
//   key=text
//
// A backslash begins a character that would not survive in such a line: \\ \n
// \r \t, \s for a blank at an end, \uXXXX for a UTF-16 unit (so that even half a
// surrogate pair survives), and in names also \= \[ \] \; \#. Before any other
// character it stands for itself. Blanks around names and texts do not count.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace korvane::posix {

// What was not understood when it was read (comments, broken lines, bytes that
// are no UTF-8) stays in its place, byte for byte. Of a key that stands twice in
// a section the first counts; a section may come in several pieces.
class IniText {
public:
    // Any bytes: a file that was torn or never was of this kind has no keys.
    explicit IniText(std::string bytes) : bytes_(std::move(bytes)) {}

    // The text under the key; nothing when there is none.
    std::optional<std::u16string> Find(std::u16string_view section, std::u16string_view key) const;
    // Puts the text under the key. False when it stands there already, and
    // nothing was changed.
    bool Set(std::u16string_view section, std::u16string_view key, std::u16string_view text);

    const std::string& bytes() const { return bytes_; }

private:
    // Where a key's text stands, or else where its line would go.
    struct Place;
    Place PlaceOf(std::u16string_view section, std::u16string_view key) const;
    // Whole lines, begun on a line of their own.
    void InsertLines(std::size_t at, const std::string& lines);
    void AppendSection(const std::string& lines);

    std::string bytes_;
};

}  // namespace korvane::posix
