#include "bindings/scripted/scripted_url_reader.h"

#include "base/error.h"
#include "bindings/scripted/web_address.h"

namespace korvane::scripted {

std::u16string ScriptedUrlReader::Read(const std::u16string& address,
                                       std::chrono::seconds timeout) {
    accesses_->Enter("UrlReader.Read", address);
    requests.push_back({address, timeout});
    if (!HasScheme(address, {u"http:", u"https:"})) {
        throw Error(kErrorInvalidCall, u"No web page");
    }
    const auto found = texts.find(address);
    if (found == texts.end()) throw Error(kErrorApplication, u"The server does not answer");
    return found->second;
}

}  // namespace korvane::scripted
