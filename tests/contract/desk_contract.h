// What every host that a user works in must keep to beside the rest: what he sees
// and does there. The cases run over the scripted host and over a running Calc.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "contract/host_contract.h"

namespace korvane::test {

// The contract's workbook is the active one; there is another, "Second.fods" with the
// sheet "Only".
class DeskContractHost : public ContractHost {
public:
    // The last handle of the application goes.
    virtual void EndApplication() = 0;

    // ---- what the user does ----
    // References with a sheet, of the contract's workbook.
    virtual void Select(const std::u16string& reference) = 0;
    // Something that is no cells.
    virtual void SelectDrawing() = 0;
    // One of the keys "^%j", "^%k" and "^%l", as OnKey calls them. Those that the
    // add-in has not bound do nothing that could be seen.
    virtual void Press(const std::u16string& key) = 0;
    // A menu's entry or a button by its caption; nothing happens when none is there.
    virtual void Click(const std::u16string& caption) = 0;
    // He goes to one of the two workbooks, and opens it when it is not open.
    virtual void GoTo(const std::u16string& book) = 0;

    // ---- what he sees ----
    // The selected cells: "[Contract.fods]Data!$A$1".
    virtual std::string Selected() = 0;
    // What the status bar shows, to be compared with what it shows at another time.
    virtual std::string StatusBar() = 0;
    // The captions of a bar's entries ("Worksheet Menu Bar", "Formula Auditing"),
    // those within its submenus too, that are not the host's own; as they stand.
    virtual std::vector<std::u16string> Added(const std::u16string& bar) = 0;

    // The procedures that keys have run.
    const std::vector<std::u16string>& ran() const { return ran_; }

protected:
    std::vector<std::u16string> ran_;
};

// Each program that runs the contract defines this one.
std::unique_ptr<DeskContractHost> MakeDeskContractHost();

}  // namespace korvane::test
