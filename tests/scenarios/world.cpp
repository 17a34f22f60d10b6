#include "scenarios/world.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/text.h"
#include "bindings/resources/built_in_pictures.h"

namespace korvane::test {
namespace {

namespace names = explorer_controls;

// What a line of text differs in from another, for a message.
std::string Difference(const std::string& before, const std::string& after) {
    std::istringstream first(before);
    std::istringstream second(after);
    std::string text;
    for (std::string a, b; first || second; a.clear(), b.clear()) {
        std::getline(first, a);
        std::getline(second, b);
        if (a != b) text += "before: " + a + "\nafter:  " + b + "\n";
    }
    return text;
}

}  // namespace

World::World(std::unique_ptr<WorldHost> host)
    : host_(std::move(host)), addin_(platform_.Services()) {
    platform_.screen.windows[host_->Window()] = {host_->Title(), {0, 0, 800, 600}};
    platform_.clock.now = {2026, 11, 16, 12, 0, 0};
    for (auto& [name, picture] : platform_.resources.pictures) {
        picture = resources::BuiltInPictures().Picture(name);
    }
    platform_.windows.Attach(mirror_);
    document_ = host_->Document();
    desk_ = host_->Desk();
}

World::~World() {
    ShutDown();
    platform_.windows.Detach(mirror_);
}

void World::Open() {
    addin_.main().AutoOpen(watched_.Watch(host_->Application()),
                           watched_.Watch(host_->AddinWorkbook()));
    handles_ = watched_.LiveHandles();
    host_->Rest();
}

void World::ShutDown() {
    addin_.main().ShutDown();
    host_->Rest();
}

std::string World::LeftBehind() {
    std::string left = Difference(document_, host_->Document()) + Difference(desk_, host_->Desk());
    const auto count = [&](const char* what, int number) {
        if (number != 0) left += what + std::to_string(number) + "\n";
    };
    count("windows: ", static_cast<int>(windows().forms().size()));
    count("handles: ", watched_.LiveHandles());
    count("handles of the host itself: ", host_->LiveHandles());
    return left;
}

platform::Form& World::Window(std::size_t number) {
    const auto& forms = windows().forms();
    EXPECT_LE(number, forms.size());
    return *std::next(forms.begin(), static_cast<std::ptrdiff_t>(number) - 1)->second;
}

void World::Select(const char16_t* cell) {
    host_->Select(ToUtf8(cell));
    host_->Rest();
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
    EXPECT_EQ(Focused(), host_->Window());
    for (const auto* key : {u"FExplorer", u"trvTree", u"lblSplitterBar"}) {
        EXPECT_NE(Setting(key), "") << ToUtf8(key);
    }
    EXPECT_TRUE(platform_.messageBoxes.shown.empty())
        << ToUtf8(platform_.messageBoxes.shown.front().text);
    EXPECT_EQ(Difference(document_, host_->Document()), "");
    EXPECT_EQ(watched_.LiveHandles(), handles_ + static_cast<int>(addin_.state().history->count()));
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
