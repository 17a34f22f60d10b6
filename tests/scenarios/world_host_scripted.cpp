#include "base/text.h"
#include "scenarios/world_host.h"
#include "support/exploring.h"

namespace korvane::test {
namespace {

constexpr std::int64_t kWindow = 7;
constexpr int kNoTint = -4142;
constexpr const char* kCells[] = {"A1", "A2", "A3", "B1", "C1", "D1"};

std::unique_ptr<scripted::ScriptedHost> Host() {
    auto host = HostWith(kExploredFormula,
                         R"json("B1":{"formula":"=C1-1","value":2},"C1":3,"D1":4,
                        "A2":{"formula":"=SUM(B1,C1)*2","value":10},
                        "A3":{"formula":"=D1","value":4})json",
                         R"json("literals":true,"evaluate":{
                        "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))":{"value":5},
                        "=B1>1":{"value":true},"=SUM(B1,C1)":{"value":5},
                        "=OFFSET(B1,0,1)":{"range":"S!C1"},
                        "=OFFSET([B.xls]S!$B$1,0,1,,)":{"range":"S!C1"},
                        "=Rate":{"range":"S!D1"}},
                        "write":{"=SUM(B1,C1)":{"value":6}})json");
    host->model().activeBook->names[u"rate"] = {u"Rate", u"=S!$D$1"};
    host->thisWorkbookName = u"KorvaneExplorer.xla";
    host->thisWorkbookPath = u"C:\\Add-ins";
    host->hwnd = kWindow;
    return host;
}

class ScriptedWorldHost : public WorldHost {
public:
    host::ApplicationPtr Application() override { return host_->Application(); }
    host::WorkbookPtr AddinWorkbook() override { return host_->AddinWorkbook(); }
    std::int64_t Window() override { return kWindow; }
    std::u16string Title() override { return host_->caption; }
    int LiveHandles() override { return host_->LiveHandles(); }

    void Select(const std::string& cell) override {
        const auto cells = Cell(cell);
        auto& model = host_->model();
        model.activeBook = cells.book;
        model.activeSheet = cells.sheet;
        model.activeCell = host_->selection = cells.area;
    }
    std::string Here() override {
        const auto& model = host_->model();
        const auto here = host_->RangeAt({model.activeBook, model.activeSheet, model.activeCell});
        return ToUtf8(here->Address(host::kExternal));
    }
    std::string Tinted() override {
        std::string tinted;
        for (const auto* cell : kCells) {
            if (Fill(cell) == kNoTint) continue;
            tinted += (tinted.empty() ? "" : " ") + std::string(cell);
        }
        return tinted;
    }
    std::string SumInItsCell() override { return "6"; }

    std::string Document() override {
        std::string text;
        for (const auto* name : kCells) {
            const auto formula = host_->RangeAt(Cell(name))->Formula();
            text += std::string(name) + " " + ToUtf8(*formula.Text()) + " " +
                    std::to_string(Fill(name)) + "\n";
        }
        return text + "repaints " + std::to_string(host_->model().screenUpdating) + "\nevents " +
               std::to_string(host_->enableEvents) + "\n";
    }
    std::string Desk() override {
        std::string text = host_->BarsText();
        for (const auto& [key, procedure] : host_->keys) {
            text += ToUtf8(key) + " runs " + ToUtf8(procedure) + "\n";
        }
        return text + "sinks " + std::to_string(host_->applicationSinks.size()) + "\n";
    }

private:
    scripted::Place Cell(const std::string& cell) const {
        return host_->FindCells(ToUtf16("S!" + cell)).value();
    }
    int Fill(const std::string& cell) const {
        return static_cast<int>(*host_->RangeAt(Cell(cell))->Interior()->ColorIndex().Number());
    }

    std::unique_ptr<scripted::ScriptedHost> host_ = Host();
};

}  // namespace

std::unique_ptr<WorldHost> MakeScriptedWorldHost() { return std::make_unique<ScriptedWorldHost>(); }

}  // namespace korvane::test
