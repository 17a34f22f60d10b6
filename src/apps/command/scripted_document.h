// A scripted document as something to explore.
#pragma once

#include "apps/command/document.h"
#include "bindings/scripted/scripted_host.h"

namespace korvane::command {

class ScriptedDocument : public Document {
public:
    explicit ScriptedDocument(scripted::Model model) : host_(std::move(model)) {}

    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override;
    std::vector<std::u16string> FormulaCells() override;
    // Makes a cell the active one. Throws CommandError kNotFound.
    void Select(const std::u16string& cell);
    // The document's own active cell.
    ExplorationReport ExploreActiveCell(bool bEveryFunction, bool bPreciseCalc);

    // The modes that the document asks for, where it does.
    const scripted::Model& model() { return host_.model(); }
    scripted::ScriptedHost& host() { return host_; }

private:
    scripted::ScriptedHost host_;
};

}  // namespace korvane::command
