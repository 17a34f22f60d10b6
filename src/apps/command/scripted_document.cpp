#include "apps/command/scripted_document.h"

#include <algorithm>

#include "base/a1.h"
#include "base/text.h"

namespace korvane::command {

ExplorationReport ScriptedDocument::Explore(const std::u16string& cell, bool bEveryFunction,
                                            bool bPreciseCalc) {
    Select(cell);
    return ExploreActiveCell(bEveryFunction, bPreciseCalc);
}

void ScriptedDocument::Select(const std::u16string& cell) {
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
}

std::vector<std::u16string> ScriptedDocument::FormulaCells() {
    std::vector<std::u16string> cells;
    for (const auto& book : host_.model().books) {
        for (const auto& sheet : book->sheets) {
            std::vector<std::uint64_t> keys;  // they sort by row, then column
            for (const auto& [key, cell] : sheet->cells) {
                if (cell.content.formula) keys.push_back(key);
            }
            std::sort(keys.begin(), keys.end());
            for (const std::uint64_t key : keys) {
                const auto row = static_cast<std::int32_t>(key >> 32);
                const auto column = static_cast<std::int32_t>(key & 0xFFFFFFFF);
                cells.push_back(SheetPrefix(book->name, sheet->name) +
                                AreaText({row, column, row, column}, true, true));
            }
        }
    }
    return cells;
}

ExplorationReport ScriptedDocument::ExploreActiveCell(bool bEveryFunction, bool bPreciseCalc) {
    const auto application = host_.Application();
    return korvane::Explore(*application, application->ActiveCell(), bEveryFunction, bPreciseCalc);
}

}  // namespace korvane::command
