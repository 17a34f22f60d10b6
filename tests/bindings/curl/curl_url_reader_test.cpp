#include "bindings/curl/curl_url_reader.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>

#include "base/error.h"
#include "base/text.h"
#include "bindings/curl/web_server.h"

namespace korvane::curl {
namespace {

using namespace std::chrono_literals;
using test::Certificate;
using test::WebServer;

class CurlUrlReaderTest : public testing::Test {
protected:
    void SetUp() override {
        const std::string why = test::WhyNoWebServer();
        if (!why.empty()) GTEST_SKIP() << "no web server to test with: " << why;
        ::setenv("no_proxy", "127.0.0.1", 1);
        std::string name = (std::filesystem::temp_directory_path() / "korvane-XXXXXX").native();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override {
        std::error_code ignored;
        if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
    }
    // The failure's description; empty when the address was read after all.
    static std::string FailureOf(CurlUrlReader& reader, const std::u16string& address,
                                 std::chrono::seconds timeout = 20s) {
        try {
            const auto text = reader.Read(address, timeout);
            ADD_FAILURE() << ToUtf8(address) << " was read: " << ToUtf8(text).substr(0, 80);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorApplication);
            return error.what();
        }
        return {};
    }

    std::filesystem::path folder_;
};

TEST_F(CurlUrlReaderTest, ReadsTexts) {
    const WebServer server;
    CurlUrlReader reader;
    const auto read = [&](const char* path) {
        return ToUtf8(reader.Read(server.Address(path), 20s));
    };
    EXPECT_EQ(read("/says/2.1/kvversion.txt"), "2.1");
    EXPECT_EQ(read("/says/%202.2%0D%0A/"), " 2.2\r\n");
    EXPECT_EQ(read("/says//"), "");
    EXPECT_EQ(read("/says/%C3%A9%E2%82%AC/"), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(read("/says/%EF%BB%BF2.2/"), "2.2");  // written by an editor that marks its files
    EXPECT_EQ(read("/says/2.2%FF%E9/"), "2.2\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(reader.Read(server.Address("/says/2%002/"), 20s), std::u16string(u"2\0002", 3));
}

TEST_F(CurlUrlReaderTest, TakesSoMuchAndNoMore) {
    const WebServer server;
    CurlUrlReader reader;
    for (const char* how : {"/size/", "/stream/"}) {
        const auto text = reader.Read(server.Address(how + std::to_string(65536) + "/"), 20s);
        EXPECT_EQ(text, std::u16string(65536, u'1')) << how;
        for (const int size : {65537, 500'000}) {
            FailureOf(reader, server.Address(how + std::to_string(size) + "/"));
        }
    }
}

TEST_F(CurlUrlReaderTest, GivesUpInTime) {
    const WebServer server;
    CurlUrlReader reader;
    for (const char* path : {"/drip/", "/silent/"}) {
        const auto why = FailureOf(reader, server.Address(path), 1s);
        EXPECT_NE(why.find("imeout"), std::string::npos) << why;
    }
    FailureOf(reader, server.Address("/silent/"), 0s);  // no time is not any time
}

TEST_F(CurlUrlReaderTest, WantsTheWholeAnswerAndThePageItself) {
    const WebServer server;
    CurlUrlReader reader;
    FailureOf(reader, server.Address("/cut/"));
    for (const char* path : {"/nowhere", "/status/404/", "/status/500/", "/status/203/",
                             "/status/300/", "/status/304/"}) {
        FailureOf(reader, server.Address(path));
    }
    FailureOf(reader, test::RefusedAddress());
    FailureOf(reader, u"http://");
    FailureOf(reader, u"http://127.0.0.1:99999/");
}

TEST_F(CurlUrlReaderTest, IsSentOnAFewTimes) {
    const WebServer server;
    CurlUrlReader reader;
    EXPECT_EQ(reader.Read(server.Address("/hops/5/x"), 20s), u"2.2");
    FailureOf(reader, server.Address("/hops/6/x"));
    FailureOf(reader, server.Address("/loop/"));
}

TEST_F(CurlUrlReaderTest, ReadsTheWebAlone) {
    const auto file = folder_ / "version.txt";
    std::ofstream(file) << "2.2";
    CurlUrlReader reader;
    for (const std::u16string& address :
         {ToUtf16("file://" + file.native()), ToUtf16(file.native()), std::u16string(u""),
          std::u16string(u"ftp://127.0.0.1/x"), std::u16string(u"127.0.0.1"),
          std::u16string(u"https"), std::u16string(u"httpx://127.0.0.1/"),
          std::u16string(u"http\u017F://127.0.0.1/"), std::u16string(u"gopher://127.0.0.1/x"),
          std::u16string(u"http://127.0.0.1/\r\nX: y"), std::u16string(u"http://a\0b", 10)}) {
        try {
            reader.Read(address, 20s);
            ADD_FAILURE() << ToUtf8(address);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorInvalidCall) << ToUtf8(address);
        }
    }
    // Nor when a server says so.
    const WebServer server;
    std::string path = file.native();
    for (std::size_t at = 0; (at = path.find('/', at)) != std::string::npos;) {
        path.replace(at, 1, "%2F");
    }
    FailureOf(reader, server.Address("/to/file:%2F%2F" + path));
    FailureOf(reader, server.Address("/to/ftp:%2F%2F127.0.0.1%2Fx"));
}

TEST_F(CurlUrlReaderTest, AServerProvesWhoItIs) {
    const Certificate certificate(folder_, "IP:127.0.0.1");
    const WebServer server(certificate);
    CurlUrlReader trusting(certificate.file);
    EXPECT_EQ(trusting.Read(server.Address("/says/2.2/"), 20s), u"2.2");
    EXPECT_EQ(trusting.Read(server.Address("/hops/2/"), 20s), u"2.2");
    CurlUrlReader reader;  // to the system nobody has vouched for it
    const auto why = FailureOf(reader, server.Address("/says/2.2/"));
    EXPECT_NE(why.find("certificate"), std::string::npos) << why;
}

TEST_F(CurlUrlReaderTest, AnotherServersCertificateIsNone) {
    const Certificate certificate(folder_, "DNS:example.org");
    const WebServer server(certificate);
    CurlUrlReader reader(certificate.file);
    const auto why = FailureOf(reader, server.Address("/says/2.2/"));
    EXPECT_NE(why.find("certificate"), std::string::npos) << why;
}

TEST_F(CurlUrlReaderTest, FromASecretPageToSecretPagesAlone) {
    const Certificate certificate(folder_, "IP:127.0.0.1");
    const WebServer secret(certificate);
    const WebServer open;
    CurlUrlReader reader(certificate.file);
    const auto sentOn = [](const WebServer& from, const WebServer& to) {
        std::string address = ToUtf8(to.Address("/says/2.2/"));
        for (std::size_t at = 0; (at = address.find('/', at)) != std::string::npos;) {
            address.replace(at, 1, "%2F");
        }
        return from.Address("/to/" + address);
    };
    EXPECT_EQ(reader.Read(sentOn(open, secret), 20s), u"2.2");
    FailureOf(reader, sentOn(secret, open));
}

// Certificates to trust that are not there: trust nobody, rather than anybody.
TEST_F(CurlUrlReaderTest, WithoutAuthoritiesNobodyIsTrusted) {
    const Certificate certificate(folder_, "IP:127.0.0.1");
    const WebServer server(certificate);
    CurlUrlReader reader(folder_ / "missing.pem");
    FailureOf(reader, server.Address("/says/2.2/"));
}

}  // namespace
}  // namespace korvane::curl
