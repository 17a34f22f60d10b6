// What the scripted host's Evaluate answers.
#include <gtest/gtest.h>

#include "base/error.h"
#include "base/number.h"
#include "base/text.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class EvaluateTest : public testing::Test {
protected:
    EvaluateTest()
        : host_(test::HostOf(R"j({"workbooks":[
            {"name":"B.xls","names":{"Rate":"=S!$B$2","Half":"=0.5","Ring":"=Gnir","Gnir":"=ring",
                "Me":"=Me",
                                     "Said":"=SUM(B1)","Both":"=S!$C$1","Deep":"=Rate"},
             "sheets":[{"name":"S","names":{"Both":"=S!$C$2"},"cells":{"A1":1,"B2":5}},
                       {"name":"My Sheet","names":{"Own":"='My Sheet'!A9"}}]},
            {"name":"P.xls","names":{"Price":"=[P.xls]Prices!A1"},"sheets":[{"name":"Prices"}]}],
            "literals":true,
            "evaluate":{"=SUM(B1)":{"value":3},"=A1":{"range":"S!C9"},"=X":{"error":2042},
                "=F":{"fail":true},
                        "=Gone":{"range":"Nope!A1"},"=L":{"value":[1,2]},
                    "SUM(B1)":{"value":"bare"}}})j")) {}

    // A text for what a text evaluates to: an address, or a value behind "=".
    std::string Of(const char16_t* text) {
        const Value value = host_->Evaluate(text);
        if (const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject())) {
            return ToUtf8(range->Address(host::kExternal));
        }
        if (const auto* number = value.Number()) return "=" + ToUtf8(NumberText(*number));
        if (const auto* content = value.Text()) return "=\"" + ToUtf8(*content) + "\"";
        if (const auto* flag = value.Boolean()) return *flag ? "=true" : "=false";
        if (const auto* code = value.AsError()) return ToUtf8(ErrorName(*code));
        if (value.AsArray()) return "=array";
        return value.IsEmpty() ? "=empty" : "=?";
    }
    void Activate(const char16_t* sheet) {
        host_->model().activeSheet = host_->model().activeBook->FindSheet(sheet);
    }

    std::unique_ptr<ScriptedHost> host_;
};

TEST_F(EvaluateTest, TheDocumentsAnswersComeFirst) {
    EXPECT_EQ(Of(u"=SUM(B1)"), "=3");
    EXPECT_EQ(Of(u"SUM(B1)"), "=\"bare\"") << "by exact text, equals sign included";
    EXPECT_EQ(Of(u"=A1"), "[B.xls]S!$C$9") << "before the reference";
    EXPECT_EQ(Of(u"=X"), "#N/A");
    EXPECT_EQ(Of(u"=L"), "=array");
    EXPECT_EQ(Of(u"=Gone"), "#REF!");
    EXPECT_EQ(Of(u"=sum(B1)"), "#NAME?");
    EXPECT_THROW(host_->Evaluate(u"=F"), Error);
}

TEST_F(EvaluateTest, ThenReferences) {
    EXPECT_EQ(Of(u"=B2"), "[B.xls]S!$B$2");
    EXPECT_EQ(Of(u"$B$2:A1"), "[B.xls]S!$A$1:$B$2");
    EXPECT_EQ(Of(u"= b2 "), "[B.xls]S!$B$2");
    EXPECT_EQ(Of(u"='my sheet'!B:B"), "'[B.xls]My Sheet'!$B:$B");
    EXPECT_EQ(Of(u"=[P.xls]Prices!1:2"), "[P.xls]Prices!$1:$2");
    Activate(u"My Sheet");
    EXPECT_EQ(Of(u"=B2"), "'[B.xls]My Sheet'!$B$2");
    EXPECT_EQ(Of(u"=Nope!B2"), "#NAME?");
}

TEST_F(EvaluateTest, ThenNamesThroughTheirDefinition) {
    EXPECT_EQ(Of(u"=Rate"), "[B.xls]S!$B$2");
    EXPECT_EQ(Of(u"=rAtE"), "[B.xls]S!$B$2");
    EXPECT_EQ(Of(u"=Deep"), "[B.xls]S!$B$2");
    EXPECT_EQ(Of(u"=Half"), "=0.5");
    EXPECT_EQ(Of(u"=Said"), "=3");
    EXPECT_EQ(Of(u"=Both"), "[B.xls]S!$C$2") << "the sheet's own first";
    EXPECT_EQ(Of(u"='My Sheet'!Both"), "[B.xls]S!$C$1");
    EXPECT_EQ(Of(u"=Own"), "#NAME?") << "another sheet's own";
    EXPECT_EQ(Of(u"='My Sheet'!Own"), "'[B.xls]My Sheet'!$A$9");
    EXPECT_EQ(Of(u"=[P.xls]Prices!Price"), "[P.xls]Prices!$A$1");
    EXPECT_EQ(Of(u"=Price"), "#NAME?") << "another workbook's";
    Activate(u"My Sheet");
    EXPECT_EQ(Of(u"=Own"), "'[B.xls]My Sheet'!$A$9");
}

TEST_F(EvaluateTest, ARingOfNamesIsTheNameError) {
    EXPECT_EQ(Of(u"=Ring"), "#NAME?");
    EXPECT_EQ(Of(u"=Gnir"), "#NAME?");
    EXPECT_EQ(Of(u"=Me"), "#NAME?");
}

TEST_F(EvaluateTest, ThenLiteralsWhereTheDocumentWantsThem) {
    EXPECT_EQ(Of(u"=1.50"), "=1.5");
    EXPECT_EQ(Of(u"=\"a\"\"b\""), "=\"a\"b\"");
    EXPECT_EQ(Of(u"=True"), "=true");
    EXPECT_EQ(Of(u"=FALSE"), "=false");
    host_->model().literals = false;
    EXPECT_EQ(Of(u"=1.50"), "#NAME?");
    EXPECT_EQ(Of(u"=\"a\""), "#NAME?");
    EXPECT_EQ(Of(u"=TRUE"), "#NAME?");
}

TEST_F(EvaluateTest, EverythingElseIsTheNameError) {
    for (const auto* text :
         {u"", u"=", u"=Nowhere", u"=A1+1", u"=SUM(B1,2)", u"=\"open", u"='S!A1", u"=[B.xls!A1"}) {
        EXPECT_EQ(Of(text), "#NAME?") << ToUtf8(text);
    }
}

TEST_F(EvaluateTest, AWrittenFormulaGivesAValueNeverCells) {
    Model& model = host_->model();
    model.write[u"=W"] = Answer{Answer::Kind::kValue, Value(8), u""};
    model.write[u"=B2"] = Answer{Answer::Kind::kValue, Value(9), u""};
    model.write[u"=R"] = Answer{Answer::Kind::kRange, Value(), u"S!B2"};
    model.write[u"=F2"] = Answer{Answer::Kind::kFail, Value(), u""};
    EXPECT_EQ(*host_->EvaluateWritten(u"=W").Number(), 8);
    EXPECT_EQ(*host_->EvaluateWritten(u"=B2").Number(), 9) << "its own answer first";
    EXPECT_EQ(*host_->EvaluateWritten(u"=R").Number(), 5);
    EXPECT_EQ(*host_->EvaluateWritten(u"=Rate").Number(), 5);
    EXPECT_TRUE(host_->EvaluateWritten(u"=Z9").IsEmpty());
    EXPECT_EQ(*host_->EvaluateWritten(u"=A2:B2").AsError(), ErrorCode::kValue)
        << "a block has no single value";
    EXPECT_EQ(*host_->EvaluateWritten(u"=L").Number(), 1) << "an array shows its first";
    EXPECT_EQ(*host_->EvaluateWritten(u"=SUM(B1)").Number(), 3) << "else as Evaluate";
    EXPECT_THROW(host_->EvaluateWritten(u"=F2"), Error);
    EXPECT_THROW(host_->EvaluateWritten(u"=F"), Error);
}

}  // namespace
}  // namespace korvane::scripted
