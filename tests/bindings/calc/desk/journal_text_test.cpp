#include "bindings/calc/desk/journal_text.h"

#include <gtest/gtest.h>

namespace korvane::calc {
namespace {

const ProcessMark kProcess{17, 4711, "boot"};

FillLine Tinted(long number) {
    FillLine line{number, {}};
    line.note.url = u"file:///a%20b/K\u00e4se.ods";
    line.note.sheet = u"Tab\tand\nbreak 100%09";
    line.note.written = {0x00CCFF, true};
    line.note.parts = {{CellBlock(1, 2, 3, 4, 5), {kNoFill, false}},
                       {CellBlock(1, 0, 0, 16383, 1048575), {0xFFFFFF, true}}};
    return line;
}

FormulaLine Written(long number) {
    FormulaLine line{number, {}};
    line.note.url = u"file:///b.ods";
    line.note.sheet = u"S";
    line.note.column = 3;
    line.note.row = 7;
    line.note.before = u"{=SUM(A1:A3*\"\u00e9\n\")}";
    line.note.beforeIsFormula = true;
    line.note.written = u"=A1";
    return line;
}

TEST(JournalText, WhatIsWrittenIsReadAgain) {
    std::string text = LineText(JournalHead{kProcess}) + LineText(Tinted(1)) +
                       LineText(Written(2)) + LineText(ShownLine{2, u"=$A$1"});
    JournalContent content;
    ASSERT_EQ(ReadJournal(text, content), JournalReading::kReady);
    EXPECT_EQ(content.process, kProcess);
    ASSERT_EQ(content.fills.size(), 1u);
    const FillNote& fill = content.fills.front().note;
    EXPECT_EQ(fill.url, Tinted(1).note.url);
    EXPECT_EQ(fill.sheet, Tinted(1).note.sheet);
    EXPECT_EQ(fill.written, Tinted(1).note.written);
    ASSERT_EQ(fill.parts.size(), 2u);
    EXPECT_TRUE(IsSame(fill.parts[0].block, CellBlock(1, 2, 3, 4, 5)));
    EXPECT_EQ(fill.parts[0].before, (Fill{kNoFill, false}));
    EXPECT_TRUE(IsSame(fill.parts[1].block, CellBlock(1, 0, 0, 16383, 1048575)));
    ASSERT_EQ(content.formulas.size(), 1u);
    const FormulaNote& formula = content.formulas.front().note;
    EXPECT_EQ(formula.before, Written(2).note.before);
    EXPECT_EQ(formula.column, 3);
    EXPECT_EQ(formula.row, 7);
    EXPECT_TRUE(formula.beforeIsFormula);
    EXPECT_FALSE(formula.hadOwnFormat);
    EXPECT_EQ(formula.written, u"=A1");
    EXPECT_EQ(formula.shown, u"=$A$1");

    text += LineText(EndLine{1});
    ASSERT_EQ(ReadJournal(text, content), JournalReading::kReady);
    EXPECT_TRUE(content.fills.empty());
    EXPECT_EQ(content.formulas.size(), 1u);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 5);
}

TEST(JournalText, ALineThatWasCutOffDoesNotCount) {
    const std::string head = LineText(JournalHead{kProcess}) + LineText(Tinted(1));
    const std::string last = LineText(Written(2));
    for (std::size_t size = 0; size < last.size(); ++size) {
        JournalContent content;
        ASSERT_EQ(ReadJournal(head + last.substr(0, size), content), JournalReading::kReady);
        EXPECT_EQ(content.fills.size(), 1u);
        EXPECT_TRUE(content.formulas.empty()) << size;
    }
}

TEST(JournalText, WhatIsNoJournalIsToldApart) {
    const std::string head = LineText(JournalHead{kProcess});
    const std::string fill = LineText(Tinted(1));
    std::string negative = fill;
    negative.replace(negative.find("\t2\t3"), 4, "\t-2\t3");
    for (const std::string& text :
         {std::string("\n"), std::string("anything\n"), fill, fill + head, head + head,
          head + "fill\t1\n", head + "fill\tx\tu\ts\t1\t1\n", head + "end\t\n",
          head + "end\t1\t2\n", head + "end\t99999999999999999999\n", head + "shown\t1\n",
          head + negative, head + fill.substr(0, fill.size() - 3) + "\n",
          std::string("\0\1\2\n", 4)}) {
        JournalContent content;
        EXPECT_EQ(ReadJournal(text, content), JournalReading::kCorrupt) << text;
    }
}

}  // namespace
}  // namespace korvane::calc
