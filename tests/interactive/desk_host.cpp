#include "desk_host.h"

#include <cstdlib>

#include "bindings/calc/calc_sheets.h"
#include "bindings/calc/desk/window_events.h"
#include "tests_in_office.h"

namespace korvane::test {

std::filesystem::path JournalFolder() {
    return std::filesystem::path(std::getenv("XDG_STATE_HOME")) / "korvane";
}

host::ApplicationPtr DeskHost::Start() {
    const auto host = std::make_shared<DeskHost>();
    return {host, &host->application_};
}

DeskHost::DeskHost()
    : keys_(OfficeContext()),
      bars_(std::make_shared<calc::CalcCommandBars>(OfficeContext(), OfficeCommands())),
      application_(OfficeContext(), {u"korvane-office.so", u"/add-in"}, Parts()),
      guard_(OfficeContext(), JournalFolder(),
             [this](const Model& model) { return DocumentOf(model); }),
      following_(calc::ConnectWindowEvents(OfficeContext(), follower_,
                                           [this](const Model& model) -> host::WorkbookPtr {
                                               application_.documents().NoteActive(model);
                                               guard_.Look(model);
                                               return nullptr;
                                           })) {
    if (auto* const open = application_.documents().Active()) guard_.Look(open->document->model());
}

DeskHost::~DeskHost() { bars_->Close(); }

calc::DeskParts DeskHost::Parts() {
    calc::DeskParts parts;
    parts.commandBars = [this] { return bars_; };
    parts.bindKey = [this](const std::u16string& key, const std::u16string& procedure) {
        keys_.Bind(key, calc::CommandUrl(procedure));
    };
    parts.releaseKey = [this](const std::u16string& key) { keys_.Release(key); };
    parts.connect = [this](host::ApplicationEvents& sink) {
        return calc::ConnectWindowEvents(OfficeContext(), sink,
                                         [this](const Model& model) -> host::WorkbookPtr {
                                             const auto document = DocumentOf(model);
                                             if (!document) return nullptr;
                                             return std::make_shared<calc::CalcWorkbook>(document);
                                         });
    };
    return parts;
}

calc::DocumentPtr DeskHost::DocumentOf(const Model& model) {
    auto* const open = application_.documents().Of(model);
    return open != nullptr ? open->document : nullptr;
}

}  // namespace korvane::test
