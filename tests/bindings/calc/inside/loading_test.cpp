// Opening workbooks that nobody vouches for.
#include <gtest/gtest.h>

#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "apps/office/loader.h"
#include "apps/report/exploration.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "inside_office.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// Stores an empty document of the office with these settings; the file's path.
std::string Stored(const char16_t* kind, const char* name,
                   const std::vector<std::pair<const char16_t*, std::u16string>>& settings) {
    const auto desktop = css::frame::Desktop::create(OfficeContext());
    css::beans::PropertyValue hidden;
    hidden.Name = ToOUString(u"Hidden");
    hidden.Value <<= true;
    const auto document =
        desktop->loadComponentFromURL(ToOUString(kind), ToOUString(u"_blank"), 0,
                                      css::uno::Sequence<css::beans::PropertyValue>(&hidden, 1));
    std::vector<css::beans::PropertyValue> how;
    for (const auto& [key, value] : settings) {
        how.emplace_back();
        how.back().Name = ToOUString(key);
        how.back().Value <<= ToOUString(value);
        if (std::u16string_view(key) != u"OOXPassword") continue;
        // Files of this kind take the password only in this form.
        css::beans::NamedValue secret[2];
        secret[0].Name = ToOUString(key);
        secret[0].Value <<= ToOUString(value);
        secret[1].Name = ToOUString(u"CryptoType");
        secret[1].Value <<= ToOUString(u"Standard");
        how.back().Name = ToOUString(u"EncryptionData");
        how.back().Value <<= css::uno::Sequence<css::beans::NamedValue>(secret, 2);
    }
    const std::string path = (std::filesystem::path(std::getenv("TMPDIR")) / name).string();
    Reference<css::frame::XStorable>(document, UNO_QUERY_THROW)
        ->storeToURL(ToOUString(u"file://" + ToUtf16(path)),
                     css::uno::Sequence<css::beans::PropertyValue>(
                         how.data(), static_cast<sal_Int32>(how.size())));
    Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(true);
    return path;
}

std::string Refusal(const std::string& path) {
    try {
        office::OpenWorkbook(OfficeContext(), path);
    } catch (const office::NotAWorkbook& refused) {
        return refused.what();
    }
    return "opened";
}

TEST(Loading, APasswordIsNeverAskedFor) {
    for (const auto& [filter, name] :
         {std::pair{u"calc8", "locked.ods"}, std::pair{u"Calc MS Excel 2007 XML", "locked.xlsx"},
          std::pair{u"MS Excel 97", "locked.xls"}}) {
        const std::string path = Stored(
            u"private:factory/scalc", name,
            {{u"FilterName", filter},
             {name == std::string("locked.xlsx") ? u"OOXPassword" : u"Password", u"secret"}});
        EXPECT_NE(Refusal(path).find("password"), std::string::npos)
            << name << ": " << Refusal(path);
    }
}

TEST(Loading, DocumentsOfOtherKindsAreRefused) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
        "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
        " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" office:version=\"1.3\""
        " office:mimetype=\"application/vnd.oasis.opendocument.text\">"
        "<office:body><office:text><text:p>hello</text:p></office:text></office:body></"
        "office:document>";
    const std::string picture("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    for (const auto& [name, content] :
         {std::pair{"text.fodt", text}, std::pair{"text.fods", text}, std::pair{"text.ods", text},
          std::pair{"picture.png", picture}, std::pair{"picture.xlsx", picture},
          std::pair{"picture.csv", picture}}) {
        const auto path = std::filesystem::path(std::getenv("TMPDIR")) / name;
        std::ofstream(path, std::ios::binary) << content;
        EXPECT_NE(Refusal(path.string()), "opened") << name;
    }
}

TEST(Loading, EveryFormatOfWorkbooksOpens) {
    for (const auto& [filter, name] :
         {std::pair{u"calc8", "plain.ods"}, std::pair{u"Calc MS Excel 2007 XML", "plain.xlsx"},
          std::pair{u"MS Excel 97", "plain.xls"}}) {
        OpenBook book(Stored(u"private:factory/scalc", name, {{u"FilterName", filter}}));
        book.GoTo(u"A1");
        EXPECT_EQ(Shown(book.Evaluate(u"=1+1")), "2") << name;
    }
}

TEST(Loading, SeparatedTextsAreTexts) {
    OpenBook book("values.csv", "name,value\nx,\"1,5\"\ny,=1+1\n");
    EXPECT_EQ(Shown(book.Cell(u"A1")->Value()), "\"name\"");
    EXPECT_EQ(Shown(book.Cell(u"B2")->Value()), "\"1,5\"");
}

TEST(ManualCalculation, PartsAreEvaluatedAllTheSame) {
    OpenBook book(
        "manual.fods",
        FlatText({{"Data", {{1, 1, "1"}, {1, 2, "2"}, {1, 3, "=SUM([.A1:.B1])+1"}}}}, {}, ""));
    const auto cell = book.Cell(u"Data!C1");
    book.SetAutomaticCalculation(false);
    cell->Select();
    EXPECT_EQ(Shown(book.Evaluate(u"=SUM(A1:B1)")), "3");
    const std::string before = book.Snapshot();
    const auto report = Explore(book.application(), cell, true, true);
    ASSERT_TRUE(report.ok);
    ASSERT_EQ(report.tree->children.size(), 1u);
    EXPECT_EQ(ToUtf8(report.tree->children[0].value), "3");
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

}  // namespace
}  // namespace korvane::calc::testing
