#include "apps/command/tree_printer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

namespace korvane::command {
namespace {

PartReport Part(const char16_t* name, const char16_t* location, const char16_t* value) {
    PartReport part;
    part.name = name;
    part.formula = name;
    part.location = location;
    part.value = value;
    return part;
}

ExplorationReport Sample() {
    ExplorationReport report;
    report.ok = true;
    report.cell = u"[B.xls]S!$A$1";
    report.formula = u"=IF(B1>0,\u65e5,C1)";
    report.tree = Part(u"A1", u"S", u"7.00");
    PartReport call = Part(u"IF", u"", u"7");
    call.children = {Part(u"condition", u"", u"True"), Part(u"if true (chosen)", u"S!\u65e5", u"7"),
                     Part(u"if false", u"S!C1", u"#N/A")};
    call.children[0].kind = 1;
    call.children[0].children = {Part(u"B1", u"S", u"5")};
    call.children[1].kind = 2;
    call.children[1].tag = 1;
    call.children[2].kind = 3;
    report.tree->children = {call, Part(u"Rate", u"", u"")};
    return report;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

// `text` without the terminal's colours.
std::string WithoutColours(std::string text) {
    for (auto at = text.find('\x1b'); at != std::string::npos; at = text.find('\x1b')) {
        text.erase(at, text.find('m', at) - at + 1);
    }
    return text;
}

class TreePrinterTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
};

TEST_F(TreePrinterTest, APipeGetsAPlainTreeInThreeColumns) {
    EXPECT_EQ(PrintReport(Sample(), {}),
              "[B.xls]S!$A$1  =IF(B1>0,\u65e5,C1)\n"
              "\n"
              "Element               Location  Value\n"
              "A1                    S         7.00\n"
              "  IF                            7\n"
              "    condition                   True\n"
              "      B1              S         5\n"
              "    if true (chosen)  S!\u65e5      7\n"
              "    if false          S!C1      #N/A\n"
              "  Rate\n");
}

TEST_F(TreePrinterTest, ATerminalGetsBoxDrawing) {
    EXPECT_EQ(WithoutColours(PrintReport(Sample(), {true, 0})),
              "[B.xls]S!$A$1  =IF(B1>0,\u65e5,C1)\n"
              "\n"
              "Element                 Location  Value\n"
              "A1                      S         7.00\n"
              "├─ IF                             7\n"
              "│  ├─ condition                   True\n"
              "│  │  └─ B1             S         5\n"
              "│  ├─ if true (chosen)  S!\u65e5      7\n"
              "│  └─ if false          S!C1      #N/A\n"
              "└─ Rate\n");
}

TEST_F(TreePrinterTest, ChosenBranchesAndErrorsStandOut) {
    const std::string text = PrintReport(Sample(), {true, 0});
    EXPECT_NE(text.find("\x1b[1;32mif true (chosen)\x1b[0m"), std::string::npos);
    EXPECT_NE(text.find("\x1b[31m#N/A\x1b[0m"), std::string::npos);
    EXPECT_EQ(text.find("\x1b[1;32mif false"), std::string::npos);
    EXPECT_EQ(PrintReport(Sample(), {}).find('\x1b'), std::string::npos);
}

TEST_F(TreePrinterTest, FitsTheTerminalsWidth) {
    for (const int width : {80, 40, 36, 32}) {
        for (const auto& line : LinesOf(WithoutColours(PrintReport(Sample(), {true, width})))) {
            if (line.find("=IF") != std::string::npos) continue;  // the formula is shown whole
            EXPECT_LE(DisplayWidth(line), width) << line;
        }
    }
    EXPECT_NE(PrintReport(Sample(), {true, 34}).find("…"), std::string::npos);
    EXPECT_FALSE(PrintReport(Sample(), {true, 1}).empty());
}

TEST_F(TreePrinterTest, NoLineEndsInBlanks) {
    for (const bool decorated : {false, true}) {
        for (const auto& line : LinesOf(WithoutColours(PrintReport(Sample(), {decorated, 60})))) {
            EXPECT_TRUE(line.empty() || line.back() != ' ') << "'" << line << "'";
        }
    }
}

TEST_F(TreePrinterTest, TextsStayOnOneLineAndHarmless) {
    ExplorationReport report = Sample();
    report.tree->value = u"a\nb\u001b[31m";
    report.formula = u"=\"a\nb\"";
    const auto lines = LinesOf(PrintReport(report, {}));
    EXPECT_EQ(lines.size(), 10U);
    EXPECT_EQ(PrintReport(report, {}).find('\x1b'), std::string::npos);
}

TEST_F(TreePrinterTest, SaysWhatTheReaderShouldKnowAboutTheValues) {
    ExplorationReport report = Sample();
    EXPECT_EQ(PrintReport(report, {}).find("Note:"), std::string::npos);
    report.bMaybeImprecise = true;
    EXPECT_NE(PrintReport(report, {}).find("imprecise"), std::string::npos);
    EXPECT_NE(PrintReport(report, {}).find("--precise"), std::string::npos);
    EXPECT_EQ(PrintReport(report, {}).find("INDIRECT"), std::string::npos);
    report.bPreciseCalc = true;
    EXPECT_NE(PrintReport(report, {}).find("imprecise"), std::string::npos);
    EXPECT_EQ(PrintReport(report, {}).find("--precise"), std::string::npos)
        << "it was asked for already";
    report.bMaybeImprecise = false;
    report.bContainsIndirect = true;
    EXPECT_NE(PrintReport(report, {}).find("INDIRECT"), std::string::npos);
    EXPECT_EQ(PrintReport(report, {}).find("imprecise"), std::string::npos);
}

TEST_F(TreePrinterTest, AFailedExplorationHasItsFormulaAndNoTree) {
    ExplorationReport report = Sample();
    report.ok = false;
    report.tree.reset();
    EXPECT_EQ(PrintReport(report, {}), "[B.xls]S!$A$1  =IF(B1>0,\u65e5,C1)\n");
}

TEST_F(TreePrinterTest, AnOutlineLabelsTheBranches) {
    EXPECT_EQ(PrintOutline(*Sample().tree, {}),
              "A1\n"
              "  IF\n"
              "    condition: condition\n"
              "      B1\n"
              "    if true: if true (chosen)\n"
              "    if false: if false\n"
              "  Rate\n");
}

}  // namespace
}  // namespace korvane::command
