#include "bindings/scripted/model.h"

#include "base/text.h"

namespace korvane::scripted {

Sheet* Book::FindSheet(std::u16string_view sheetName) const {
    for (const auto& sheet : sheets) {
        if (EqualIgnoringCase(sheet->name, sheetName)) return sheet.get();
    }
    return nullptr;
}

BookPtr Model::FindBook(std::u16string_view bookName) const {
    for (const auto& book : books) {
        if (book->isOpen && EqualIgnoringCase(book->name, bookName)) return book;
    }
    return nullptr;
}

std::optional<Place> FindPlace(const Model& model, std::u16string_view reference) {
    const auto parts = SplitReference(reference);
    if (!parts) return std::nullopt;
    const auto area = ParseArea(parts->rest);
    if (!area) return std::nullopt;
    Place place{model.activeBook, model.activeSheet, *area};
    if (!parts->book.empty()) place.book = model.FindBook(parts->book);
    if (!place.book) return std::nullopt;
    if (!parts->sheet.empty()) {
        place.sheet = place.book->FindSheet(parts->sheet);
    } else if (!parts->book.empty()) {
        return std::nullopt;  // "[B.xls]!A1" names no sheet
    }
    if (!place.sheet) return std::nullopt;
    return place;
}

}  // namespace korvane::scripted
