#include "bindings/posix/command_line.h"

#include <gtest/gtest.h>

namespace korvane::posix {
namespace {

using Arguments = std::vector<std::string>;

TEST(SplitCommandLine, SeparatesAtBlanks) {
    EXPECT_EQ(SplitCommandLine(u""), Arguments{});
    EXPECT_EQ(SplitCommandLine(u" \t "), Arguments{});
    EXPECT_EQ(SplitCommandLine(u" a  b\tc "), (Arguments{"a", "b", "c"}));
    EXPECT_EQ(SplitCommandLine(u"\u00e9"), Arguments{"\xC3\xA9"});
}

TEST(SplitCommandLine, KeepsTogetherWhatIsQuoted) {
    EXPECT_EQ(SplitCommandLine(u"\"/a b/c\" \"\" d\"e f\"g"), (Arguments{"/a b/c", "", "de fg"}));
    EXPECT_EQ(SplitCommandLine(u"a \"b c"), (Arguments{"a", "b c"}));
    EXPECT_EQ(SplitCommandLine(u"\""), Arguments{""});
}

TEST(SplitCommandLine, KnowsNothingElse) {
    EXPECT_EQ(SplitCommandLine(u"a\\ b 'c d' $(e) `f`;*|>&\n"),
              (Arguments{"a\\", "b", "'c", "d'", "$(e)", "`f`;*|>&\n"}));
}

}  // namespace
}  // namespace korvane::posix
