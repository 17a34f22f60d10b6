#include "apps/command/scripted_document.h"

#include "base/text.h"

namespace korvane::command {

ExplorationReport ScriptedDocument::Explore(const std::u16string& cell, bool bEveryFunction,
                                            bool bPreciseCalc) {
    const auto cells = host_.FindCells(cell);
    if (!cells) {
        throw CommandError(kNotFound, "no cell or name '" + ToUtf8(cell) +
                                          "' in the document; write a cell as Sheet1!B7");
    }
    // As a user would explore: on the cell's own sheet, with the cell selected.
    scripted::Model& model = host_.model();
    model.activeBook = cells->book;
    model.activeSheet = cells->sheet;
    model.activeCell = host_.selection = cells->area.FirstCell();
    return ExploreActiveCell(bEveryFunction, bPreciseCalc);
}

ExplorationReport ScriptedDocument::ExploreActiveCell(bool bEveryFunction, bool bPreciseCalc) {
    const auto application = host_.Application();
    return korvane::Explore(*application, application->ActiveCell(), bEveryFunction, bPreciseCalc);
}

}  // namespace korvane::command
