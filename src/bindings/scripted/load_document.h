// Scripted documents: a host's contents as JSON, for tests, for the command line
// and for bug reports. The format is described in docs/scripted-documents.md.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "bindings/scripted/model.h"

namespace korvane::scripted {

// A text that is no scripted document; the message says where and why.
class DocumentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The model of one document. Throws DocumentError.
Model LoadDocument(const nlohmann::json& document);

// The documents of a text: a JSON object is one, a list holds several. Throws
// DocumentError when the text is no JSON or neither of them.
std::vector<nlohmann::json> SplitDocuments(const std::string& text);

}  // namespace korvane::scripted
