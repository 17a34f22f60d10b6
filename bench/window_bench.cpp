// What the explorer window costs: filling its tree, marking its formula, opening.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <nlohmann/json.hpp>

#include "apps/addin/addin.h"
#include "base/text.h"
#include "bindings/qt/qt_view.h"
#include "bindings/qt/tree_control.h"
#include "bindings/scripted/load_document.h"
#include "bindings/scripted/scripted_host.h"
#include "bindings/scripted/scripted_platform.h"
#include "explorer/explorer_design.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

namespace names = explorer_controls;

class NoLoop : public platform::ModalLoop {
public:
    void Run(const std::function<bool()>& /*done*/) override {}
};

// An explorer's window of the model, with a view of Qt or without.
struct Window {
    explicit Window(bool shown) : isShown(shown) {
        form->Show();
        tree.AddColumn(u"", u"Element", 280);
        tree.AddColumn(u"LOCATION", u"Location", 150);
        tree.AddColumn(u"VALUE", u"Value", 120);
        if (isShown) windows.Attach(view);
    }
    ~Window() {
        form.reset();
        if (isShown) windows.Detach(view);
    }
    void Fill(int count) {
        tree.ClearNodes();
        for (int k = 1; k <= count; ++k) {
            tree.AddNode(k == 1 ? 0 : 1, u"node " + ToUtf16(std::to_string(k)), u"SUM(A1:A2)",
                         {u"Sheet1!A1:A2", u"{2;3}"});
        }
        tree.SetExpanded(1, true);
    }
    void Turn() {
        view.Settle();
        QCoreApplication::processEvents();
    }

    bool isShown;
    NoLoop loop;
    platform::Windows windows{loop};
    std::unique_ptr<platform::Form> form = windows.Load(ExplorerDesign());
    platform::TreeView& tree = form->Get<platform::TreeView>(names::kTree);
    platform::RichText& pane = form->Get<platform::RichText>(names::kFormula);
    qt::QtView view{{}};
};

void FillTheModel(benchmark::State& state) {
    Window window(false);
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state) window.Fill(count);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(FillTheModel)->Arg(10'000);

void FillTheQtTree(benchmark::State& state) {
    Window window(true);
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        window.Fill(count);
        window.Turn();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(FillTheQtTree)->Arg(10'000)->Unit(benchmark::kMillisecond);

void ScrollTheQtTree(benchmark::State& state) {
    Window window(true);
    window.Fill(10'000);
    window.Turn();
    auto& widget = dynamic_cast<qt::ColumnTree&>(
        window.view.Find(window.form->Id())->Find(window.tree.Id())->widget());
    int place = 0;
    for (auto _ : state) {
        place = (place + 997) % widget.verticalScrollBar()->maximum();
        widget.verticalScrollBar()->setValue(place);
        benchmark::DoNotOptimize(widget.viewport()->grab());
    }
}
BENCHMARK(ScrollTheQtTree)->Unit(benchmark::kMillisecond);

// Takes the former mark off a formula of 8,000 characters and marks another part.
void MarkASelection(benchmark::State& state) {
    Window window(true);
    std::u16string formula = u"=0";
    while (formula.size() < 8000) formula += u"+SUM(A1:B2)";
    formula.resize(8000);
    window.pane.SetText(formula);
    window.Turn();
    std::int32_t at = 1;
    for (auto _ : state) {
        window.windows.LockUpdates(window.form.get());
        window.pane.SetSelection({0, 8000});
        window.pane.SetSelBold(false);
        window.pane.SetSelUnderline(false);
        window.pane.SetSelColour(0);
        at = (at + 1409) % 7900;
        window.pane.SetSelection({at, 11});
        window.pane.SetSelUnderline(true);
        window.pane.SetSelColour(platform::Rgb(0, 0, 255));
        window.pane.SetSelLength(0);
        window.windows.LockUpdates(nullptr);
        window.view.Settle();
    }
}
BENCHMARK(MarkASelection)->Unit(benchmark::kMillisecond);

// From the command to the painted window, and closed again.
void OpenToShown(benchmark::State& state) {
    const auto json = nlohmann::json::parse(R"json({"workbooks":[{"name":"B.xls","sheets":[
        {"name":"S","cells":{"A1":{"formula":"=SUM(B1,C1)+B1*2","value":9},"B1":2,"C1":3}}]}],
        "literals":true,"evaluate":{"=SUM(B1,C1)":{"value":5}}})json");
    scripted::ScriptedHost host(scripted::LoadDocument(json));
    scripted::ScriptedPlatform platform(host.sharedAccesses());
    Addin addin(platform.Services());
    qt::QtView view({});
    addin.main().AutoOpen(host.Application(), host.AddinWorkbook());
    platform.windows.Attach(view);
    for (auto _ : state) {
        addin.main().Explore();
        view.Settle();
        QCoreApplication::processEvents();
        if (platform.windows.forms().size() != 1) return state.SkipWithError("no window");
        platform.windows.forms().begin()->second->Unload();
        QCoreApplication::processEvents();
    }
    platform.windows.Detach(view);
    addin.main().ShutDown();
}
BENCHMARK(OpenToShown)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvane

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
