// The contract's workbook in a window of a running Calc.
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XDrawPages.hpp>
#include <com/sun/star/drawing/XDrawPagesSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "base/text.h"
#include "bindings/calc/desk/bar_entries.h"
#include "bindings/calc/desk/command_labels.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/flat_file.h"
#include "bindings/calc/uno_text.h"
#include "contract/contract_book.h"
#include "contract/desk_contract.h"
#include "desk_host.h"
#include "kept_book.h"
#include "status_picture.h"
#include "tests_in_office.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using namespace std::chrono_literals;

namespace {

using Texts = std::vector<std::u16string>;

constexpr const char16_t* kProcedures[] = {u"First", u"Second", u"Third"};

// Keys as the window system calls them.
std::string KeyName(const std::u16string& key) {
    std::string name;
    for (const char16_t ch : key) {
        if (ch == u'^') {
            name += "ctrl+";
        } else if (ch == u'%') {
            name += "alt+";
        } else {
            name += static_cast<char>(ch);
        }
    }
    return name;
}

// The add-in's entries, those within submenus too.
struct Entry {
    std::u16string caption;
    std::u16string url;
};
void AppendAdded(std::vector<Entry>& added, const calc::EntriesPtr& entries) {
    for (sal_Int32 k = 0; k < entries->getCount(); ++k) {
        const std::u16string url = calc::UrlOf(entries, k);
        if (calc::IsCommandUrl(url)) {
            added.push_back({calc::CaptionOfLabel(calc::LabelOf(entries, k)), url});
        }
        if (const auto submenu = calc::SubmenuOf(entries, k); submenu.is()) {
            AppendAdded(added, submenu);
        }
    }
}
std::vector<Entry> AddedTo(const std::u16string& bar) {
    const rtl::OUString url =
        ToOUString(bar == u"Worksheet Menu Bar" ? u"private:resource/menubar/menubar"
                                                : u"private:resource/toolbar/standardbar");
    std::vector<Entry> added;
    AppendAdded(added, calc::SpreadsheetModule(OfficeContext())->getSettings(url, false));
    return added;
}

class InteractiveContractHost : public DeskContractHost {
public:
    InteractiveContractHost() {
        for (const char16_t* name : kProcedures) {
            OfficeCommands()->Set(name, [this, name] { ran_.emplace_back(name); });
        }
    }
    ~InteractiveContractHost() override {
        application_.reset();
        for (const char16_t* name : kProcedures) {
            OfficeCommands()->Remove(calc::CommandUrl(name));
        }
    }

    host::Application& application() override { return *application_; }
    host::RangePtr Cells(const std::u16string& reference) override {
        return std::dynamic_pointer_cast<host::Range>(
            application_->Evaluate(u"=" + reference).AsObject());
    }
    void CloseBook() override { book_->Close(); }
    void EndApplication() override { application_.reset(); }

    void Select(const std::u16string& reference) override {
        std::string name = ToUtf8(ReplaceAll(reference, u"'", u""));
        name.replace(name.find('!'), 1, ".");
        book_->Select(name);
        LetOfficeWork();
    }
    void SelectDrawing() override {
        const Reference<css::drawing::XDrawPage> page(
            Reference<css::drawing::XDrawPagesSupplier>(book_->model(), UNO_QUERY_THROW)
                ->getDrawPages()
                ->getByIndex(0),
            UNO_QUERY_THROW);
        const Reference<css::drawing::XShape> shape(
            Reference<css::lang::XMultiServiceFactory>(book_->model(), UNO_QUERY_THROW)
                ->createInstance(ToOUString(u"com.sun.star.drawing.RectangleShape")),
            UNO_QUERY_THROW);
        shape->setSize({2000, 1000});
        page->add(shape);
        css::uno::Any selected;
        selected <<= shape;
        Reference<css::view::XSelectionSupplier>(book_->view(), UNO_QUERY_THROW)->select(selected);
        LetOfficeWork();
    }
    // One that runs nothing is given time to do so.
    void Press(const std::u16string& key) override {
        const std::size_t before = ran_.size();
        const std::string command = "xdotool key " + KeyName(key);
        if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
        LetOfficeWorkUntil([&] { return ran_.size() > before; }, 500ms);
    }
    void Click(const std::u16string& caption) override {
        LetOfficeWork();
        for (const char16_t* bar : {u"Worksheet Menu Bar", u"Formula Auditing"}) {
            for (const Entry& entry : AddedTo(bar)) {
                if (entry.caption != caption) continue;
                const Reference<css::frame::XDispatchProvider> frame(book_->view()->getFrame(),
                                                                     UNO_QUERY_THROW);
                css::frame::DispatchHelper::create(OfficeContext())
                    ->executeDispatch(frame, ToOUString(entry.url), rtl::OUString(), 0, {});
                LetOfficeWork();
                return;
            }
        }
    }
    void GoTo(const std::u16string& book) override {
        if (book != u"Second.fods") return book_->Activate();
        if (second_) return second_->Activate();
        second_.emplace("Second.fods", calc::testing::FlatText({{"Only", {}}}));
    }

    std::string Selected() override { return book_->Selected(); }
    std::string StatusBar() override { return StatusPicture(book_->view()->getFrame()); }
    Texts Added(const std::u16string& bar) override {
        LetOfficeWork();
        Texts captions;
        for (const Entry& entry : AddedTo(bar)) captions.push_back(entry.caption);
        return captions;
    }

private:
    KeptBook book_{kContractFile, ContractBook()};
    std::optional<ShownBook> second_;
    host::ApplicationPtr application_ = DeskHost::Start();
};

}  // namespace

std::unique_ptr<ContractHost> MakeContractHost() {
    return std::make_unique<InteractiveContractHost>();
}

std::unique_ptr<DeskContractHost> MakeDeskContractHost() {
    return std::make_unique<InteractiveContractHost>();
}

}  // namespace korvane::test
