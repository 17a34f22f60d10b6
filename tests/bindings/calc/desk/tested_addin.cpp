#include "tested_addin.h"

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/ui/ImageType.hpp>
#include <com/sun/star/ui/XImageManager.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/addin_workbook.h"
#include "bindings/calc/desk/bar_entries.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/desk/window_events.h"
#include "bindings/calc/uno_text.h"
#include "bindings/resources/built_in_pictures.h"
#include "host/constants.h"
#include "support/office_places.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr const char16_t* kMenu = u"Worksheet Menu Bar";
constexpr const char16_t* kToolbar = u"Formula Auditing";
constexpr const char16_t* kTag = u"kvxButton";

host::CommandBarControlPtr FindId(host::CommandBarControls& controls, int id) {
    for (int k = 1; k <= controls.Count(); ++k) {
        auto control = controls.Item(k);
        if (control->Id() == id) return control;
    }
    throw Error(kErrorObjectMissing, u"No such entry");
}

// Everything that the add-in could change, for comparing.
std::string Settings(const TestedAddin::Context& context) {
    const auto module = SpreadsheetModule(context);
    std::string text;
    for (const char16_t* url :
         {u"private:resource/menubar/menubar", u"private:resource/toolbar/standardbar"}) {
        const rtl::OUString name = ToOUString(url);
        text += ToUtf8(url) + " default " + std::to_string(module->isDefaultSettings(name)) + "\n" +
                ToUtf8(DescribeEntries(module->getSettings(name, false)));
    }
    const Reference<css::ui::XImageManager> images(module->getImageManager(), UNO_QUERY_THROW);
    for (const auto& image : images->getAllImageNames(css::ui::ImageType::SIZE_DEFAULT)) {
        text += "image " + ToUtf8(ToText(image)) + "\n";
    }
    return text;
}

// The sizes in pixels of the pictures that the add-in's buttons have.
std::string PictureSizes(const TestedAddin::Context& context) {
    const Reference<css::ui::XImageManager> images(SpreadsheetModule(context)->getImageManager(),
                                                   UNO_QUERY_THROW);
    std::string text;
    for (const sal_Int16 size : {css::ui::ImageType::SIZE_DEFAULT, css::ui::ImageType::SIZE_LARGE,
                                 css::ui::ImageType::SIZE_32}) {
        for (const auto& name : images->getAllImageNames(size)) {
            if (!IsCommandUrl(ToText(name))) continue;
            const auto pictures = images->getImages(size, {&name, 1});
            const Reference<css::beans::XPropertySet> picture(pictures[0], UNO_QUERY_THROW);
            css::awt::Size pixels;
            picture->getPropertyValue(ToOUString(u"SizePixel")) >>= pixels;
            text += std::to_string(pixels.Width) + "x" + std::to_string(pixels.Height) + " ";
        }
    }
    return text;
}

std::string OneLine(const std::string& text) {
    std::string line;
    for (const char ch : text) line += ch == '\n' ? '|' : ch;
    return line;
}

}  // namespace

TestedAddin::TestedAddin(const Context& context) : context_(context) {
    for (const char16_t* name : {u"KorvaneExplore", u"KorvaneExplorerGoBack"}) {
        commands_->Set(name, [this, name] { log_ += "key " + ToUtf8(name) + "|"; });
    }
    commands_->Set(u"Fails", [this] {
        log_ += "fails|";
        throw Error(kErrorApplication, u"Failed");
    });
}

std::string TestedAddin::Do(const std::string& line) noexcept {
    try {
        const auto blank = line.find(' ');
        const bool alone = blank == std::string::npos;
        return OneLine(Carry(line.substr(0, blank), alone ? "" : line.substr(blank + 1)));
    } catch (const Error& error) {
        return "error: " + ToUtf8(error.description());
    } catch (const css::uno::Exception& error) {
        return "office's error: " + ToUtf8(ToText(error.Message));
    } catch (...) {
        return "unknown error";
    }
}

std::string TestedAddin::Carry(const std::string& order, const std::string& argument) {
    const std::u16string text = ToUtf16(argument);
    if (order == "ready") {
        // A window of Calc's with everything on it.
        const auto frame = css::frame::Desktop::create(context_)->getCurrentFrame();
        const Reference<css::lang::XServiceInfo> model(frame.is() && frame->getController().is()
                                                           ? frame->getController()->getModel()
                                                           : Reference<css::frame::XModel>(),
                                                       UNO_QUERY);
        return model.is() && model->supportsService(ToOUString(kSpreadsheetModule)) ? "yes" : "no";
    }
    if (order == "open") return Open(), "done";
    if (order == "build") return Build(), "done";
    if (order == "remove") {
        for (auto control = added_.rbegin(); control != added_.rend(); ++control) {
            (*control)->Delete();
        }
        added_.clear();
        return "done";
    }
    if (order == "close") {
        clicks_.reset();
        windows_.reset();
        added_.clear();
        bars_.reset();
        keys_.reset();
        return "done";
    }
    if (order == "vanish") return std::exchange(commands_, nullptr) ? "done" : "gone";
    if (order == "try") return Try(argument), "nothing raised";
    if (order == "bind") {
        const auto blank = text.find(u' ');
        keys_->Bind(text.substr(0, blank), CommandUrl(text.substr(blank + 1)));
        return "done";
    }
    if (order == "release") return keys_->Release(text), "done";
    if (order == "log") return std::exchange(log_, {});
    if (order == "bars") return DescribeBars();
    if (order == "keys") return DescribeKeys();
    if (order == "settings") return Settings(context_);
    if (order == "pictures") return PictureSizes(context_);
    if (order == "modified") {
        return SpreadsheetModule(context_)->isModified() ? "yes" : "no";
    }
    // As the user's customizing does.
    if (order == "store") {
        const auto module = SpreadsheetModule(context_);
        module->store();
        Reference<css::ui::XUIConfigurationPersistence>(module->getShortCutManager(),
                                                        UNO_QUERY_THROW)
            ->store();
        return "done";
    }
    if (order == "active") {
        const auto frame = css::frame::Desktop::create(context_)->getActiveFrame();
        const Reference<css::frame::XTitle> title(frame->getController()->getModel(), UNO_QUERY);
        return title.is() ? ToUtf8(ToText(title->getTitle())) : "none";
    }
    if (order == "where") return test::PlaceOfButton(context_, argument);
    if (order == "cellplace") return test::PlaceOfCell(context_, argument);
    if (order == "tabplace") return test::PlaceOfTab(context_, argument);
    if (order == "window") {
        css::frame::Desktop::create(context_)->loadComponentFromURL(
            ToOUString(u"private:factory/scalc"), ToOUString(u"_blank"), 0, {});
        return "done";
    }
    if (order == "hide" || order == "show") {
        for (const auto& control : added_) control->SetVisible(order == "show");
        return "done";
    }
    if (order == "quit") {
        return css::frame::Desktop::create(context_)->terminate() ? "done" : "refused";
    }
    return tints_.Carry(order, argument);
}

void TestedAddin::Open() {
    bars_ = std::make_unique<CalcCommandBars>(context_, commands_);
    keys_ = std::make_unique<ShortcutKeys>(context_);
    windows_ = ConnectWindowEvents(
        context_, *this, [](const Reference<css::frame::XModel>& model) -> host::WorkbookPtr {
            const Reference<css::frame::XTitle> title(model, UNO_QUERY_THROW);
            return std::make_shared<AddinWorkbook>(AddinFile{ToText(title->getTitle()), u""});
        });
}

// The submenu with its entries, and a button on the toolbar and in the Detective
// submenu.
void TestedAddin::Build() {
    using NewControl = host::CommandBarControls::NewControl;
    resources::BuiltInPictures pictures;
    const auto add = [&](host::CommandBarControls& controls, int type, const char16_t* caption,
                         const char16_t* command, std::optional<int> before = {}) {
        NewControl wanted;
        wanted.type = type;
        wanted.before = before;
        if (command != nullptr) wanted.parameter = command;
        auto control = controls.Add(wanted);
        added_.push_back(control);
        control->SetCaption(caption);
        if (command != nullptr) control->SetTag(kTag);
        return control;
    };
    const auto tools = FindId(*bars_->Item(kMenu)->Controls(), 30007)->Controls();
    const auto popup = add(*tools, host::msoControlPopup, u"Korvane E&xplorer", nullptr);
    popup->SetBeginGroup(true);
    const auto submenu = popup->Controls();
    add(*submenu, host::msoControlButton, u"&Settings...", u"kvxOptions");
    add(*submenu, host::msoControlButton, u"&Documentation", u"kvxDocumentation");
    add(*submenu, host::msoControlButton, u"&About...", u"kvxAbout");
    const auto explore = [&](host::CommandBarControls& controls, std::optional<int> before) {
        const auto control =
            add(controls, host::msoControlButton, u"Korvane E&xplorer", u"kvxExplore", before);
        control->SetBeginGroup(true);
        auto& button = dynamic_cast<host::CommandBarButton&>(*control);
        button.SetPicture(pictures.Picture(u"IMGEXPLORE"));
        button.SetMask(pictures.Picture(u"MSKEXPLORE"));
        button.SetStyle(host::msoButtonIcon);
    };
    explore(*bars_->Item(kToolbar)->Controls(), {});
    const auto auditing = FindId(*tools, 30028)->Controls();
    explore(*auditing, auditing->Count());
    const auto found = bars_->FindControl(kTag);
    clicks_ = dynamic_cast<host::CommandBarButton&>(*found).Connect(*this);
}

// What is to be refused.
void TestedAddin::Try(const std::string& what) {
    const auto menu = bars_->Item(kMenu)->Controls();
    const auto tools = FindId(*menu, 30007);
    host::CommandBarControls::NewControl wanted;
    wanted.type = host::msoControlButton;
    if (what == "no bar") bars_->Item(u"Worksheet");
    if (what == "item 0") menu->Item(0);
    if (what == "item beyond") menu->Item(menu->Count() + 1);
    if (what == "own") tools->SetCaption(u"Mine");
    if (what == "remove") tools->Delete();
    if (what == "submenu") tools->Controls()->Item(1)->Controls();
    if (what == "built-in") {
        wanted.id = 3;
        menu->Add(wanted);
    }
    if (what == "place") {
        wanted.before = menu->Count() + 2;
        menu->Add(wanted);
    }
    if (what == "permanent") {
        wanted.temporary = false;
        menu->Add(wanted);
    }
    if (what == "deleted" || what == "deleted sink") {
        const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(menu->Add(wanted));
        button->Delete();
        if (what == "deleted") button->Caption();
        button->Connect(*this);
    }
    if (what == "with its menu" || what == "menu deleted") {
        wanted.type = host::msoControlPopup;
        const auto popup = menu->Add(wanted);
        const auto inside = popup->Controls();
        wanted.type = host::msoControlButton;
        const auto button = inside->Add(wanted);
        popup->Delete();
        if (what == "menu deleted") inside->Count();
        button->Parameter();
    }
    if (what == "no picture") {
        const auto control = menu->Add(wanted);
        added_.push_back(control);
        dynamic_cast<host::CommandBarButton&>(*control).SetPicture("no picture");
    }
    if (what == "closed") {
        bars_->Close();
        menu->Count();
    }
}

void TestedAddin::Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) {
    cancelDefault = true;
    log_ += "click " + ToUtf8(control->Parameter()) + "|";
}

void TestedAddin::WindowActivate(const host::WorkbookPtr& workbook) {
    log_ += "activate " + ToUtf8(workbook->Name()) + "|";
}

std::string TestedAddin::Entries(host::CommandBarControls& controls, int depth) {
    std::string text;
    for (int k = 1; k <= controls.Count(); ++k) {
        const auto control = controls.Item(k);
        text += std::string(static_cast<std::size_t>(depth), ' ') + ToUtf8(control->Caption()) +
                " " + std::to_string(control->Id());
        if (!control->Tag().empty()) {
            text += " " + ToUtf8(control->Tag()) + " " + ToUtf8(control->Parameter());
        }
        text += "\n";
        if (control->TypeName() == u"CommandBarPopup") {
            text += Entries(*control->Controls(), depth + 1);
        }
    }
    return text;
}

std::string TestedAddin::DescribeBars() {
    return "menu\n" + Entries(*bars_->Item(kMenu)->Controls(), 1) + "toolbar\n" +
           Entries(*bars_->Item(kToolbar)->Controls(), 1);
}

// Every key of the module with its command and the key that is shown beside it.
std::string TestedAddin::DescribeKeys() {
    const Reference<css::ui::XAcceleratorConfiguration> keys(
        SpreadsheetModule(context_)->getShortCutManager(), UNO_QUERY_THROW);
    const auto name = [](const css::awt::KeyEvent& key) {
        return std::to_string(key.KeyCode) + "/" + std::to_string(key.Modifiers);
    };
    std::map<std::string, std::string> lines;
    for (const auto& key : keys->getAllKeyEvents()) {
        const rtl::OUString command = keys->getCommandByKeyEvent(key);
        css::awt::KeyEvent shown;
        const auto preferred = keys->getPreferredKeyEventsForCommandList({&command, 1});
        if (preferred.getLength() == 1) preferred[0] >>= shown;
        lines[name(key)] = ToUtf8(ToText(command)) + " shows " + name(shown);
    }
    std::string text;
    for (const auto& [key, line] : lines) text += key + " " + line + "\n";
    return text;
}

}  // namespace korvane::calc::testing
