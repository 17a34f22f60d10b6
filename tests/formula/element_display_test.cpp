// The three texts that the tree shows for each part.
#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostOf;
using test::HostWith;

// The line of the first part below the root, without its text and place:
// "label | location | value".
std::string FirstPart(const Exploration& exploration) {
    const CElement& part = *exploration.root().colSubs().at(0);
    return ToUtf8(part.sName()) + " | " + ToUtf8(part.sLocation()) + " | " + ToUtf8(part.sValue());
}

std::string FirstPartOf(const std::string& formula, const std::string& cells = "",
                        const std::string& rest = R"("literals":true)") {
    const auto host = HostWith(formula, cells, rest);
    return FirstPart(Exploration(*host, true));
}

TEST(ElementDisplay, AReferenceShowsItsAddressItsSheetAndTheDisplayedText) {
    EXPECT_EQ(FirstPartOf("=$B$4", R"("B4":{"value":0.5,"text":" 50 % "})"), "B4 | S | 50 %");
    EXPECT_EQ(FirstPartOf("='My Sheet'!B4:$C9"), "B4:C9 | My Sheet | ");
    EXPECT_EQ(FirstPartOf("=$B:$C"), "B:C | S | ");
    EXPECT_EQ(FirstPartOf("=$3:4"), "3:4 | S | ");
}

TEST(ElementDisplay, OnlyBlanksAreTrimmedFromTheDisplayedText) {
    EXPECT_EQ(FirstPartOf("=B4", R"("B4":{"value":1,"text":"  \ta b\u00a0 "})"),
              "B4 | S | \ta b\u00a0");
}

TEST(ElementDisplay, AnErrorAsDisplayedTextBecomesItsName) {
    EXPECT_EQ(FirstPartOf("=B4", R"("B4":{"value":1,"text":{"error":2007}})"), "B4 | S | #DIV/0!");
}

TEST(ElementDisplay, ABlockWhoseCellsDifferHasNoDisplayedText) {
    EXPECT_EQ(FirstPartOf("=B4:B5", R"("B4":1,"B5":2)"), "B4:B5 | S | ");
    EXPECT_EQ(FirstPartOf("=B4:B5", R"("B4":1,"B5":1)"), "B4:B5 | S | 1")
        << "when all show the same";
    EXPECT_EQ(FirstPartOf("=B4", R"("B4":{"value":7,"text":null})"), "B4 | S | 7")
        << "the evaluated value where there is no text";
}

TEST(ElementDisplay, AReferenceIntoAnotherWorkbookSaysSo) {
    const auto host = HostOf(R"j({"workbooks":[
        {"name":"B.xls","sheets":[{"name":"S",
            "cells":{"A1":{"formula":"=[P.xls]Prices!C2+INDEX([P.xls]Prices!C2:D2,1)"}}}]},
        {"name":"P.xls","sheets":[{"name":"Prices","cells":{"C2":4}}]}]})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(FirstPart(exploration), "C2 | [...]Prices | 4");
    const CElement& index = *exploration.root().colSubs()[1];
    EXPECT_EQ(ToUtf8(index.colSubs().at(0)->sLocation()), "[...]Prices");
}

TEST(ElementDisplay, ALocationWithAddressFollowsAMarkOfTheOtherWorkbook) {
    const auto host = HostOf(R"j({"workbooks":[
        {"name":"B.xls","sheets":[{"name":"S",
            "cells":{"A1":{"formula":"=ABS([P.xls]Prices!C2)"}}}]},
        {"name":"P.xls","sheets":[{"name":"Prices"}]}]})j");
    EXPECT_EQ(FirstPart(Exploration(*host, true)), "ABS | [...]Prices!C2 | #NAME?");
}

TEST(ElementDisplay, AHiddenCellShowsTheEvaluatedValue) {
    const std::string b4 = R"("B4":{"value":0.5,"text":"50 %")";
    EXPECT_EQ(FirstPartOf("=B4", b4 + R"(,"hidden":"row"})"), "B4 | S | 0.5");
    EXPECT_EQ(FirstPartOf("=B4", b4 + R"(,"hidden":"column"})"), "B4 | S | 0.5");
    EXPECT_EQ(FirstPartOf("=B4", b4 + R"(,"hidden":"both"})"), "B4 | S | 0.5");
    EXPECT_EQ(FirstPartOf("=B4", b4 + "}"), "B4 | S | 50 %");
    for (const char* hidden : {R"("hiddenRows":[4])", R"("hiddenCols":["B"])"}) {
        const auto host =
            HostOf(R"({"workbooks":[{"sheets":[{"name":"S",)" + std::string(hidden) +
                   R"(,"cells":{"A1":{"formula":"=B4"},"B4":{"value":0.5,"text":"50 %"}}}]}]})");
        EXPECT_EQ(FirstPart(Exploration(*host, true)), "B4 | S | 0.5") << hidden;
    }
}

TEST(ElementDisplay, APartlyHiddenBlockCountsAsHidden) {
    const auto host = HostOf(R"({"workbooks":[{"sheets":[{"name":"S","hiddenRows":[5],
        "cells":{"A1":{"formula":"=B4:B6+B7:B8"},"B4":1,"B5":1,"B6":1,"B7":2,"B8":2}}]}]})");
    const Exploration exploration(*host, true);
    EXPECT_EQ(FirstPart(exploration), "B4:B6 | S | ") << "though all three show 1";
    EXPECT_EQ(ToUtf8(exploration.root().colSubs()[1]->sValue()), "2");
}

TEST(ElementDisplay, AHiddenRootShowsNothing) {
    const auto host = HostOf(R"({"workbooks":[{"sheets":[{"name":"S","hiddenRows":[1],
        "cells":{"A1":{"value":5}}}]}]})");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(), "A1 | 5 @0 | S<A1> | \n");
}

TEST(ElementDisplay, APartWithoutCellsIsLabelledByTheReferenceAtItsEnd) {
    struct Case {
        const char* token;
        const char* label;
    };
    for (const Case& c : {
             Case{"[Book2.xls]Data'!$B$7", "failed"},
             Case{"'[Book2.xls]Data'!$B$7", "B7"},
             Case{"Nope!$A$1:$B$2", "A1:B2"},
             Case{"No_such9", "No_such9"},
             Case{"a.b", "b"},
             Case{"M\u00e4rz", "rz"},
             Case{"Table[Column]", ""},
             Case{"A$", "A"},
             Case{"Nope!", ""},
         }) {
        const auto host =
            HostWith(std::string("=") + c.token, "",
                     "\"evaluate\":{\"=" + std::string(c.token) + "\":{\"value\":1}}");
        const Exploration exploration(*host, true);
        EXPECT_EQ(exploration.ok ? FirstPart(exploration) : "failed",
                  exploration.ok ? std::string(c.label) + " |  | 1" : c.label)
            << c.token;
    }
}

TEST(ElementDisplay, AnErrorNameAsValueIsTheLabelOfAPartWithoutCells) {
    for (const auto& [code, name] : {std::pair{2007, "#DIV/0!"},
                                     {2042, "#N/A"},
                                     {2029, "#NAME?"},
                                     {2000, "#NULL!"},
                                     {2036, "#NUM!"},
                                     {2023, "#REF!"},
                                     {2015, "#VALUE!"},
                                     {4711, "#ERROR!"}}) {
        EXPECT_EQ(FirstPartOf("=Gone", "",
                              R"("evaluate":{"=Gone":{"error":)" + std::to_string(code) + "}}"),
                  std::string(name) + " |  | " + name);
    }
    EXPECT_EQ(FirstPartOf("=Gone", "", R"("evaluate":{"=Gone":{"value":"#n/a"}})"),
              "Gone |  | #n/a");
    EXPECT_EQ(FirstPartOf("=Gone", "", R"("evaluate":{"=Gone":{"value":"#N/A"}})"),
              "#N/A |  | #N/A")
        << "a text that reads like one too";
}

TEST(ElementDisplay, ACallShowsItsNameItsCellsAndItsValue) {
    EXPECT_EQ(FirstPartOf("=MAX(B1,C1)", "", R"j("evaluate":{"=MAX(B1,C1)":{"value":0.1}})j"),
              "MAX |  | 0.1");
    EXPECT_EQ(
        FirstPartOf("=SUM(B1:B3)", R"("B1":5)", R"j("evaluate":{"=SUM(B1:B3)":{"error":2042}})j"),
        "SUM | S!B1:B3 | #N/A");
}

TEST(ElementDisplay, ValuesAreShownAsTheHostsLanguageWritesThem) {
    for (const auto& [answer, text] : {std::pair{R"({"value":1})", "1"},
                                       {R"({"value":1.50})", "1.5"},
                                       {R"({"value":0.30000000000000004})", "0.3"},
                                       {R"({"value":1e15})", "1E+15"},
                                       {R"({"value":123456789012345678})", "1.23456789012346E+17"},
                                       {R"({"value":0.00001})", "1E-05"},
                                       {R"({"value":-0.0})", "0"},
                                       {R"({"value":true})", "True"},
                                       {R"({"value":false})", "False"},
                                       {R"({"value":" x "})", " x "},
                                       {R"({"value":null})", ""},
                                       {R"({"value":[[1,2],[3,4]]})", ""},
                                       {R"({"error":1})", "#ERROR!"}}) {
        EXPECT_EQ(FirstPartOf("=F()", "", std::string(R"j("evaluate":{"=F()":)j") + answer + "}"),
                  std::string("F |  | ") + text)
            << answer;
    }
}

TEST(ElementDisplay, AFailureOfTheHostEndsTheExploration) {
    for (const char* member :
         {"Range.Address", "Range.Worksheet", "Worksheet.Parent", "Workbook.Name", "Worksheet.Name",
          "Range.EntireRow", "Range.EntireColumn", "Range.Hidden", "Range.Text"}) {
        const auto host = HostWith("=B1+1");
        host->FailMember(member);
        const Exploration exploration(*host, true);
        EXPECT_FALSE(exploration.ok) << member;
        ASSERT_EQ(exploration.log().size(), 1U) << member;
        EXPECT_EQ(exploration.log()[0],
                  std::string("CElement.bInitRoot: ") + member + " failed (bInitRoot)");
    }
}

}  // namespace
}  // namespace korvane
