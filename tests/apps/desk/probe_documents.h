// Documents in the office, asked and used as their user would. All members throw the
// office's exceptions.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::test {

using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;

// The open spreadsheet with this title; none when there is none.
Model FindDocument(const Context& context, const std::string& title);
// The titles of all open spreadsheets, one behind the other with a "|".
std::string TitlesOfDocuments(const Context& context);

// Each sheet and each cell that has a content or a look of its own: formula, fill and
// where that comes from, style, number format.
std::string EverythingIn(const Model& model);
// What can be undone and redone.
std::string StepsOf(const Model& model);
// Nothing is locked or switched off that the user needs.
bool IsLocked(const Model& model);
// "Sheet.A1", where the cursor is.
std::string CursorOf(const Model& model);
// How further clicks select: 0 anew, else they add.
std::string SelectionMode(const Context& context, const Model& model);

// A command of the menus, with a text or a number as its argument: ".uno:Undo",
// ".uno:EnterString StringName=5".
std::string RunCommand(const Context& context, const Model& model, const std::string& command);
// "hide", "show", "protect" and "unprotect" a sheet.
void TreatSheet(const Model& model, const std::string& how, const std::string& sheet);

}  // namespace korvane::test
