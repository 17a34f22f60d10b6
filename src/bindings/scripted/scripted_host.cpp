#include "bindings/scripted/scripted_host.h"

#include <cassert>

#include "base/error.h"
#include "bindings/scripted/objects.h"
#include "bindings/scripted/scripted_command_bars.h"

namespace korvane::scripted {

ScriptedHost::ScriptedHost(Model model, std::shared_ptr<Accesses> accesses)
    : thisWorkbookName(model.addinName),
      thisWorkbookPath(model.addinPath),
      selection(model.activeCell),
      model_(std::move(model)),
      accesses_(accesses ? std::move(accesses) : std::make_shared<Accesses>()),
      bars_(BuiltInBars()) {}

ScriptedHost::~ScriptedHost() { assert(liveHandles_ == 0); }

host::ApplicationPtr ScriptedHost::Application() {
    auto application = application_.lock();
    if (!application) {
        application = std::make_shared<ScriptedApplication>(*this);
        application_ = application;
    }
    return application;
}

host::WorkbookPtr ScriptedHost::AddinWorkbook() {
    auto book = std::make_shared<Book>();
    book->name = thisWorkbookName;
    book->path = thisWorkbookPath;
    return std::make_shared<ScriptedWorkbook>(*this, std::move(book));
}

host::RangePtr ScriptedHost::RangeAt(const Place& place) {
    return std::make_shared<ScriptedRange>(*this, place);
}

std::optional<Place> ScriptedHost::FindCells(const std::u16string& text) const {
    try {
        return Denote(u"=" + text).cells;
    } catch (const Error&) {
        return std::nullopt;  // the document lets this very text fail
    }
}

void ScriptedHost::CloseBook(const std::u16string& name) {
    const BookPtr book = model_.FindBook(name);
    if (!book) return;
    book->isOpen = false;
    if (model_.activeBook != book) return;
    for (const auto& other : model_.books) {
        if (!other->isOpen) continue;
        model_.activeBook = other;
        model_.activeSheet = other->sheets.front().get();
        model_.activeCell = Area{};
        return;
    }
    nothingOpen = true;
}

}  // namespace korvane::scripted
