// What stands behind a world: a host with the world's workbook in it, and what its
// user does and sees there beside the add-in.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/application.h"
#include "host/workbook.h"

namespace korvane::test {

// The cells of S in "B.xls", beside A1; the name Rate is S!$D$1.
inline constexpr const char* kExploredFormula = "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate";

class WorldHost {
public:
    virtual ~WorldHost() = default;

    // The host object. What the host does for the add-in ends with its last handle.
    virtual host::ApplicationPtr Application() = 0;
    virtual host::WorkbookPtr AddinWorkbook() = 0;
    // Its main window.
    virtual std::int64_t Window() = 0;
    virtual std::u16string Title() = 0;
    // Handles of its objects that are held somewhere, where it counts them.
    virtual int LiveHandles() { return 0; }

    // The user selects a cell of S.
    virtual void Select(const std::string& cell) = 0;
    // The cells that he sees selected: "[B.xls]S!$A$1".
    virtual std::string Here() = 0;
    // The cells of another colour than they had, with blanks between them.
    virtual std::string Tinted() = 0;
    // What SUM(B1,C1) gives when it is written into A1.
    virtual std::string SumInItsCell() = 0;
    // Lets the host do what is due.
    virtual void Rest() {}

    // Whether it puts back by itself, in the end, what a failure kept the add-in from
    // putting back.
    virtual bool PutsBackByItself() { return false; }

    // All that exploring must leave as it is, line by line.
    virtual std::string Document() = 0;
    // All that shutting the add-in down must leave as it was before it started.
    virtual std::string Desk() = 0;
};

// The one that lives in memory.
std::unique_ptr<WorldHost> MakeScriptedWorldHost();

}  // namespace korvane::test
