#include "apps/command/parse_command.h"

#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <nlohmann/json.hpp>

namespace korvane::command {
namespace {

using Json = nlohmann::json;

struct Result {
    ExitCode code;
    std::string output;

    // The output's lines as JSON objects.
    std::vector<Json> objects() const {
        std::vector<Json> lines;
        std::size_t begin = 0;
        for (auto end = output.find('\n'); end != std::string::npos;
             end = output.find('\n', begin)) {
            lines.push_back(Json::parse(output.substr(begin, end - begin)));
            begin = end + 1;
        }
        EXPECT_EQ(begin, output.size()) << "every line ends in a line feed";
        return lines;
    }
};

class ParseCommandTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }

    static Result Run(const std::string& input, const ParseOptions& options,
                      const Style& style = {}) {
        struct Close {
            void operator()(std::FILE* file) const { std::fclose(file); }
        };
        const std::unique_ptr<std::FILE, Close> in(std::tmpfile());
        const std::unique_ptr<std::FILE, Close> out(std::tmpfile());
        std::fwrite(input.data(), 1, input.size(), in.get());
        std::rewind(in.get());
        Result result{RunParse(options, style, in.get(), out.get()), ""};
        std::rewind(out.get());
        for (int ch = std::fgetc(out.get()); ch != EOF; ch = std::fgetc(out.get())) {
            result.output += static_cast<char>(ch);
        }
        return result;
    }
    static ParseOptions AsJson(bool functions = true) { return {functions, true, false}; }
    static ParseOptions Counted() { return {true, false, true}; }
};

TEST_F(ParseCommandTest, GivesOneObjectPerFormula) {
    const Result result = Run("=SUM(A1,5)\n=B1\n", AsJson());
    EXPECT_EQ(result.code, kDone);
    EXPECT_EQ(
        result.output,
        R"j({"formula":"=SUM(A1,5)","tree":{"name":"A1","function":"","formula":"=SUM(A1,5)",)j"
        R"j("kind":0,)j"
        R"j("tag":0,"pos":0,"rootPos":0,"length":10,"children":[{"name":"SUM","function":"SUM",)j"
        R"j("formula":"SUM(A1,5)","kind":0,"tag":0,"pos":2,"rootPos":2,"length":9,"children":[)j"
        R"j({"name":"#NAME?","function":"","formula":"A1","kind":0,"tag":0,"pos":5,"rootPos":6,)j"
        R"j("length":2,"children":[]}]}]}})j"
        "\n"
        R"j({"formula":"=B1","tree":{"name":"A1","function":"","formula":"=B1","kind":0,"tag":0,)j"
        R"j("pos":0,"rootPos":0,"length":3,"children":[{"name":"#NAME?","function":"",)j"
        R"j("formula":"B1",)j"
        R"j("kind":0,"tag":0,"pos":2,"rootPos":2,"length":2,"children":[]}]}})j"
        "\n");
}

TEST_F(ParseCommandTest, BranchesCarryTheirKindAndTag) {
    const auto tree = Run("=IF(1,B1,C1)\n=CHOOSE(2,B1,C1)\n", AsJson()).objects();
    ASSERT_EQ(tree.size(), 2U);
    const Json& ifCall = tree[0]["tree"]["children"][0]["children"];
    EXPECT_EQ(ifCall[0]["kind"], 1);
    EXPECT_EQ(ifCall[1]["kind"], 2);
    EXPECT_EQ(ifCall[1]["tag"], 1);
    EXPECT_EQ(ifCall[1]["name"], "if true (chosen)");
    EXPECT_EQ(ifCall[2]["tag"], 0);
    const Json& choose = tree[1]["tree"]["children"][0]["children"];
    EXPECT_EQ(choose[0]["kind"], 4);
    EXPECT_EQ(choose[1]["kind"], 6);
    EXPECT_EQ(choose[2]["kind"], 5);
    EXPECT_EQ(choose[2]["tag"], 2);
}

TEST_F(ParseCommandTest, WithoutFunctionsCallsAreSeenThrough) {
    const auto lines = Run("=SUM(A1,5)", AsJson(false)).objects();
    EXPECT_EQ(lines[0]["tree"]["children"].size(), 1U);
    EXPECT_EQ(lines[0]["tree"]["children"][0]["formula"], "A1");
}

TEST_F(ParseCommandTest, AFailureIsAnObjectToo) {
    const Result result = Run("=\"open\n=B1\n", AsJson());
    EXPECT_EQ(result.code, kExplorationFailed);
    const auto lines = result.objects();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0],
              (Json{{"formula", "=\"open"}, {"error", "A quote is not closed (bInitRoot)"}}));
    EXPECT_TRUE(lines[1].contains("tree"));
}

TEST_F(ParseCommandTest, ALineThatBeginsWithAQuoteIsAJsonString) {
    const auto lines = Run("\"=A1+\\n\\\"x\\\"\\u00e4\"\n\"broken\n\"a\" b\n", AsJson()).objects();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["formula"], "=A1+\n\"x\"\u00e4");
    EXPECT_EQ(lines[1]["formula"], "\"broken");
    EXPECT_TRUE(lines[1].contains("error"));
    EXPECT_TRUE(lines[2].contains("error"));
}

TEST_F(ParseCommandTest, LinesEndInEitherWayAndTheLastNeedsNoEnd) {
    const auto lines = Run("=A1\r\n\n=B1", AsJson()).objects();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["formula"], "=A1");
    EXPECT_EQ(lines[1]["formula"], "") << "an empty line is an empty cell";
    EXPECT_EQ(lines[2]["formula"], "=B1");
    EXPECT_EQ(Run("", AsJson()).output, "");
}

TEST_F(ParseCommandTest, CountsFormulasElementsAndFailures) {
    const Result result = Run("=A1+B1\n=\"open\n7\n", Counted());
    EXPECT_EQ(result.code, kExplorationFailed);
    EXPECT_EQ(result.output, "formulas: 3\nelements: 4\nfailures: 1\n");
    EXPECT_EQ(Run("", Counted()).output, "formulas: 0\nelements: 0\nfailures: 0\n");
    EXPECT_EQ(Run("=A1\n", Counted()).code, kDone);
}

TEST_F(ParseCommandTest, PrintsAnOutlineForPeople) {
    EXPECT_EQ(Run("=IF(1,B1,CHOOSE(1,2))\n", {}).output,
              "=IF(1,B1,CHOOSE(1,2))\n"
              "  IF(1,B1,CHOOSE(1,2))\n"
              "    condition: 1\n"
              "    if true: B1\n"
              "    if false: CHOOSE(1,2)\n"
              "      CHOOSE(1,2)\n"
              "        index: 1\n"
              "        value1: 2\n");
    EXPECT_EQ(Run("=\"open\n", {}).output, "=\"open\n  error: A quote is not closed (bInitRoot)\n");
}

TEST_F(ParseCommandTest, GarbageGivesErrorsAndNoCrash) {
    std::string garbage = "=\xFF\xFE\x80+A1\n";
    garbage += std::string("=A1+\0B1\n", 8);
    for (int k = 0; k < 4000; ++k) garbage += static_cast<char>(k * 7919 % 251);
    const Result json = Run(garbage, AsJson());
    const auto lines = json.objects();
    ASSERT_GT(lines.size(), 2U);
    EXPECT_EQ(lines[0]["formula"], "=\uFFFD\uFFFD\uFFFD+A1");
    EXPECT_EQ(lines[1]["formula"], std::string("=A1+\0B1", 7));
    const Result text = Run(garbage, {});
    EXPECT_EQ(text.output.find('\x1b'), std::string::npos) << "nothing that a terminal would obey";
    EXPECT_EQ(text.output.find('\xFF'), std::string::npos);
}

TEST_F(ParseCommandTest, AHugeLineIsRefusedAndTheNextOneRead) {
    const auto lines = Run("=" + std::string(3 << 20, 'A') + "\n=B1\n", AsJson()).objects();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[0]["error"].get<std::string>().find("too long"), std::string::npos);
    EXPECT_EQ(lines[1]["formula"], "=B1");
}

TEST_F(ParseCommandTest, NestingTooDeepIsAnError) {
    std::string formula = "=";
    for (int k = 0; k < 2000; ++k) formula += "F(";
    const auto lines = Run(formula + "A1\n", AsJson()).objects();
    EXPECT_EQ(lines[0]["error"], "The formula is nested too deeply (bInitRoot)");
    EXPECT_TRUE(Run(formula + "A1\n", AsJson(false)).objects()[0].contains("tree"));
}

}  // namespace
}  // namespace korvane::command
