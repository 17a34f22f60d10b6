// A document whose host may be lost and is started again.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/command/document.h"

namespace korvane::command {

using OpenDocument = std::function<std::unique_ptr<Document>()>;

class RestartingDocument : public Document {
public:
    // Opens the document. Throws what `open` throws.
    explicit RestartingDocument(OpenDocument open);

    // When the host is lost, a new one is started and the cell tried once more,
    // unless its time was up. A cell that loses the host again is a report with
    // `ok` false, and the next call starts another host. Throws what `open` throws,
    // and kNotFound as every document.
    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override;
    std::vector<std::u16string> FormulaCells() override;

    // How often the host was lost.
    std::int64_t hostsLost() const { return hostsLost_; }

private:
    Document& Running();
    // Throws `error` again when it is of another kind, or when the document cannot
    // even be opened.
    void NoteLoss(const CommandError& error);

    OpenDocument open_;
    std::unique_ptr<Document> document_;  // null while there is no host
    std::int64_t hostsLost_ = 0;
};

}  // namespace korvane::command
