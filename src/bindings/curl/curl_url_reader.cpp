#include "bindings/curl/curl_url_reader.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "base/error.h"
#include "base/text.h"
#include "bindings/curl/curl_library.h"

namespace korvane::curl {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool HasScheme(std::u16string_view address, std::u16string_view scheme) {
    return address.size() > scheme.size() && address[scheme.size()] == u':' &&
           EqualIgnoringCase(address.substr(0, scheme.size()), scheme);
}

bool IsControl(char16_t unit) { return unit < 0x20 || unit == 0x7F; }

long Milliseconds(std::chrono::seconds time) {
    return static_cast<long>(std::chrono::milliseconds(time).count());
}

[[noreturn]] void RaiseUnread(const std::u16string& address, const std::string& why) {
    throw Error(kErrorApplication, u"Nothing was read from " + address + u": " + ToUtf16(why));
}

// What has come of a text so far. Called by C code: raises nothing.
struct Received {
    std::string bytes;

    static std::size_t Take(char* data, std::size_t /*one*/, std::size_t count, void* self) {
        std::string& bytes = static_cast<Received*>(self)->bytes;
        // Any other number than `count` ends the transfer.
        if (count > CurlUrlReader::kMostBytes - bytes.size()) return 0;
        bytes.append(data, count);  // fits into what was reserved
        return count;
    }
};

// One transfer.
class Transfer {
public:
    explicit Transfer(const CurlLibrary& library) : library_(library), handle_(library.init()) {
        if (handle_ == nullptr) throw Error(kErrorOutOfMemory, u"libcurl cannot start");
    }
    ~Transfer() { library_.cleanup(handle_); }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    template <class Value>
    void Set(CURLoption option, Value value) {
        Check(library_.setopt(handle_, option, value));
    }
    void Run() { Check(library_.perform(handle_)); }
    long Status() const {
        long status = 0;
        library_.getinfo(handle_, CURLINFO_RESPONSE_CODE, &status);
        return status;
    }

private:
    void Check(CURLcode code) const {
        if (code != CURLE_OK) throw Error(kErrorApplication, ToUtf16(library_.strerror(code)));
    }

    const CurlLibrary& library_;
    CURL* handle_;
};

}  // namespace

CurlUrlReader::CurlUrlReader(std::filesystem::path authorities)
    : authorities_(std::move(authorities)) {}

CurlUrlReader::~CurlUrlReader() = default;

std::u16string CurlUrlReader::Read(const std::u16string& address, std::chrono::seconds timeout) {
    const bool secure = HasScheme(address, u"https");
    if ((!secure && !HasScheme(address, u"http")) ||
        std::any_of(address.begin(), address.end(), IsControl)) {
        throw Error(kErrorInvalidCall, u"No address of a web page: " + address);
    }
    const std::string url = ToUtf8(address);
    Received received;
    received.bytes.reserve(kMostBytes);
    try {
        if (!library_) library_ = std::make_unique<CurlLibrary>();
        Transfer transfer(*library_);
        transfer.Set(CURLOPT_NOSIGNAL, 1L);  // signals belong to the host
        transfer.Set(CURLOPT_URL, url.c_str());
        transfer.Set(CURLOPT_PROTOCOLS_STR, "http,https");
        // Who asked in secret is not sent on to where all can read along.
        transfer.Set(CURLOPT_REDIR_PROTOCOLS_STR, secure ? "https" : "http,https");
        transfer.Set(CURLOPT_FOLLOWLOCATION, 1L);
        transfer.Set(CURLOPT_MAXREDIRS, kMostRedirects);
        transfer.Set(CURLOPT_SSL_VERIFYPEER, 1L);
        transfer.Set(CURLOPT_SSL_VERIFYHOST, 2L);
        if (!authorities_.empty()) {
            transfer.Set(CURLOPT_CAINFO, authorities_.c_str());
            transfer.Set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
        }
        // No time at all would be taken for any time.
        transfer.Set(CURLOPT_TIMEOUT_MS, std::max(Milliseconds(timeout), 1L));
        transfer.Set(CURLOPT_MAXFILESIZE, static_cast<long>(kMostBytes));
        transfer.Set(CURLOPT_USERAGENT, "Korvane Explorer");
        transfer.Set(CURLOPT_WRITEFUNCTION, &Received::Take);
        transfer.Set(CURLOPT_WRITEDATA, static_cast<void*>(&received));
        transfer.Run();
        if (const long status = transfer.Status(); status != 200) {
            throw Error(kErrorApplication, u"the status is " + ToUtf16(std::to_string(status)));
        }
    } catch (const Error& error) {
        RaiseUnread(address, error.what());
    }
    std::string_view text = received.bytes;
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        text.remove_prefix(kByteOrderMark.size());
    }
    return ToUtf16(text);
}

}  // namespace korvane::curl
