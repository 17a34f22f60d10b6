#include "bindings/curl/curl_library.h"

#include <gtest/gtest.h>

#include <string>

namespace korvane::curl {
namespace {

TEST(CurlLibrary, HasWhatIsUsed) {
    const CurlLibrary library;
    EXPECT_STREQ(library.strerror(CURLE_OK), "No error");
    CURL* const handle = library.init();
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(library.setopt(handle, CURLOPT_PROTOCOLS_STR, "https"), CURLE_OK);
    EXPECT_EQ(library.setopt(handle, CURLOPT_URL, "http://127.0.0.1/"), CURLE_OK);
    EXPECT_EQ(library.perform(handle), CURLE_UNSUPPORTED_PROTOCOL);
    long status = -1;
    EXPECT_EQ(library.getinfo(handle, CURLINFO_RESPONSE_CODE, &status), CURLE_OK);
    EXPECT_EQ(status, 0);
    library.cleanup(handle);
}

}  // namespace
}  // namespace korvane::curl
