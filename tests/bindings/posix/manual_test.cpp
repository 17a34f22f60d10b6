#include "bindings/posix/manual.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

class ManualTest : public testing::Test {
protected:
    ManualTest() {
        std::filesystem::create_directories(folder_);
        for (const char* page : {"index.html", "window.html", "settings.html"}) {
            WriteBytes(folder_ / page, "<html>");
        }
    }
    void WriteTopics(const std::string& text) { WriteBytes(folder_ / "topics.txt", text); }
    // The address within the folder; empty when it raises.
    std::string Page(std::int32_t topic) const {
        try {
            const std::string address = manual_.Address(topic);
            const std::string start = "file://" + folder_.native() + "/";
            EXPECT_EQ(address.substr(0, start.size()), start);
            return address.substr(start.size());
        } catch (const Error&) {
            return {};
        }
    }

    TempFolder temp_;
    std::filesystem::path folder_ = temp_.path() / "manual";
    Manual manual_{folder_};
};

TEST_F(ManualTest, IsThereWithItsStartPage) {
    EXPECT_TRUE(manual_.IsThere());
    EXPECT_FALSE(Manual().IsThere());
    EXPECT_FALSE(Manual(temp_.path()).IsThere());
    std::filesystem::remove(folder_ / "index.html");
    EXPECT_FALSE(manual_.IsThere());
    std::filesystem::create_directory(folder_ / "index.html");
    EXPECT_FALSE(manual_.IsThere());
}

TEST_F(ManualTest, NoTopicIsTheStartPage) {
    for (const std::int32_t topic : {0, -1, INT32_MIN}) EXPECT_EQ(Page(topic), "index.html");
    EXPECT_THROW(Manual().Address(0), Error);
    EXPECT_THROW(Manual(temp_.path()).Address(0), Error);
}

TEST_F(ManualTest, TopicsAreLookedUpAtTheTime) {
    EXPECT_EQ(Page(7), "");
    WriteTopics("1 window.html\n7 settings.html#keys\r\n70 index.html\n");
    EXPECT_EQ(Page(1), "window.html");
    EXPECT_EQ(Page(7), "settings.html#keys");
    EXPECT_EQ(Page(70), "index.html");
    EXPECT_EQ(Page(8), "");
    WriteTopics("8 window.html#a-b_c.1");  // no line end
    EXPECT_EQ(Page(7), "");
    EXPECT_EQ(Page(8), "window.html#a-b_c.1");
}

TEST_F(ManualTest, APageIsAFileBesideTheList) {
    WriteBytes(temp_.path() / "outside.html", "<html>");
    std::filesystem::create_directory(folder_ / "folder.html");
    WriteBytes(folder_ / ".hidden.html", "<html>");
    for (const std::string& page : {std::string("missing.html"),
                                    std::string("../outside.html"),
                                    temp_.path().native() + "/outside.html",
                                    std::string("./window.html"),
                                    std::string("folder.html"),
                                    std::string(".hidden.html"),
                                    std::string("window"),
                                    std::string(".html"),
                                    std::string("https://example.org/x.html"),
                                    std::string("file:///etc/x.html"),
                                    std::string("window.html?x"),
                                    std::string("window.html#"),
                                    std::string("window.html#a b"),
                                    std::string("window.html#a\"b"),
                                    std::string("window.html#a#b"),
                                    std::string(" window.html"),
                                    std::string("window.html "),
                                    std::string("-window.html"),
                                    std::string("%2e%2e/outside.html"),
                                    std::string("window.html\tx"),
                                    std::string("")}) {
        WriteTopics("1 " + page + "\n");
        EXPECT_EQ(Page(1), "") << page;
    }
    WriteTopics("01 window.html\n1.0 window.html\n+1 window.html\n1\twindow.html\n1window.html\n");
    EXPECT_EQ(Page(1), "");
}

TEST_F(ManualTest, AnAddressEscapesTheFolder) {
    const auto folder = temp_.path() / "a b#c%\xC3\xA9";
    std::filesystem::create_directory(folder);
    WriteBytes(folder / "index.html", "<html>");
    EXPECT_EQ(Manual(folder / ".").Address(0),
              "file://" + temp_.path().native() + "/a%20b%23c%25%C3%A9/index.html");
}

}  // namespace
}  // namespace korvane::posix
