#include "bindings/calc/errors.h"

#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/NoSupportException.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <exception>
#include <new>
#include <string>

#include "base/text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

std::optional<ErrorCode> HostError(int calcError) {
    switch (calcError) {
        case 0: return std::nullopt;
        case 32767: return ErrorCode::kNA;
        case 532: return ErrorCode::kDiv0;
        case 525: return ErrorCode::kName;
        case 524:
        case 540: return ErrorCode::kRef;  // 540: content that must not be fetched
        case 521: return ErrorCode::kNull;
        case 503: return ErrorCode::kNum;
        // What remains has no name of its own in the object model.
        default: return ErrorCode::kValue;
    }
}

bool IsMalformed(int calcError) {
    return (calcError >= 507 && calcError <= 511 && calcError != 511) || calcError == 501 ||
           calcError == 520;
}

void ThrowTranslated() {
    try {
        throw;
    } catch (const Error&) {
        throw;
    } catch (const css::lang::DisposedException&) {
        throw Error(kErrorObjectGone, u"The document or its host is no longer there");
    } catch (const css::uno::Exception& failure) {
        throw Error(kErrorApplication, u"Calc: " + ToText(failure.Message));
    } catch (const std::bad_alloc&) {
        throw Error(kErrorOutOfMemory, u"Out of memory");
    } catch (const std::exception& failure) {
        throw Error(kErrorApplication, ToUtf16(failure.what()));
    } catch (...) {
        throw Error(kErrorApplication, u"Calc failed for an unknown reason");
    }
}

void Fail(const char16_t* description) { throw Error(kErrorApplication, description); }

void FailWithoutWindow(const char16_t* member) {
    throw Error(kErrorApplication,
                std::u16string(member) + u" is not available without Calc's window");
}

}  // namespace korvane::calc
