#include "workbook.h"

#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "apps/office/loader.h"
#include "base/number.h"
#include "base/text.h"
#include "inside_office.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

OpenBook::OpenBook(const std::string& fileName, const std::string& content)
    : OpenBook([&] {
          const auto path = std::filesystem::path(std::getenv("TMPDIR")) / fileName;
          std::ofstream(path, std::ios::binary) << content;
          return path.string();
      }()) {}

OpenBook::OpenBook(const std::string& path)
    : model_(office::OpenWorkbook(OfficeContext(), path)),
      application_(std::make_unique<CalcApplication>(
          OfficeContext(), model_, AddinFile{u"korvane-office.so", u"/add-in"})) {}

OpenBook::~OpenBook() { Close(); }

void OpenBook::SetAutomaticCalculation(bool automatic) {
    Reference<css::sheet::XCalculatable>(model_, UNO_QUERY_THROW)
        ->enableAutomaticCalculation(automatic);
}

void OpenBook::CalculateAll() {
    Reference<css::sheet::XCalculatable>(model_, UNO_QUERY_THROW)->calculateAll();
}

void OpenBook::Close() {
    if (!model_.is()) return;
    Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
    model_.clear();
}

std::string OpenBook::Snapshot() const { return StateOf(model_); }

std::string Shown(const Value& value) {
    if (value.IsEmpty()) return "empty";
    if (value.IsNull()) return "null";
    if (value.Text()) return '"' + ToUtf8(*value.Text()) + '"';
    if (value.Boolean()) return *value.Boolean() ? "True" : "False";
    if (value.Number()) return ToUtf8(NumberText(*value.Number()));
    if (value.AsDate()) return "date " + ToUtf8(NumberText(value.AsDate()->serial));
    if (value.AsError()) return ToUtf8(ErrorName(*value.AsError()));
    if (const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject())) {
        const std::u16string address = range->Address(host::kExternal);
        return ToUtf8(std::u16string(AfterLast(address, u']')));
    }
    const Array* array = value.AsArray();
    if (array == nullptr) return "another object";
    std::string out = "{";
    for (std::size_t row = 1; row <= array->rows; ++row) {
        for (std::size_t column = 1; column <= array->columns; ++column) {
            out += Shown(array->At(row, column)) + (column < array->columns ? ","
                                                    : row < array->rows     ? ";"
                                                                            : "");
        }
    }
    return out + "}";
}

}  // namespace korvane::calc::testing
