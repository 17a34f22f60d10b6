// A web of the few pages that a test puts there.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/url_reader.h"

namespace korvane::scripted {

class ScriptedUrlReader : public platform::UrlReader {
public:
    explicit ScriptedUrlReader(std::shared_ptr<Accesses> accesses)
        : accesses_(std::move(accesses)) {}

    // Raises kErrorInvalidCall for an address that is no web page's, and
    // kErrorApplication for one that is not among `texts`.
    std::u16string Read(const std::u16string& address, std::chrono::seconds timeout) override;

    struct Request {
        std::u16string address;
        std::chrono::seconds timeout;
    };

    std::map<std::u16string, std::u16string> texts;  // by address
    std::vector<Request> requests;                   // answered or not, in order

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
