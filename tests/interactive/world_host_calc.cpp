#include "world_host_calc.h"

#include <com/sun/star/beans/XPropertySet.hpp>

#include "bindings/calc/addin_workbook.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/document_state.h"
#include "bindings/calc/flat_file.h"
#include "bindings/calc/uno_text.h"
#include "desk_host.h"
#include "desk_state.h"
#include "kept_book.h"
#include "tests_in_office.h"

namespace korvane::test {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr sal_Int32 kNoFill = -1;

std::string Content() {
    return calc::testing::FlatText(
        {{"S",
          {{1, 1, "=IF([.B1]>1;SUM([.B1];[.C1]);OFFSET([.B1];0;1))+Rate"},
           {1, 2, "=[.C1]-1"},
           {1, 3, "3"},
           {1, 4, "4"},
           {2, 1, "=SUM([.B1];[.C1])*2"},
           {3, 1, "=[.D1]"}}},
         {"My Sheet", {}}},
        {{"Rate", "[$S.$D$1]"}});
}

class CalcWorldHost : public WorldHost {
public:
    host::ApplicationPtr Application() override {
        auto application = application_.lock();
        if (!application) application_ = application = DeskHost::Start();
        return application;
    }
    host::WorkbookPtr AddinWorkbook() override { return Application()->ThisWorkbook(); }
    std::int64_t Window() override { return calc::WindowHandle(book_->view()->getFrame()); }
    std::u16string Title() override { return book_->Title(); }

    void Select(const std::string& cell) override { book_->Select("S." + cell); }
    std::string Here() override { return book_->Selected(); }
    std::string Tinted() override {
        std::string tinted;
        for (const char* cell : {"A1", "A2", "A3", "B1", "C1", "D1"}) {
            sal_Int32 fill = kNoFill;
            Reference<css::beans::XPropertySet>(book_->Cells(cell), UNO_QUERY_THROW)
                ->getPropertyValue(calc::ToOUString(u"CellBackColor")) >>= fill;
            if (fill != kNoFill) tinted += (tinted.empty() ? "" : " ") + std::string(cell);
        }
        return tinted;
    }
    // As everywhere: nothing in it depends on where it stands.
    std::string SumInItsCell() override { return "5"; }
    bool PutsBackByItself() override { return true; }
    void Rest() override { LetOfficeWork(); }

    std::string Document() override { return calc::testing::StateOf(book_->model()); }
    std::string Desk() override { return DeskState(); }

private:
    KeptBook book_{"B.xls", Content()};
    std::weak_ptr<host::Application> application_;
};

}  // namespace

std::unique_ptr<WorldHost> MakeCalcWorldHost() { return std::make_unique<CalcWorldHost>(); }

}  // namespace korvane::test
