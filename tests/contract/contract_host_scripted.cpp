// The contract's workbook in the scripted host.
#include "base/a1.h"
#include "base/text.h"
#include "bindings/scripted/scripted_command_bars.h"
#include "contract/desk_contract.h"
#include "support/exploring.h"

namespace korvane::test {
namespace {

constexpr const char* kDocument = R"json({
  "addin": {"name": "KorvaneExplorer.xla", "path": "C:\\Add-ins"},
  "workbooks": [{
    "name": "Contract.fods",
    "names": {"Rate": "='My Sheet'!$A$2", "Block": "=Data!$A$1:$B$3", "Twice": "=Data!$B$2*2"},
    "sheets": [
      {"name": "Data", "names": {"Own": "=Data!$B$2"}, "hiddenRows": [8], "hiddenCols": ["H"],
       "cells": {
         "A1": 1, "A2": 2, "A3": 3, "A4": "text",
         "B1": 10, "B2": 20, "B3": 30, "B4": true,
         "C1": {"formula": "=SUM(A1:A3)*B1", "value": 60},
         "C2": {"formula": "=1/0", "value": {"error": 2007}},
         "C3": {"formula": "=NA()", "value": {"error": 2042}},
         "C4": {"formula": "=SUM(A1:A3*B1:B3)", "value": 140, "hasArray": true},
         "C5": {"formula": "=A1:A2*2", "value": 2, "hasArray": true, "currentArray": "C5:C6"},
         "C6": {"formula": "=A1:A2*2", "value": 4, "hasArray": true, "currentArray": "C5:C6"}}},
      {"name": "My Sheet", "cells": {"A1": 5, "A2": 6}},
      {"name": "Locked", "protected": true,
       "cells": {"A1": 7, "B1": {"formula": "=A1*2", "value": 14}}}]},
    {"name": "Second.fods", "sheets": [{"name": "Only"}]}],
  "evaluate": {
    "=INDEX(A1:B3,2,2)": {"range": "Data!B2"},
    "=OFFSET([Contract.fods]Data!$A$1,1,1,,)": {"range": "Data!B2"},
    "=INDIRECT(\"Data!B2\",1)": {"range": "Data!B2"},
    "=A1>0": {"value": true},
    "=SUM(A1:A3)": {"value": 6},
    "=Data!$B$2*2": {"value": 40},
    "=A1:A3*2": {"value": [[2], [4], [6]]},
    "=1/0": {"error": 2007},
    "=SUM(1,": {"error": 2015},
    "=A1+B2": {"value": 21}},
  "write": {"=SUM(1,": {"fail": true}},
  "literals": true})json";

class ScriptedContractHost : public DeskContractHost {
public:
    ScriptedContractHost() : host_(HostOf(kDocument)), application_(host_->Application()) {}

    host::Application& application() override { return *application_; }
    host::RangePtr Cells(const std::u16string& reference) override {
        return host_->RangeAt(PlaceOf(reference));
    }
    void CloseBook() override { host_->CloseBook(u"Contract.fods"); }
    void EndApplication() override { application_.reset(); }

    void Select(const std::u16string& reference) override {
        const auto place = PlaceOf(reference);
        auto& model = host_->model();
        model.activeBook = place.book;
        model.activeSheet = place.sheet;
        model.activeCell = place.area.FirstCell();
        host_->selection = place.area;
        host_->selectedObject.clear();
    }
    void SelectDrawing() override { host_->selectedObject = u"Shape"; }
    void Press(const std::u16string& key) override {
        if (const auto bound = host_->keys.find(key); bound != host_->keys.end()) {
            ran_.push_back(bound->second);
        }
    }
    void Click(const std::u16string& caption) override {
        bool cancelDefault = false;
        for (const char16_t* bar : {u"Worksheet Menu Bar", u"Formula Auditing"}) {
            const auto controls = host_->Application()->CommandBars()->Item(bar)->Controls();
            if (const auto found = Find(*controls, caption)) {
                return host_->RaiseClick(found, cancelDefault);
            }
        }
    }
    void GoTo(const std::u16string& book) override {
        auto& model = host_->model();
        for (const auto& one : model.books) {
            if (one->name != book || one == model.activeBook) continue;
            model.activeBook = one;
            model.activeSheet = one->sheets.front().get();
            host_->RaiseWindowActivate();
            return;
        }
    }

    std::string Selected() override {
        const auto& model = host_->model();
        return ToUtf8(host_->RangeAt({model.activeBook, model.activeSheet, host_->selection})
                          ->Address(host::kExternal));
    }
    std::string StatusBar() override {
        const auto* const text = host_->statusBar.Text();
        return text != nullptr ? ToUtf8(*text) : "the host's own";
    }
    std::vector<std::u16string> Added(const std::u16string& bar) override {
        std::vector<std::u16string> captions;
        for (const auto& one : host_->bars()->children) {
            if (one->caption != bar) continue;
            one->Walk([&](scripted::ControlData& control, int depth) {
                if (depth > 0 && control.temporary) captions.push_back(control.caption);
            });
        }
        return captions;
    }

private:
    scripted::Place PlaceOf(const std::u16string& reference) const {
        const auto parts = SplitReference(reference).value();
        const auto book = host_->model().FindBook(u"Contract.fods");
        return {book, book->FindSheet(parts.sheet), ParseArea(parts.rest).value()};
    }
    static host::CommandBarControlPtr Find(host::CommandBarControls& controls,
                                           const std::u16string& caption) {
        for (int k = 1; k <= controls.Count(); ++k) {
            auto control = controls.Item(k);
            if (control->Caption() == caption) return control;
            if (control->TypeName() != u"CommandBarPopup") continue;
            if (auto found = Find(*control->Controls(), caption)) return found;
        }
        return nullptr;
    }

    std::unique_ptr<scripted::ScriptedHost> host_;
    host::ApplicationPtr application_;
};

}  // namespace

std::unique_ptr<ContractHost> MakeContractHost() {
    return std::make_unique<ScriptedContractHost>();
}

std::unique_ptr<DeskContractHost> MakeDeskContractHost() {
    return std::make_unique<ScriptedContractHost>();
}

}  // namespace korvane::test
