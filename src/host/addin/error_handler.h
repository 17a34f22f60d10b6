// The one place where failures are told: to the maker in the log, to the user in
// a message box.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/error.h"
#include "host/application.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/message_boxes.h"
#include "platform/product.h"

namespace korvane {

// A failure that passes through several procedures is a chain: each of them
// reports it, the log gets a line from each, and all lines carry the first
// error, which is the one that says what went wrong. At the entry point where
// the chain ends the user sees it once.
//
// Never fails itself: what cannot be asked of the host is an empty text in the
// log, what cannot be written or shown is left out.
class MErrorHandler : public ErrorReporter {
public:
    // All references are kept. `application` (null before start-up and after
    // shut-down) and `addinFolder` (empty until it is known, then ending in "\")
    // belong to the add-in's shared state and are read at each report.
    MErrorHandler(platform::Files& files, platform::MessageBoxes& messageBoxes,
                  platform::Clock& clock, platform::ProductVersion version,
                  const host::ApplicationPtr& application, const std::u16string& addinFolder);
    MErrorHandler(const MErrorHandler&) = delete;
    MErrorHandler& operator=(const MErrorHandler&) = delete;
    ~MErrorHandler() override = default;

    // Appends the failure to "Error.log" in the add-in folder, or where the
    // platform keeps state while that is not known. At an entry point tells the
    // user, unless it was his own break or was told him already, and forgets the
    // chain. `workbook` is the name of the workbook whose code failed; empty
    // means the add-in's own. `current` has the procedure's name appended.
    void ErrorHandler(std::u16string_view module, std::u16string_view procedure,
                      std::u16string_view workbook, bool isEntryPoint,
                      const Error& current) noexcept;

    // The same for a failure of the add-in's own code.
    void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                bool isEntryPoint) override;

    // Writes a failure to the log that ends where it is caught: the user is not
    // told, and no chain begins or ends. `error` has the procedure's name appended.
    void Log(const char16_t* module, const char16_t* procedure, const Error& error) noexcept;

    // The first error of the current chain; the number is 0 when there is none.
    int number() const { return number_; }
    const std::u16string& message() const { return message_; }

    // Whether an entry point runs.
    bool IsBusy() const { return entryPoints_ > 0; }
    // Called when the outermost entry point has ended. Must not throw.
    std::function<void()> onIdle;

    // Held while an entry point runs. The outermost one starts with nothing
    // pending: a failure that never reached an entry point must not stand for
    // the next action's.
    class EntryPoint {
    public:
        explicit EntryPoint(MErrorHandler& handler);
        EntryPoint(const EntryPoint&) = delete;
        EntryPoint& operator=(const EntryPoint&) = delete;
        ~EntryPoint() { handler_.Leave(); }

    private:
        MErrorHandler& handler_;
    };

private:
    void Leave();
    void Record(const Error& current);
    void Clear();
    bool bIsTold() const;
    void WriteLog(const std::u16string& location, bool isEntryPoint);
    void Show(const std::u16string& message);
    std::u16string sEntry(const std::u16string& location) const;
    std::u16string sLogPath();
    std::u16string sAddinWorkbook() const;
    std::u16string sHostVersion() const;

    platform::Files& files_;
    platform::MessageBoxes& messageBoxes_;
    platform::Clock& clock_;
    const platform::ProductVersion version_;
    const host::ApplicationPtr& application_;
    const std::u16string& addinFolder_;

    int number_ = 0;
    std::u16string message_;
    int entryPoints_ = 0;  // how many are running, one within the other
};

}  // namespace korvane
