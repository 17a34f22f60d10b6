#include "base/error.h"

#include <new>
#include <utility>

#include "base/text.h"

namespace korvane {

Error::Error(int number, std::u16string description)
    : number_(number), description_(std::move(description)), utf8_(ToUtf8(description_)) {}

Error WithProcedure(const Error& error, std::u16string_view procedure) {
    return {error.number(), error.description() + u" (" + std::u16string(procedure) + u")"};
}

Error CurrentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {kErrorOutOfMemory, u"Out of memory"};
    } catch (const std::exception& error) {
        return {kErrorApplication, ToUtf16(error.what())};
    } catch (...) {
        return {kErrorApplication, kGeneralFailure};
    }
}

void ReportCurrent(ErrorReporter& reporter, const char16_t* module, const char16_t* procedure,
                   bool isEntryPoint) noexcept {
    try {
        reporter.Report(module, procedure, WithProcedure(CurrentError(), procedure), isEntryPoint);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the report itself found no memory
    }
}

}  // namespace korvane
