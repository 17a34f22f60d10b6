#include "apps/command/lone_cell.h"

namespace korvane::command {
namespace {

scripted::Model LoneSheet() {
    scripted::Model model;
    auto book = std::make_shared<scripted::Book>();
    book->name = u"Book1";
    book->sheets.push_back(std::make_unique<scripted::Sheet>());
    book->sheets.front()->name = u"Sheet1";
    model.activeSheet = book->sheets.front().get();
    model.activeSheet->At(1, 1).content.text = Value(Value::Null{});
    model.activeBook = book;
    model.books.push_back(std::move(book));
    model.literals = true;
    return model;
}

}  // namespace

void LoneCell::LastError::Report(const char16_t* /*module*/, const char16_t* /*procedure*/,
                                 const Error& error, bool /*isEntryPoint*/) {
    description = error.description();
}

LoneCell::LoneCell()
    : host_(LoneSheet()), application_(host_.Application()), options_(*application_, lastError_) {
    options_.rngRootCell =
        host_.RangeAt({host_.model().activeBook, host_.model().activeSheet, Area{}});
}

bool LoneCell::Parse(std::u16string formula, bool bEveryFunction, CElement& root,
                     std::u16string& error) {
    host_.model().activeSheet->At(1, 1).content.formula = std::move(formula);
    options_.bEveryFunction = bEveryFunction;
    if (root.bInitRoot(options_)) return true;
    error = lastError_.description;
    return false;
}

}  // namespace korvane::command
