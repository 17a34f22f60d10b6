// The add-in's own workbook in Calc, where the add-in is a component: its file
// stands for the workbook.
#pragma once

#include <string>
#include <utility>

#include "host/workbook.h"

namespace korvane::calc {

// Where the running component lies.
struct AddinFile {
    std::u16string name;  // without its folder; empty when it is not known
    std::u16string path;  // the folder, without a "/" at its end
};

class AddinWorkbook : public host::Workbook {
public:
    explicit AddinWorkbook(AddinFile file) : file_(std::move(file)) {}

    std::u16string Name() override { return file_.name; }
    std::u16string Path() override { return file_.path; }
    // Raises: there are no cells and no names.
    host::NamesPtr Names() override;
    // Raises: it has no window.
    void Activate() override;

private:
    AddinFile file_;
};

}  // namespace korvane::calc
