#include "bindings/scripted/load_document.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "bindings/scripted/scripted_host.h"

namespace korvane::scripted {
namespace {

using Json = nlohmann::json;

Model Load(const std::string& text) { return LoadDocument(Json::parse(text)); }

TEST(LoadDocument, ReadsWhereTheAddinStands) {
    const std::string books = R"("workbooks":[{"sheets":[{}]}])";
    const Model silent = Load("{" + books + "}");
    EXPECT_EQ(silent.addinName, u"KorvaneExplorer.xla");
    EXPECT_EQ(silent.addinPath, u"");
    const ScriptedHost host(
        Load("{" + books + R"(,"addin":{"name":"Other.xla","path":"C:\\Add-ins"}})"));
    EXPECT_EQ(host.thisWorkbookName, u"Other.xla");
    EXPECT_EQ(host.thisWorkbookPath, u"C:\\Add-ins");
    EXPECT_THROW(Load("{" + books + R"(,"addin":"Other.xla"})"), DocumentError);
    EXPECT_THROW(Load("{" + books + R"(,"addin":{"path":1}})"), DocumentError);
}

TEST(LoadDocument, ReadsEveryMember) {
    Model model =
        Load(R"j({"workbooks":[{"name":"B.xls","names":{"Rate":"=S!$B$2","Two":"2"},"sheets":[
        {"name":"S","protected":true,"names":{"Own":"=S!A1","S!Far":"=S!A9"},"hiddenRows":[3,5],
         "hiddenCols":["C","aa"],
         "cells":{"A1":{"formula":"=SUM(B1,1)","value":3,"text":"3.00","hasArray":true,
                        "currentArray":"A1:A3","hidden":"row"},
                  "B1":2,"B2":"text","B3":true,"B4":{"error":2042},"B5":null,"$b$6":{"text":null},
                  "B7":{"value":5,"hidden":"both"},"B8":{"value":{"error":2000},
                    "hidden":"column"}}},
        {"name":"T"}]}],
        "active":{"workbook":"b.XLS","sheet":"t","cell":"C3:D4"},
        "evaluate":{"=SUM(B1,1)":{"value":3},"=E":{"error":2007},"=R":{"range":"S!B3"},
            "=F":{"fail":true},
                    "=A":{"value":[[1,2],[3,4]]},"=N":{"value":null}},
        "write":{"=W":{"value":"w"}},
        "literals":true,"calculation":2,"screenUpdating":false,"bEveryFunction":false,
            "bPreciseCalc":true})j");
    ASSERT_EQ(model.books.size(), 1U);
    EXPECT_EQ(model.activeBook, model.books[0]);
    EXPECT_EQ(model.activeSheet->name, u"T");
    EXPECT_TRUE(model.activeCell == (Area{3, 3, 3, 3}));
    EXPECT_EQ(model.books[0]->names.at(u"two").refersTo, u"=2")
        << "the equals sign may be left out";

    Sheet& sheet = *model.books[0]->FindSheet(u"s");
    EXPECT_TRUE(sheet.isProtected);
    EXPECT_EQ(sheet.names.at(u"own").name, u"Own");
    EXPECT_EQ(sheet.names.at(u"far").name, u"Far") << "a sheet's own name may carry its prefix";
    EXPECT_EQ(sheet.hiddenRows, (std::set<std::int32_t>{3, 5}));
    EXPECT_EQ(sheet.hiddenColumns, (std::set<std::int32_t>{3, 27}));
    const Cell& first = *sheet.Find(1, 1);
    EXPECT_EQ(*first.content.formula, u"=SUM(B1,1)");
    EXPECT_EQ(*first.content.text->Text(), u"3.00");
    EXPECT_TRUE(first.content.hasArray);
    EXPECT_TRUE(*first.content.currentArray == (Area{1, 1, 3, 1}));
    EXPECT_TRUE(first.hiddenRow);
    EXPECT_FALSE(first.hiddenColumn);
    EXPECT_EQ(*sheet.Find(1, 2)->content.value.Number(), 2);
    EXPECT_EQ(*sheet.Find(2, 2)->content.value.Text(), u"text");
    EXPECT_EQ(*sheet.Find(3, 2)->content.value.Boolean(), true);
    EXPECT_EQ(*sheet.Find(4, 2)->content.value.AsError(), ErrorCode::kNA);
    EXPECT_TRUE(sheet.Find(5, 2)->content.value.IsEmpty());
    EXPECT_TRUE(sheet.Find(6, 2)->content.text->IsNull());
    EXPECT_TRUE(sheet.Find(7, 2)->hiddenRow && sheet.Find(7, 2)->hiddenColumn);
    EXPECT_TRUE(!sheet.Find(8, 2)->hiddenRow && sheet.Find(8, 2)->hiddenColumn);

    EXPECT_EQ(*model.evaluate.at(u"=SUM(B1,1)").value.Number(), 3);
    EXPECT_EQ(*model.evaluate.at(u"=E").value.AsError(), ErrorCode::kDiv0);
    EXPECT_EQ(model.evaluate.at(u"=R").kind, Answer::Kind::kRange);
    EXPECT_EQ(model.evaluate.at(u"=F").kind, Answer::Kind::kFail);
    EXPECT_EQ(*model.evaluate.at(u"=A").value.AsArray()->At(2, 1).Number(), 3);
    EXPECT_TRUE(model.evaluate.at(u"=N").value.IsEmpty());
    EXPECT_EQ(*model.write.at(u"=W").value.Text(), u"w");
    EXPECT_TRUE(model.literals);
    EXPECT_EQ(model.calculation, 2);
    EXPECT_FALSE(model.screenUpdating);
    EXPECT_EQ(model.bEveryFunction, false);
    EXPECT_EQ(model.bPreciseCalc, true);
}

TEST(LoadDocument, LeavesOutWhatADocumentNeedNotSay) {
    const Model model = Load(R"({"workbooks":[{"sheets":[{}]}]})");
    EXPECT_EQ(model.activeBook->name, u"Book1");
    EXPECT_EQ(model.activeSheet->name, u"Sheet1");
    EXPECT_TRUE(model.activeCell == (Area{1, 1, 1, 1}));
    EXPECT_FALSE(model.literals);
    EXPECT_EQ(model.calculation, -4105);
    EXPECT_TRUE(model.screenUpdating);
    EXPECT_EQ(model.bEveryFunction, std::nullopt);
    EXPECT_EQ(model.bPreciseCalc, std::nullopt);
}

TEST(LoadDocument, EveryMalformedDocumentIsRefusedWithItsPlace) {
    struct Case {
        const char* document;
        const char* message;  // a part of it
    };
    for (const Case& c : {
             Case{"{}", "workbooks"},
             Case{"[]", "document"},
             Case{"1", "document"},
             Case{"null", "document"},
             Case{R"({"workbooks":[]})", "workbooks"},
             Case{R"({"workbooks":{}})", "workbooks"},
             Case{R"({"workbooks":[1]})", "workbooks[0]"},
             Case{R"({"workbooks":[{}]})", "needs a sheet"},
             Case{R"({"workbooks":[{"sheets":[]}]})", "needs a sheet"},
             Case{R"({"workbooks":[{"sheets":[1]}]})", "sheets[0]"},
             Case{R"({"workbooks":[{"name":1,"sheets":[{}]}]})", "name"},
             Case{R"({"workbooks":[{"names":[],"sheets":[{}]}]})", "names"},
             Case{R"({"workbooks":[{"names":{"N":1},"sheets":[{}]}]})", "names.N"},
             Case{R"({"workbooks":[{"sheets":[{"name":null}]}]})", "name"},
             Case{R"({"workbooks":[{"sheets":[{"protected":1}]}]})", "protected"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenRows":3}]}]})", "hiddenRows"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenRows":[0]}]}]})", "no such row"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenRows":[1048577]}]}]})", "no such row"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenRows":[1.5]}]}]})", "whole number"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenRows":["3"]}]}]})", "whole number"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenCols":["XFE"]}]}]})", "no such column"},
             Case{R"({"workbooks":[{"sheets":[{"hiddenCols":[3]}]}]})", "hiddenCols"},
             Case{R"({"workbooks":[{"sheets":[{"cells":[]}]}]})", "cells"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A0":1}}]}]})", "no address"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1:B2":1}}]}]})", "more than one"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"S!A1":1}}]}]})", "no address"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"formula":1}}}]}]})", "formula"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"value":{}}}}]}]})", "value"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"error":"x"}}}]}]})", "error"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"error":99999999999}}}]}]})",
                  "whole number"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"hasArray":1}}}]}]})", "hasArray"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"currentArray":"x"}}}]}]})",
                  "no address"},
             Case{R"({"workbooks":[{"sheets":[{"cells":{"A1":{"hidden":"maybe"}}}]}]})", "hidden"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"active":1})", "active"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"active":{"workbook":"X"}})",
                  "no such workbook"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"active":{"sheet":"X"}})", "no such sheet"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"active":{"cell":"X"}})", "no address"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":[]})", "evaluate"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":1}})", "evaluate.=A"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{}}})", "must be"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"fail":false}}})", "must be"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"value":1,"error":2}}})",
                  "must be"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"value":[]}}})", "empty"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"value":[[1],[1,2]]}}})",
                  "one length"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"value":[[1],2]}}})",
                  "one length"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"value":[[[[[1]]]]]}}})",
                  "list"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"evaluate":{"=A":{"range":1}}})", "range"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"write":{"=A":null}})", "write.=A"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"literals":1})", "literals"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"calculation":"auto"})", "calculation"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"screenUpdating":0})", "screenUpdating"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"bEveryFunction":null})", "bEveryFunction"},
             Case{R"({"workbooks":[{"sheets":[{}]}],"bPreciseCalc":"yes"})", "bPreciseCalc"},
         }) {
        try {
            Load(c.document);
            ADD_FAILURE() << "was taken: " << c.document;
        } catch (const DocumentError& error) {
            EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos)
                << c.document << "\n"
                << error.what();
        }
    }
}

TEST(LoadDocument, SplitsAListOfDocuments) {
    EXPECT_EQ(SplitDocuments("{}").size(), 1U);
    EXPECT_EQ(SplitDocuments(" [ {} , 1, {} ] ").size(), 3U);
    EXPECT_EQ(SplitDocuments("[]").size(), 0U);
    for (const char* text :
         {"", "{", "nonsense", "1", "\"a\"", "null", "{} {}", "\xFF", "{\"a\":\"\xFF\"}"}) {
        EXPECT_THROW(SplitDocuments(text), DocumentError) << text;
    }
    const std::string deep(100'000, '[');
    EXPECT_THROW(SplitDocuments(deep), DocumentError);
    const std::string lists = deep + std::string(100'000, ']');
    EXPECT_THROW(LoadDocument(SplitDocuments(lists).at(0)), DocumentError);
    EXPECT_THROW(LoadDocument(SplitDocuments("{\"workbooks\":" + lists + "}").at(0)),
                 DocumentError);
}

}  // namespace
}  // namespace korvane::scripted
