#include "host/addin/error_handler.h"

#include <utility>

#include "base/attempt.h"
#include "base/number.h"
#include "host/addin/error_numbers.h"
#include "host/workbook.h"

namespace korvane {
namespace {

std::u16string TwoDigits(int number) {
    return {static_cast<char16_t>(u'0' + number / 10 % 10),
            static_cast<char16_t>(u'0' + number % 10)};
}

// "mm/dd/yy hh:mm:ss", whatever the locale.
std::u16string TimeText(const platform::LocalTime& time) {
    return TwoDigits(time.month) + u"/" + TwoDigits(time.day) + u"/" + TwoDigits(time.year) + u" " +
           TwoDigits(time.hour) + u":" + TwoDigits(time.minute) + u":" + TwoDigits(time.second);
}

std::u16string VersionText(const platform::ProductVersion& version) {
    return NumberText(version.major) + u"." + NumberText(version.minor) + u"." +
           NumberText(version.revision);
}

// A host's description may have several lines; an entry of the log is one.
std::u16string InOneLine(std::u16string text) {
    for (char16_t& ch : text) {
        if (ch == u'\n' || ch == u'\r') ch = u' ';
    }
    return text;
}

// What `ask` gets from the host; the empty text where there is none or it fails.
template <class Ask>
std::u16string Asked(const host::ApplicationPtr& application, Ask&& ask) {
    std::u16string text;
    // The shared state may let go of the host while it answers.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    if (const auto kept = application) Suppressed([&] { text = ask(*kept); });
    return text;
}

}  // namespace

MErrorHandler::MErrorHandler(platform::Files& files, platform::MessageBoxes& messageBoxes,
                             platform::Clock& clock, platform::ProductVersion version,
                             const host::ApplicationPtr& application,
                             const std::u16string& addinFolder)
    : files_(files),
      messageBoxes_(messageBoxes),
      clock_(clock),
      version_(version),
      application_(application),
      addinFolder_(addinFolder) {}

MErrorHandler::EntryPoint::EntryPoint(MErrorHandler& handler) : handler_(handler) {
    if (handler_.entryPoints_++ == 0) handler_.Clear();
}

void MErrorHandler::Report(const char16_t* module, const char16_t* procedure, const Error& error,
                           bool isEntryPoint) {
    ErrorHandler(module, procedure, u"", isEntryPoint, error);
}

void MErrorHandler::ErrorHandler(std::u16string_view module, std::u16string_view procedure,
                                 std::u16string_view workbook, bool isEntryPoint,
                                 const Error& current) noexcept {
    if (current.number() == kUserBreak || number_ == 0) Record(current);
    const bool bTell = !bIsTold();
    if (bTell) {
        Suppressed([&] {
            const std::u16string name =
                workbook.empty() ? sAddinWorkbook() : std::u16string(workbook);
            WriteLog(u"[" + name + u"]" + std::u16string(module) + u"." + std::u16string(procedure),
                     isEntryPoint);
        });
    }
    if (!isEntryPoint) return;
    // The chain ends before the box opens: what fails while it stands there is
    // another one.
    const std::u16string message = std::move(message_);
    Clear();
    if (bTell) Show(message);
}

void MErrorHandler::Log(const char16_t* module, const char16_t* procedure,
                        const Error& error) noexcept {
    const int number = std::exchange(number_, 0);
    std::u16string message;
    message.swap(message_);
    Record(error);
    if (!bIsTold()) {
        Suppressed(
            [&] { WriteLog(u"[" + sAddinWorkbook() + u"]" + module + u"." + procedure, true); });
    }
    number_ = number;
    message_.swap(message);
}

void MErrorHandler::Leave() {
    if (--entryPoints_ == 0 && onIdle) onIdle();
}

void MErrorHandler::Record(const Error& current) {
    number_ = current.number();
    message_.clear();
    Suppressed([&] { message_ = current.description(); });
}

void MErrorHandler::Clear() {
    number_ = 0;
    message_.clear();
}

// Whether the user needs no telling: he did it himself, or was told before.
bool MErrorHandler::bIsTold() const { return number_ == kUserBreak || number_ == kAlreadyReported; }

void MErrorHandler::WriteLog(const std::u16string& location, bool isEntryPoint) {
    const std::u16string entry = sEntry(location);
    const std::u16string path = sLogPath();
    files_.AppendLine(path, TimeText(clock_.Now()) + entry);
    if (isEntryPoint) files_.AppendLine(path, u"");  // the end of a chain
}

std::u16string MErrorHandler::sEntry(const std::u16string& location) const {
    return u"  E" + sHostVersion() + u"A" + VersionText(version_) + u"  " + location + u", Error " +
           NumberText(number_) + u": " + InOneLine(message_);
}

std::u16string MErrorHandler::sLogPath() {
    return (addinFolder_.empty() ? files_.StateFolder() : addinFolder_) + u"Error.log";
}

std::u16string MErrorHandler::sAddinWorkbook() const {
    return Asked(application_, [](auto& host) { return host.ThisWorkbook()->Name(); });
}

std::u16string MErrorHandler::sHostVersion() const {
    return Asked(application_, [](auto& host) { return host.Version(); });
}

void MErrorHandler::Show(const std::u16string& message) {
    if (const auto kept = application_) Suppressed([&] { kept->SetScreenUpdating(true); });
    Suppressed([&] {
        messageBoxes_.Show({message, platform::kProductName, platform::MessageIcon::kCritical,
                            platform::MessageButtons::kOK});
    });
}

}  // namespace korvane
