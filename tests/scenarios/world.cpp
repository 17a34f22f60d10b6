#include "scenarios/world.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::test {
namespace {

namespace names = explorer_controls;

constexpr std::int64_t kHost = 7;  // the host's main window
constexpr const char* kFormula = "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate";
constexpr int kNoTint = -4142;
constexpr const char16_t* kCells[] = {u"A1", u"A2", u"A3", u"B1", u"C1", u"D1"};

std::unique_ptr<scripted::ScriptedHost> Host() {
    auto host = HostWith(kFormula,
                         R"json("B1":{"formula":"=C1-1","value":2},"C1":3,"D1":4,
                        "A2":{"formula":"=SUM(B1,C1)*2","value":10},
                        "A3":{"formula":"=D1","value":4})json",
                         R"json("literals":true,"evaluate":{
                        "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))":{"value":5},
                        "=B1>1":{"value":true},"=SUM(B1,C1)":{"value":5},
                        "=OFFSET(B1,0,1)":{"range":"S!C1"},
                        "=Rate":{"range":"S!D1"}},
                        "write":{"=SUM(B1,C1)":{"value":6}})json");
    host->model().activeBook->names[u"rate"] = {u"Rate", u"=S!$D$1"};
    host->thisWorkbookName = u"KorvaneExplorer.xla";
    host->thisWorkbookPath = u"C:\\Add-ins";
    host->hwnd = kHost;
    return host;
}

}  // namespace

World::World() : host_(Host()), platform_(host_->sharedAccesses()), addin_(platform_.Services()) {
    platform_.screen.windows[kHost] = {host_->caption, {0, 0, 800, 600}};
    platform_.clock.now = {2026, 11, 16, 12, 0, 0};
    platform_.windows.Attach(mirror_);
}

World::~World() {
    addin_.main().ShutDown();
    platform_.windows.Detach(mirror_);
    EXPECT_TRUE(windows().forms().empty());
    EXPECT_EQ(host_->LiveHandles(), 0);
}

void World::Open() {
    addin_.main().AutoOpen(host_->Application(), host_->AddinWorkbook());
    handles_ = host_->LiveHandles();
}

platform::Form& World::Window(std::size_t number) {
    const auto& forms = windows().forms();
    EXPECT_LE(number, forms.size());
    return *std::next(forms.begin(), static_cast<std::ptrdiff_t>(number) - 1)->second;
}

void World::Select(const char16_t* cell) {
    const auto cells = host_->FindCells(cell).value();
    host_->model().activeBook = cells.book;
    host_->model().activeSheet = cells.sheet;
    host_->model().activeCell = host_->selection = cells.area;
}

std::string World::Here() {
    return ToUtf8(host_->Application()->ActiveCell()->Address(host::kExternal));
}

std::string World::Tinted() {
    std::string tinted;
    for (const auto* cell : kCells) {
        const auto interior = host_->RangeAt(host_->FindCells(cell).value())->Interior();
        if (static_cast<int>(*interior->ColorIndex().Number()) == kNoTint) continue;
        tinted += (tinted.empty() ? "" : " ") + ToUtf8(cell);
    }
    return tinted;
}

std::string World::Setting(const char16_t* key) {
    const auto found = platform_.settings.texts.find({u"Korvane", u"Korvane Explorer", key});
    return found == platform_.settings.texts.end() ? "" : ToUtf8(found->second);
}

std::string World::Line() {
    std::string line = Here() + ", tinted: " + Tinted();
    for (const auto& [id, form] : windows().forms()) {
        const auto& tree = TreeOf(*form);
        line += "\n    " + ToUtf8(tree.Node(1).text) + ": " + std::to_string(tree.SelectedNode()) +
                " " + RowOf(*form) + " <" + MarkedIn(*form) + ">, caret " +
                std::to_string(PaneOf(*form).SelStart()) + "+" +
                std::to_string(PaneOf(*form).SelLength()) + ", open:";
        for (const auto row : VisibleRows(*form)) line += " " + std::to_string(row);
        if (FunctionsOf(*form).Checked()) line += ", functions";
        if (PreciseOf(*form).Checked()) line += ", precise";
        line += ", focus " + std::to_string(form->FocusedControl());
    }
    return line;
}

void World::ExpectNothingLeft() {
    EXPECT_EQ(Count(), 0U);
    EXPECT_EQ(mirror_.forms().size(), 0U);
    EXPECT_EQ(addin_.state().lExplorerCount, 0);
    EXPECT_EQ(Tinted(), "");
    EXPECT_EQ(Focused(), kHost);
    for (const auto* key : {u"FExplorer", u"trvTree", u"lblSplitterBar"}) {
        EXPECT_NE(Setting(key), "") << ToUtf8(key);
    }
    EXPECT_TRUE(platform_.messageBoxes.shown.empty())
        << ToUtf8(platform_.messageBoxes.shown.front().text);
    const auto formula = host_->RangeAt(host_->FindCells(u"A1").value())->Formula();
    EXPECT_EQ(ToUtf8(*formula.Text()), kFormula);
    EXPECT_TRUE(host_->model().screenUpdating);
    EXPECT_TRUE(host_->enableEvents);
    EXPECT_EQ(host_->LiveHandles(), handles_ + static_cast<int>(addin_.state().history->count()));
}

platform::TreeView& TreeOf(platform::Form& window) {
    return window.Get<platform::TreeView>(names::kTree);
}
platform::RichText& PaneOf(platform::Form& window) {
    return window.Get<platform::RichText>(names::kFormula);
}
platform::CheckBox& FunctionsOf(platform::Form& window) {
    return window.Get<platform::CheckBox>(names::kEveryFunction);
}
platform::CheckBox& PreciseOf(platform::Form& window) {
    return window.Get<platform::CheckBox>(names::kPrecise);
}

std::string RowOf(platform::Form& window) {
    const auto& tree = TreeOf(window);
    return tree.SelectedNode() == 0 ? "" : ToUtf8(tree.Node(tree.SelectedNode()).text);
}

std::string MarkedIn(platform::Form& window) {
    const auto& pane = PaneOf(window);
    std::u16string marked;
    for (std::size_t k = 0; k < pane.Text().size(); ++k) {
        const bool plain = pane.LookAt(static_cast<std::int32_t>(k)) == platform::TextLook();
        if (!plain) marked += pane.Text()[k];
    }
    return ToUtf8(marked);
}

std::int32_t NodeWith(platform::Form& window, const char16_t* text) {
    const auto& tree = TreeOf(window);
    for (std::int32_t node = 1; node <= tree.NodeCount(); ++node) {
        if (tree.Node(node).text == text) return node;
    }
    ADD_FAILURE() << "no row " << ToUtf8(text);
    return 1;
}

// Rows are numbered from the top to the bottom.
std::vector<std::int32_t> VisibleRows(platform::Form& window) {
    const auto& tree = TreeOf(window);
    std::vector<bool> visible{true};
    std::vector<std::int32_t> rows;
    for (std::int32_t node = 1; node <= tree.NodeCount(); ++node) {
        const std::int32_t parent = tree.Node(node).parent;
        const bool shown = visible[static_cast<std::size_t>(parent)] &&
                           (parent == 0 || tree.Node(parent).expanded);
        visible.push_back(shown);
        if (shown) rows.push_back(node);
    }
    return rows;
}

}  // namespace korvane::test
