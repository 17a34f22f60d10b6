// The one error type that crosses the house's boundaries.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace korvane {

// Numbers that the core itself raises; a host adds its own. They are the
// numbers of the host's automation language, so that one log reads alike
// whoever failed.
enum ErrorNumber : int {
    kErrorInvalidCall = 5,  // a slice or jump outside a text
    kErrorOverflow = 6,     // a number too large for a 32-bit whole number
    kErrorOutOfMemory = 7,
    kErrorTypeMismatch = 13,         // a text without a numeric or Boolean reading
    kErrorOutOfStack = 28,           // a formula nested too deeply, or in too many parts
    kErrorObjectMissing = 91,        // an object that the host did not have
    kErrorApplication = 1004,        // the host's general failure of a call
    kErrorObjectGone = -2147417848,  // the host object lives no more (closed document, lost host)
};

// The description of a failure that says nothing about itself.
inline constexpr const char16_t* kGeneralFailure = u"Application-defined or object-defined error";

// An ordinary failure: a number and a description, as a host raises it. A
// failing host call throws exactly this type and nothing else, and so do the
// core's own procedures; each binding translates its native errors once, where
// the call crosses over.
class Error : public std::exception {
public:
    Error(int number, std::u16string description);

    int number() const { return number_; }
    const std::u16string& description() const { return description_; }
    // The description in UTF-8, for diagnostics.
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    int number_;
    std::u16string description_;
    std::string utf8_;
};

// `error` with " (" + procedure + ")" appended to its description: a report
// carries the name of the procedure where the failure was caught.
Error WithProcedure(const Error& error, std::u16string_view procedure);

// The exception that is being handled, as an Error: a failed allocation is
// kErrorOutOfMemory, everything else that is no Error is kErrorApplication.
// Call it within a catch block only.
Error CurrentError();

// Where procedures report a failure that ends them. The reporter must not
// throw. `isEntryPoint` is true where a user's action enters the system.
class ErrorReporter {
public:
    virtual ~ErrorReporter() = default;
    // `module` and `procedure` name the code that failed ("CElement",
    // "bInitRoot"); `error` is the failure with that procedure's name already
    // appended to its description.
    virtual void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                        bool isEntryPoint) = 0;
};

// Reports the exception that is being handled, the procedure's name appended.
// Call it within a catch block only. A report for which there is no memory is
// left out.
void ReportCurrent(ErrorReporter& reporter, const char16_t* module, const char16_t* procedure,
                   bool isEntryPoint) noexcept;

}  // namespace korvane
