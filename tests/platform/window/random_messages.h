// Random changes and events, made member by member.
#pragma once

#include <random>
#include <type_traits>
#include <utility>

#include "platform/window/change.h"
#include "platform/window/event.h"
#include "platform/window/link.h"

namespace korvane::test {

class RandomMessages {
public:
    explicit RandomMessages(unsigned seed) : random_(seed) {}

    platform::Change NextChange() {
        platform::Change change;
        Fill(change);
        GiveType(change);
        return change;
    }
    platform::Event NextEvent() {
        platform::Event event;
        Fill(event);
        return event;
    }
    platform::ToView NextToView() {
        platform::ToView message;
        Fill(message);
        if (auto* change = std::get_if<platform::Change>(&message)) GiveType(*change);
        return message;
    }
    platform::FromView NextFromView() {
        platform::FromView message;
        Fill(message);
        return message;
    }
    // From 0 to below `end`.
    std::int32_t Below(std::int32_t end) {
        return std::uniform_int_distribution<std::int32_t>(0, end - 1)(random_);
    }

private:
    // A property's value is of its own type.
    void GiveType(platform::Change& change) {
        auto* set = std::get_if<platform::PropertySet>(&change);
        while (set && set->value.index() != platform::TypeOf(set->property)) Fill(set->value);
    }
    void Fill(bool& flag) { flag = Below(2) == 1; }
    // Mostly such numbers as occur, sometimes any.
    void Fill(std::int32_t& number) {
        number = Below(4) == 0 ? static_cast<std::int32_t>(random_()) : Below(6);
    }
    void Fill(std::int64_t& number) {
        number = Below(4) == 0 ? static_cast<std::int64_t>(random_() * random_()) : Below(6);
    }
    void Fill(float& number) { number = static_cast<float>(Below(40000) - 10000) / 8; }
    void Fill(std::u16string& text) {
        text.clear();
        for (int k = Below(5); k > 0; --k) {
            text += static_cast<char16_t>(Below(3) == 0 ? Below(0x10000) : 'a' + Below(26));
        }
    }
    template <class E>
    requires std::is_enum_v<E>
    void Fill(E& value) { value = static_cast<E>(Below(static_cast<std::int32_t>(E::kCount_))); }
    template <class T>
    void Fill(std::vector<T>& list) {
        list.clear();
        for (int k = Below(4); k > 0; --k) Fill(list.emplace_back());
    }
    template <class... Ts>
    void Fill(std::variant<Ts...>& choice) {
        FillAlternative(choice, static_cast<std::size_t>(Below(sizeof...(Ts))),
                        std::index_sequence_for<Ts...>());
    }
    template <class Variant, std::size_t... Is>
    void FillAlternative(Variant& choice, std::size_t index, std::index_sequence<Is...>) {
        ((index == Is ? Fill(choice.template emplace<Is>()) : void()), ...);
    }
    template <class M>
    requires requires(M& m) { M::Fields(m); }
    void Fill(M& message) {
        std::apply([this](auto&... fields) { (Fill(fields), ...); }, M::Fields(message));
    }

    std::mt19937 random_;
};

}  // namespace korvane::test
