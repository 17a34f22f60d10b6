// Workbooks, sheets and their names.
#include "base/error.h"
#include "base/text.h"
#include "bindings/scripted/objects.h"

namespace korvane::scripted {

void RequireOpen(const Book& book) {
    if (!book.isOpen) throw Error(kErrorObjectGone, u"The workbook is closed");
}

std::u16string ScriptedWorkbook::Name() {
    host_.Enter("Workbook.Name");
    RequireOpen(*book_);
    return book_->name;
}

std::u16string ScriptedWorkbook::Path() {
    host_.Enter("Workbook.Path");
    RequireOpen(*book_);
    return book_->path;
}

host::NamesPtr ScriptedWorkbook::Names() {
    host_.Enter("Workbook.Names");
    RequireOpen(*book_);
    return std::make_shared<ScriptedNames>(host_, book_, nullptr);
}

void ScriptedWorkbook::Activate() {
    host_.Enter("Workbook.Activate");
    RequireOpen(*book_);
    if (host_.model().activeBook == book_) return;
    if (book_->sheets.empty()) throw Error(kErrorApplication, u"An add-in has no window");
    host_.model().activeBook = book_;
    host_.model().activeSheet = book_->sheets.front().get();
    host_.model().activeCell = host_.selection = Area{};
}

std::u16string ScriptedWorksheet::Name() {
    host_.Enter("Worksheet.Name");
    RequireOpen(*book_);
    return sheet_->name;
}

host::WorkbookPtr ScriptedWorksheet::Parent() {
    host_.Enter("Worksheet.Parent");
    RequireOpen(*book_);
    return std::make_shared<ScriptedWorkbook>(host_, book_);
}

host::NamesPtr ScriptedWorksheet::Names() {
    host_.Enter("Worksheet.Names");
    RequireOpen(*book_);
    return std::make_shared<ScriptedNames>(host_, book_, sheet_);
}

bool ScriptedWorksheet::ProtectContents() {
    host_.Enter("Worksheet.ProtectContents");
    RequireOpen(*book_);
    return sheet_->isProtected;
}

void ScriptedWorksheet::Activate() {
    host_.Enter("Worksheet.Activate");
    RequireOpen(*book_);
    if (host_.model().activeBook == book_ && host_.model().activeSheet == sheet_) return;
    host_.model().activeBook = book_;
    host_.model().activeSheet = sheet_;
    host_.model().activeCell = host_.selection = Area{};
}

host::NamePtr ScriptedNames::Item(std::u16string_view text) {
    host_.Enter("Names.Item", text);
    RequireOpen(*book_);
    const Sheet* sheet = sheet_;
    if (sheet && sheet->names.empty()) return nullptr;
    std::u16string key(text);
    // A sheet's own name is also found through the workbook, by its sheet.
    if (sheet || text.find(u'!') != std::u16string_view::npos) {
        const auto parts = SplitReference(text);
        if (!parts) return nullptr;
        if (!parts->book.empty() && !EqualIgnoringCase(parts->book, book_->name)) return nullptr;
        const Sheet* const named = parts->sheet.empty() ? sheet : book_->FindSheet(parts->sheet);
        if (!named || (sheet && named != sheet)) return nullptr;
        sheet = named;
        key = parts->rest;
    }
    const DefinedNames& names = sheet ? sheet->names : book_->names;
    const auto found = names.find(Fold(key));
    if (found == names.end()) return nullptr;
    return std::make_shared<ScriptedName>(host_, book_, sheet, found->second);
}

std::u16string ScriptedName::Name_() {
    host_.Enter("Name.Name");
    RequireOpen(*book_);
    return sheet_ ? SheetPrefix(u"", sheet_->name) + name_.name : name_.name;
}

std::u16string ScriptedName::RefersTo() {
    host_.Enter("Name.RefersTo");
    RequireOpen(*book_);
    return name_.refersTo;
}

}  // namespace korvane::scripted
