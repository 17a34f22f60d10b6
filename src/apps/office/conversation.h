// Requests from the program that started this office, answered on its main
// thread.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::office {

// Greets the program at the other end of the inherited socket (descriptor 3) and
// answers its requests, one line of JSON each, from then on. When that end
// closes, this process ends at once and removes the private folder that it was
// given, whatever it is busy with.
void StartConversation(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

// Tells the program instead why there will be no conversation, and ends this
// process.
[[noreturn]] void RefuseConversation(const std::string& why);

}  // namespace korvane::office
