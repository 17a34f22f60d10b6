// What a scripted host holds: plain data, free to be changed by tests.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/a1.h"
#include "base/value.h"

namespace korvane::scripted {

// What evaluating a text gives.
struct Answer {
    enum class Kind { kValue, kRange, kFail };
    Kind kind = Kind::kValue;
    Value value;           // kValue
    std::u16string range;  // kRange: a reference such as "S!B3"
};

// What stands in a cell.
struct Content {
    std::optional<std::u16string> formula;  // with "="; none for a constant
    Value value;
    std::optional<Value> text;  // as displayed (a text or null); none: the value's text
    bool hasArray = false;
    std::optional<Area> currentArray;  // none: the cell alone
};

struct Cell {
    Content content;
    // What stood here before another formula was written: writing its own again
    // puts the cell back.
    std::optional<Content> original;
    // The cell alone answers as if its row or column were hidden: a report that
    // knows no more than the cell.
    bool hiddenRow = false;
    bool hiddenColumn = false;
};

struct DefinedName {
    std::u16string name;      // without prefix
    std::u16string refersTo;  // with "="
};
// By the folded name.
using DefinedNames = std::map<std::u16string, DefinedName>;

// A fill that was put over an area; later ones lie on top.
struct Fill {
    Area area;
    int colorIndex = 0;
    double color = 0;
};

struct Sheet {
    std::u16string name;
    bool isProtected = false;
    DefinedNames names;
    std::set<std::int32_t> hiddenRows;
    std::set<std::int32_t> hiddenColumns;
    std::unordered_map<std::uint64_t, Cell> cells;
    std::vector<Fill> fills;

    static std::uint64_t Key(std::int32_t row, std::int32_t column) {
        return static_cast<std::uint64_t>(row) << 32 | static_cast<std::uint32_t>(column);
    }
    // Null for an empty cell.
    Cell* Find(std::int32_t row, std::int32_t column) {
        const auto found = cells.find(Key(row, column));
        return found == cells.end() ? nullptr : &found->second;
    }
    Cell& At(std::int32_t row, std::int32_t column) { return cells[Key(row, column)]; }
};

struct Book {
    std::u16string name;
    std::u16string path;
    bool isOpen = true;  // false: every access to the book and its cells fails
    DefinedNames names;
    std::vector<std::unique_ptr<Sheet>> sheets;

    Sheet* FindSheet(std::u16string_view sheetName) const;  // ignoring case; null for none
};
using BookPtr = std::shared_ptr<Book>;

struct Model {
    std::vector<BookPtr> books;
    BookPtr activeBook;
    Sheet* activeSheet = nullptr;
    Area activeCell;
    // Answers to Evaluate and to formulas written into a cell, by exact text.
    std::unordered_map<std::u16string, Answer> evaluate;
    std::unordered_map<std::u16string, Answer> write;
    bool literals = false;  // numbers, texts and TRUE/FALSE evaluate to themselves
    int calculation = -4105;
    bool screenUpdating = true;
    // The add-in's own workbook: its name, and the folder that holds it.
    std::u16string addinName = u"KorvaneExplorer.xla";
    std::u16string addinPath;
    // How the document asks to be explored, if it does.
    std::optional<bool> bEveryFunction;
    std::optional<bool> bPreciseCalc;

    BookPtr FindBook(std::u16string_view bookName) const;  // open ones, ignoring case
};

// A place in the model.
struct Place {
    BookPtr book;
    Sheet* sheet = nullptr;
    Area area;
};

// Reads a reference such as "A1", "S!A1:B3", "'[B.xls]My Sheet'!A:A". Without a
// sheet it means the active one. Nothing when the text is none, or leads to a
// book or sheet that is not there.
std::optional<Place> FindPlace(const Model& model, std::u16string_view reference);

}  // namespace korvane::scripted
