#include "desk_state.h"

#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/ui/ImageType.hpp>
#include <com/sun/star/ui/XAcceleratorConfiguration.hpp>
#include <com/sun/star/ui/XImageManager.hpp>
#include <filesystem>
#include <map>
#include <utility>

#include "base/text.h"
#include "bindings/calc/desk/bar_entries.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/uno_text.h"
#include "desk_host.h"
#include "tests_in_office.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::SpreadsheetModule;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

std::string Bars() {
    const auto module = SpreadsheetModule(OfficeContext());
    std::string text;
    for (const char16_t* url :
         {u"private:resource/menubar/menubar", u"private:resource/toolbar/standardbar"}) {
        text += ToUtf8(url) + "\n" +
                ToUtf8(calc::DescribeEntries(module->getSettings(ToOUString(url), false)));
    }
    const Reference<css::ui::XImageManager> images(module->getImageManager(), UNO_QUERY_THROW);
    for (const auto& image : images->getAllImageNames(css::ui::ImageType::SIZE_DEFAULT)) {
        text += "image " + ToUtf8(ToText(image)) + "\n";
    }
    return text;
}

std::string Keys() {
    const Reference<css::ui::XAcceleratorConfiguration> keys(
        SpreadsheetModule(OfficeContext())->getShortCutManager(), UNO_QUERY_THROW);
    std::map<std::pair<int, int>, std::string> commands;
    for (const auto& key : keys->getAllKeyEvents()) {
        commands[{key.KeyCode, key.Modifiers}] = ToUtf8(ToText(keys->getCommandByKeyEvent(key)));
    }
    std::string text;
    for (const auto& [key, command] : commands) {
        text += "key " + std::to_string(key.first) + "/" + std::to_string(key.second) + " " +
                command + "\n";
    }
    return text;
}

std::string Notes() {
    std::string text;
    std::error_code missing;
    for (const auto& file : std::filesystem::directory_iterator(JournalFolder(), missing)) {
        text += "notes " + file.path().filename().string() + "\n";
    }
    return text;
}

}  // namespace

std::string DeskState() { return Bars() + Keys() + Notes(); }

}  // namespace korvane::test
