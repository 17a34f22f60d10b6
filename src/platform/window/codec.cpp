#include "platform/window/codec.h"

#include <bit>
#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>
#include <utility>

namespace korvane::platform {
namespace {

template <class T>
concept Message = requires(T& t) {
    T::Fields(t);
};
template <class T>
concept Enum = std::is_enum_v<T>;

// ---- writing -------------------------------------------------------------

class Writer {
public:
    explicit Writer(std::string& out) : out_(out) {}

    void Put(bool flag) { Byte(flag ? 1 : 0); }
    void Put(std::int64_t number) {
        // Zigzag: small numbers of either sign become small ones without.
        Number(static_cast<std::uint64_t>(number) << 1 ^
               static_cast<std::uint64_t>(number < 0 ? -1 : 0));
    }
    void Put(std::int32_t number) { Put(std::int64_t{number}); }
    void Put(float number) {
        auto bits = std::bit_cast<std::uint32_t>(number);
        for (int k = 0; k < 4; ++k, bits >>= 8) Byte(static_cast<std::uint8_t>(bits));
    }
    template <Enum E>
    void Put(E value) {
        Byte(static_cast<std::uint8_t>(value));
    }
    void Put(const std::u16string& text) {
        Number(text.size());
        for (const char16_t unit : text) Number(unit);
    }
    template <class T>
    void Put(const std::vector<T>& list) {
        Number(list.size());
        for (const T& item : list) Put(item);
    }
    template <class... Ts>
    void Put(const std::variant<Ts...>& choice) {
        Byte(static_cast<std::uint8_t>(choice.index()));
        std::visit([this](const auto& held) { this->Put(held); }, choice);
    }
    template <Message M>
    void Put(const M& message) {
        std::apply([this](const auto&... fields) { (this->Put(fields), ...); }, M::Fields(message));
    }

private:
    void Byte(std::uint8_t byte) { out_ += static_cast<char>(byte); }
    void Number(std::uint64_t number) {
        for (; number >= 0x80; number >>= 7) Byte(static_cast<std::uint8_t>(number | 0x80));
        Byte(static_cast<std::uint8_t>(number));
    }

    std::string& out_;
};

// ---- reading -------------------------------------------------------------

// Every member answers false when the bytes do not hold what is asked for.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}
    bool AtEnd() const { return bytes_.empty(); }

    bool Take(bool& flag) {
        std::uint8_t byte = 0;
        if (!Byte(byte) || byte > 1) return false;
        flag = byte == 1;
        return true;
    }
    bool Take(std::int64_t& number) {
        std::uint64_t folded = 0;
        if (!Number(folded)) return false;
        number = static_cast<std::int64_t>(folded >> 1 ^ (~(folded & 1) + 1));
        return true;
    }
    bool Take(std::int32_t& number) {
        std::int64_t wide = 0;
        if (!Take(wide) || wide < std::numeric_limits<std::int32_t>::min() ||
            wide > std::numeric_limits<std::int32_t>::max()) {
            return false;
        }
        number = static_cast<std::int32_t>(wide);
        return true;
    }
    bool Take(float& number) {
        std::uint32_t bits = 0;
        for (int k = 0; k < 4; ++k) {
            std::uint8_t byte = 0;
            if (!Byte(byte)) return false;
            bits |= std::uint32_t{byte} << (8 * k);
        }
        number = std::bit_cast<float>(bits);
        return std::isfinite(number);
    }
    template <Enum E>
    bool Take(E& value) {
        std::uint8_t byte = 0;
        if (!Byte(byte) || byte >= static_cast<std::uint8_t>(E::kCount_)) return false;
        value = static_cast<E>(byte);
        return true;
    }
    bool Take(std::u16string& text) {
        std::size_t size = 0;
        if (!Count(size)) return false;
        text.clear();
        text.reserve(size);
        for (std::size_t k = 0; k < size; ++k) {
            std::uint64_t unit = 0;
            if (!Number(unit) || unit > 0xFFFF) return false;
            text += static_cast<char16_t>(unit);
        }
        return true;
    }
    template <class T>
    bool Take(std::vector<T>& list) {
        std::size_t size = 0;
        if (!Count(size)) return false;
        list.clear();
        for (std::size_t k = 0; k < size; ++k) {
            if (!Take(list.emplace_back())) return false;
        }
        return true;
    }
    template <class... Ts>
    bool Take(std::variant<Ts...>& choice) {
        std::uint8_t index = 0;
        if (!Byte(index) || index >= sizeof...(Ts)) return false;
        return TakeAlternative(choice, index, std::index_sequence_for<Ts...>());
    }
    template <Message M>
    bool Take(M& message) {
        return std::apply([this](auto&... fields) { return (this->Take(fields) && ...); },
                          M::Fields(message));
    }

private:
    template <class Variant, std::size_t... Is>
    bool TakeAlternative(Variant& choice, std::size_t index, std::index_sequence<Is...>) {
        return ((index == Is && Take(choice.template emplace<Is>())) || ...);
    }
    bool Byte(std::uint8_t& byte) {
        if (bytes_.empty()) return false;
        byte = static_cast<std::uint8_t>(bytes_.front());
        bytes_.remove_prefix(1);
        return true;
    }
    bool Number(std::uint64_t& number) {
        number = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            std::uint8_t byte = 0;
            if (!Byte(byte)) return false;
            const std::uint64_t bits = byte & 0x7F;
            if (shift == 63 && bits > 1) return false;
            number |= bits << shift;
            // One form per number, so that equal messages are equal bytes.
            if (!(byte & 0x80)) return byte != 0 || shift == 0;
        }
        return false;
    }
    // How many items follow; each takes a byte or more, so that a count beyond
    // what is left cannot make anybody allocate.
    bool Count(std::size_t& count) {
        std::uint64_t number = 0;
        if (!Number(number) || number > bytes_.size()) return false;
        count = static_cast<std::size_t>(number);
        return true;
    }

    std::string_view bytes_;
};

template <class M>
std::string EncodeMessage(const M& message) {
    std::string bytes;
    Writer(bytes).Put(message);
    return bytes;
}

template <class M>
std::optional<M> DecodeMessage(std::string_view bytes) {
    std::optional<M> message(std::in_place);
    Reader reader(bytes);
    if (!reader.Take(*message) || !reader.AtEnd()) return std::nullopt;
    return message;
}

bool IsWellTyped(const Change& change) {
    const auto* set = std::get_if<PropertySet>(&change);
    return !set || set->value.index() == TypeOf(set->property);
}

}  // namespace

std::string Encode(const Change& change) { return EncodeMessage(change); }
std::string Encode(const Event& event) { return EncodeMessage(event); }
std::string Encode(const ToView& message) { return EncodeMessage(message); }
std::string Encode(const FromView& message) { return EncodeMessage(message); }

std::optional<Change> DecodeChange(std::string_view bytes) {
    auto change = DecodeMessage<Change>(bytes);
    if (change && !IsWellTyped(*change)) change.reset();
    return change;
}

std::optional<Event> DecodeEvent(std::string_view bytes) { return DecodeMessage<Event>(bytes); }

std::optional<ToView> DecodeToView(std::string_view bytes) {
    auto message = DecodeMessage<ToView>(bytes);
    const auto* change = message ? std::get_if<Change>(&*message) : nullptr;
    if (change && !IsWellTyped(*change)) message.reset();
    return message;
}

std::optional<FromView> DecodeFromView(std::string_view bytes) {
    return DecodeMessage<FromView>(bytes);
}

void AppendFrame(std::string& stream, std::string_view message) {
    auto length = static_cast<std::uint32_t>(message.size());
    for (int k = 0; k < 4; ++k, length >>= 8) stream += static_cast<char>(length & 0xFF);
    stream += message;
}

FrameState TakeFrame(std::string_view& stream, std::string_view& message) {
    constexpr std::size_t kHead = 4;
    if (stream.size() < kHead) return FrameState::kUnfinished;
    std::size_t length = 0;
    for (std::size_t k = 0; k < kHead; ++k) {
        length |= std::size_t{static_cast<std::uint8_t>(stream[k])} << (8 * k);
    }
    if (length > kLongestMessage) return FrameState::kBroken;
    if (stream.size() - kHead < length) return FrameState::kUnfinished;
    message = stream.substr(kHead, length);
    stream.remove_prefix(kHead + length);
    return FrameState::kWhole;
}

}  // namespace korvane::platform
