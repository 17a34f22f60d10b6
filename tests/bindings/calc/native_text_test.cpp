// What is taken from the office's own text of a formula.
#include "bindings/calc/native_text.h"

#include <gtest/gtest.h>

namespace korvane::calc {
namespace {

using Texts = std::vector<std::u16string>;

TEST(NativeText, HasErrorNamesOutsideQuotations) {
    EXPECT_EQ(PartsOfNative(u"=#N/A+\"#REF!\"+#div/0!").errors, (Texts{u"#N/A", u"#DIV/0!"}));
}

TEST(NativeText, HasReferencesToTables) {
    EXPECT_EQ(PartsOfNative(u"=SUM(T1[[#This Row];[A b]:[C]];T_2[])+T3[D]").tables,
              (Texts{u"T1[[#This Row],[A b]:[C]]", u"T_2[]", u"T3[D]"}));
}

TEST(NativeText, HasArrayConstantsWithTheirErrors) {
    const auto parts = PartsOfNative(u"=INDEX({TRUE;-1.5|\"a;|}\";#N/A};2)+{1|2}+#REF!");
    EXPECT_EQ(parts.arrays, (Texts{u"{TRUE,-1.5;\"a;|}\",#N/A}", u"{1;2}"}));
    EXPECT_EQ(parts.errors, (Texts{u"#REF!"}));
    // The brackets of an array formula are no constant's.
    EXPECT_EQ(PartsOfNative(u"{=SUM({1;2}*A1)}").arrays, (Texts{u"{1,2}"}));
}

TEST(NativeText, HasReferencesToOtherFiles) {
    EXPECT_EQ(PartsOfNative(u"='file:///p/b.xlsx'#$Data.$A$1+1").externals,
              (Texts{u"[b.xlsx]Data!$A$1"}));
    EXPECT_EQ(
        PartsOfNative(u"=SUM('file:///p/a%20b.xlsx'#$'My Data'.A1:A2;'http://h:1/b.ods'#$A1.B2)")
            .externals,
        (Texts{u"'[a b.xlsx]My Data'!A1:A2", u"'[b.ods]A1'!B2"}));
    EXPECT_EQ(PartsOfNative(u"='file:///p/it''s.xlsx'#Rate*2").externals,
              (Texts{u"'it''s.xlsx'!Rate"}));
    EXPECT_EQ(
        PartsOfNative(u"='file:///p/b.xlsx'#$D.A1:INDEX('file:///p/b.xlsx'#$D.A1:A9;2)").externals,
        (Texts{u"[b.xlsx]D!A1", u"[b.xlsx]D!A1:A9"}));
    const auto lost = PartsOfNative(u"='file:///p/b.xlsx'#$D.$A$#REF!+#N/A");
    EXPECT_EQ(lost.externals, (Texts{u"[b.xlsx]D!#REF!"}));
    EXPECT_EQ(lost.errors, (Texts{u"#N/A"}));
}

}  // namespace
}  // namespace korvane::calc
