#include "bindings/scripted/scripted_url_reader.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

using std::chrono::seconds;

class ScriptedUrlReaderTest : public testing::Test {
protected:
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedUrlReader urls_{accesses_};
};

TEST_F(ScriptedUrlReaderTest, ReadsThePagesThatAreThere) {
    urls_.texts = {{u"http://a/one", u"text\n"}, {u"https://a/two", u""}};
    EXPECT_EQ(urls_.Read(u"http://a/one", seconds(5)), u"text\n");
    EXPECT_EQ(urls_.Read(u"https://a/two", seconds(5)), u"");
    EXPECT_THROW(urls_.Read(u"http://a/three", seconds(5)), Error);
}

TEST_F(ScriptedUrlReaderTest, ReadsNothingButWebPages) {
    urls_.texts = {{u"file:///a", u"text"}};
    EXPECT_THROW(urls_.Read(u"file:///a", seconds(5)), Error);
}

TEST_F(ScriptedUrlReaderTest, RemembersEveryRequest) {
    urls_.texts = {{u"http://a", u"text"}};
    urls_.Read(u"http://a", seconds(5));
    EXPECT_THROW(urls_.Read(u"http://b", seconds(7)), Error);
    ASSERT_EQ(urls_.requests.size(), 2U);
    EXPECT_EQ(urls_.requests[0].address, u"http://a");
    EXPECT_EQ(urls_.requests[0].timeout, seconds(5));
    EXPECT_EQ(urls_.requests[1].address, u"http://b");
    EXPECT_EQ(urls_.requests[1].timeout, seconds(7));
}

TEST_F(ScriptedUrlReaderTest, IsNotedAndFails) {
    urls_.texts = {{u"http://a", u"text"}};
    accesses_->StartLog();
    urls_.Read(u"http://a", seconds(5));
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"UrlReader.Read http://a"}));
    accesses_->FailMember("UrlReader.Read");
    EXPECT_THROW(urls_.Read(u"http://a", seconds(5)), Error);
    EXPECT_EQ(urls_.requests.size(), 1U);
}

}  // namespace
}  // namespace korvane::scripted
